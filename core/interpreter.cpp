// The interpreter object: construction, raising errors, and the entry points a host calls.
// The work behind each entry point lives in core/run_loop.cpp and core/line_entry.cpp.
#include "core/interpreter.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "core/line_entry.h"
#include "core/preparation.h"
#include "core/run_loop.h"
#include "core/statements.h"
#include "expr/arrays.h"
#include "expr/expression_scratch.h"
#include "expr/function_state.h"
#include "expr/input_state.h"
#include "expr/variables.h"
#include "io/chain_state.h"
#include "io/com_channel.h"
#include "io/file_table.h"
#include "core/compiled_program.h"
#include "io/program_formats.h"
#include "io/user_memory.h"
#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "screen/keyboard.h"
#include "screen/renderer.h"
#include "screen/screen_editor.h"
#include "screen/text_screen.h"

namespace tessaly::core {

Interpreter::Interpreter(Host& host)
    : m_host(host)
    // TESSALY_TEXT_PATH=1 runs every statement from its text: the reference the compiled
    // statements are compared with.
    , m_compiled(std::make_unique<CompiledProgram>(std::getenv("TESSALY_TEXT_PATH") == nullptr))
    , m_screen(std::make_unique<screen::TextScreen>())
    , m_keyboard(std::make_unique<screen::Keyboard>())
    , m_colours(std::make_unique<screen::Colours>())
    , m_functionKeys(std::make_unique<screen::FunctionKeys>())
    , m_editor(std::make_unique<screen::EditorState>())
    , m_graphics(std::make_unique<screen::GraphicScreen>())
    , m_variables(std::make_unique<expr::VariableStore>())
    , m_arrays(std::make_unique<expr::ArrayStore>())
    , m_functionState(std::make_unique<expr::FunctionState>())
    , m_expressionScratch(std::make_unique<expr::ExpressionScratch>())
    , m_inputState(std::make_unique<expr::InputState>())
    , m_programFormats(std::make_unique<io::ProgramFormats>())
    , m_chainState(std::make_unique<io::ChainState>())
    , m_files(std::make_unique<io::FileTable>(host))
    , m_memory(std::make_unique<io::UserMemory>())
{
    m_usrAddresses.fill(1);
}

Interpreter::~Interpreter() = default;

void Interpreter::onChar(int ch) { screen::onChar(*this, ch); }
void Interpreter::onKeyDown(int key) { screen::onKeyDown(*this, key); }
void Interpreter::onKeyUp(int key) { screen::onKeyUp(*this, key); }
void Interpreter::onLeftButtonDown(int x, int y) { screen::onLeftButtonDown(*this, x, y); }

void Interpreter::typeLine(std::string_view bytes)
{
    for (char c : bytes)
        onChar(static_cast<unsigned char>(c));
    onChar(screen::vk::kEnter);
}

int Interpreter::sourceLineNumber(int entry) const
{
    if (!ProgramStore::isValidEntry(entry))
        return 0;
    int source = m_prepared.sourceAt(entry);
    if (!ProgramStore::isValidEntry(source))
        return 0;
    return leadingNumber(m_program.textAt(source));
}

Failure Interpreter::raiseWithText(int16_t code, std::string_view text, int entry)
{
    m_error.pending = ErrorPending::Raised;
    m_error.code = code;
    m_run.outputText.assign(text);
    int source = ProgramStore::isValidEntry(entry) ? m_prepared.sourceAt(entry) : 0;
    // An error in a direct command has no line: ERL is 0 and the message carries no number.
    bool direct = m_prepared.directBase >= 0 && source > m_prepared.directBase;
    if (direct || entry <= 0) {
        m_error.line = 0;
        return Failure {};
    }
    int line = sourceLineNumber(entry);
    m_error.line = static_cast<int16_t>(static_cast<uint16_t>(line));
    m_run.outputText += std::to_string(line);
    return Failure {};
}

Failure Interpreter::raise(ErrorId id)
{
    auto info = errorInfo(id);
    return raiseWithText(info.code, info.text, m_run.currentIndex);
}

Failure Interpreter::raiseAt(int entry, ErrorId id)
{
    auto info = errorInfo(id);
    return raiseWithText(info.code, info.text, entry);
}

Failure Interpreter::raiseForLine(ErrorId id, int lineNumber)
{
    auto info = errorInfo(id);
    m_error.pending = ErrorPending::Raised;
    m_error.code = info.code;
    m_error.line = static_cast<int16_t>(static_cast<uint16_t>(lineNumber));
    m_run.outputText.assign(info.text);
    m_run.outputText += std::to_string(lineNumber);
    return Failure {};
}

Failure Interpreter::raiseWithoutLine(ErrorId id)
{
    auto info = errorInfo(id);
    m_error.pending = ErrorPending::Raised;
    m_error.code = info.code;
    m_error.line = 0;
    m_run.outputText.assign(info.text);
    return Failure {};
}

Failure Interpreter::raiseUserError(int code)
{
    auto info = errorInfo(ErrorId::UserError);
    return raiseWithText(static_cast<int16_t>(code), info.text, m_run.currentIndex);
}

void Interpreter::setRenderer(screen::Renderer* renderer)
{
    m_renderer = renderer;
    m_screen->setPlane(renderer);
}

void Interpreter::idle()
{
    if (m_inIdle)
        return;
    m_inIdle = true;
    m_screen->setIdleCursorRow(m_screen->cursorRow());
    auto& keys = *m_keyboard;
    bool active = isBusy() || m_run.autoLine > 0;
    if (keys.lastKey == screen::vk::kEscape) {
        keys.lastKey = 0;
        keys.keyCapture = 0;
        if (active)
            breakProgram();
    } else if (keys.lastKeyDown == screen::vk::kPause || keys.lastKeyDown == screen::vk::kC) {
        // The STOP key already acted when it went down; here it only stops key collection.
        keys.lastKeyDown = 0;
        keys.keyCapture = 0;
    }
    if (m_run.running) {
        // Serial input for ON COM is looked at on every idle call, before the loop's yield point.
        if (m_eventTraps.anyComTrapOn())
            io::pollComTraps(*this);
        runLoop(*this);
    }
    m_inIdle = false;
}

bool Interpreter::pollsDevices()
{
    return m_run.running && (m_run.waitingForDevice || io::comTrapsOn(*this));
}

void Interpreter::lineEntered(std::string_view text)
{
    m_run.statementEcho = 1;
    m_run.printNewline = true;
    // The line that EDIT offered (or any other) has been entered: prompts appear again.
    m_run.editShown = false;
    enterLine(*this, text);
}

void Interpreter::breakProgram()
{
    core::breakProgram(*this);
}

void Interpreter::continueProgram()
{
    core::continueProgram(*this);
    if (m_error.isPending())
        showPrompt(*this, PromptKind::Output);
}

void Interpreter::runMenuCommand()
{
    if (m_run.runMode == RunMode::Running)
        return;
    // "RUN" is written at the start of the cursor row, which is then entered as if typed.
    int row = m_screen->cursorRow();
    std::string text = m_screen->row(row);
    text = text.size() > 3 ? "RUN" + text.substr(3) : std::string("RUN");
    m_screen->setRow(row, text);
    m_screen->setCursor(3, row);
    auto end = text.find_last_not_of(' ');
    lineEntered(std::string_view(text).substr(0, end + 1));
}

void Interpreter::listMenuCommand()
{
    m_screen->ClearRows();
    m_screen->setCursor(0, 0);
    m_data.reset();
    listLines(*this, 1, m_program.count() > 0 ? m_program.numberAt(m_program.count()) : 0);
    m_screen->setCursor(std::min(m_screen->cursorColumn(), 79), std::min(m_screen->cursorRow(), 24));
}

void Interpreter::onTimer(TimerId id)
{
    if (id == TimerId::ContinuousBeep) {
        m_host.beep();
        return;
    }
    // The alarm sounds once: with TIME$ ON the trap fires, with TIME$ STOP it is remembered,
    // otherwise it is lost.
    m_host.stopTimer(TimerId::TimeAlarm);
    reportEvent(*this, trap::kTime);
}

void Interpreter::runProgram()
{
    resetRunTime(*this);
    m_error.clear();
    m_run.continueIndex = -1;
    m_run.editShown = false;
    if (prepareProgram(*this) < 0) {
        showPrompt(*this, PromptKind::Output);
        return;
    }
    m_run.runMode = RunMode::Running;
    m_run.running = false;
    m_run.currentIndex = 0;
    runLoop(*this);
}

} // namespace tessaly::core
