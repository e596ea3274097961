// What the window shell asks of the interpreter beyond keys and idle steps: File New, the
// statements run from menu commands, and showing an error that a document command raised.
#include <string>

#include "core/executor.h"
#include "core/interpreter.h"
#include "core/run_loop.h"
#include "core/statements.h"
#include "io/file_table.h"
#include "io/program_formats.h"
#include "screen/renderer.h"

namespace tessaly::core {

void Interpreter::resetScreen()
{
    m_screen->ClearRows();
    m_screen->setCursor(0, 0);
    m_screen->setCursorSwitch(1);
    m_graphics->resetView();
    m_graphics->resetPages();
    if (m_renderer != nullptr)
        m_renderer->setUp();
    m_files->closeAll();
}

void Interpreter::recomposeScreen()
{
    if (m_renderer != nullptr)
        m_renderer->focusGained();
}

void Interpreter::showOk()
{
    if (isBusy())
        return;
    // On an empty row at its start the prompt takes that row.
    m_run.printNewline = m_screen->cursorColumn() == 0 && m_screen->row(m_screen->cursorRow()).empty();
    showPrompt(*this, PromptKind::Ok);
}

void Interpreter::newDocument()
{
    resetScreen();
    forgetProgram(*this);
    m_error.clear();
    *m_programFormats = {};
    m_host.setDocumentModified(false);
}

void Interpreter::runStatementCommand(std::string_view text)
{
    // A waiting INPUT runs its statement again from the buffer once Enter comes: keep it.
    std::string kept(m_buffer.view());
    if (!m_buffer.assign(text))
        return;
    bool wasDirect = m_run.directMode;
    m_run.directMode = true;
    bool failed = executeStatement(*this, 0, m_buffer.length()).failed();
    m_run.directMode = wasDirect;
    (void)m_buffer.assign(kept);
    if (failed || m_error.isPending())
        showPendingError();
}

void Interpreter::showPendingError()
{
    if (!m_error.isPending() || isBusy())
        return;
    // As for an error raised by a key: the message goes on the next row.
    m_screen->NewLine();
    showPrompt(*this, PromptKind::Output);
}

} // namespace tessaly::core
