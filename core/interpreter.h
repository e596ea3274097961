// The one interpreter object: it owns one object per subsystem and nothing else of its own.
// Hosts drive it through idle(), lineEntered(), the break keys and timers; see core/host.h.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "core/basic_error.h"
#include "core/control_stacks.h"
#include "core/data_state.h"
#include "core/error_trap.h"
#include "core/event_traps.h"
#include "core/host.h"
#include "core/prepared_program.h"
#include "core/program_store.h"
#include "core/run_state.h"
#include "core/statement_buffer.h"

// The subsystems of the folders above are declared here and held by pointer, so that a change to
// one of them rebuilds only the files that use it.
namespace tessaly::expr {
class VariableStore;
class ArrayStore;
struct FunctionState;
struct ExpressionScratch;
struct InputState;
}
namespace tessaly::io {
struct ProgramFormats;
struct ChainState;
class FileTable;
struct UserMemory;
}
namespace tessaly::screen {
class TextScreen;
struct Keyboard;
struct Colours;
struct FunctionKeys;
struct EditorState;
struct GraphicScreen;
class Renderer;
}

namespace tessaly::core {

class CompiledProgram;

class Interpreter {
public:
    explicit Interpreter(Host& host);
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    // --- What a host calls ---
    // One step of the idle driver: break keys, then one run-loop step while a program runs.
    void idle();
    // Enter on a logical line of the screen (already gathered from the rows).
    void lineEntered(std::string_view text);
    // Keys and clicks for the screen editor (Windows virtual-key codes, screen pixels).
    void onChar(int ch);
    void onKeyDown(int key);
    void onKeyUp(int key);
    void onLeftButtonDown(int x, int y);
    // Types the bytes as characters, then Enter.
    void typeLine(std::string_view bytes);
    // The BREAK command (ESC, the BREAK menu, Ctrl+C in the headless runner).
    void breakProgram();
    void continueProgram();
    void runMenuCommand();
    // The LIST menu command: the text screen cleared and the whole program listed.
    void listMenuCommand();
    void onTimer(TimerId id);
    // Runs a loaded program as RUN does.
    void runProgram();

    // --- The window shell's commands (core/shell_commands.cpp) ---
    // File New: the rows cleared, the cursor at the top left, the program emptied, the screen set
    // up as at the first showing of the window.
    void newDocument();
    // The view as at the first showing of the window: rows cleared, cursor at the top left, pages
    // shown as at start, VIEW and WINDOW off, every plane cleared, every file closed (File New, a
    // program opened from the recent files or the command line, dropped, or loaded by LOAD).
    void resetScreen();
    // The whole screen composed again from its planes, as when the window regains the focus
    // (after a program was loaded in its place).
    void recomposeScreen();
    // The "OK" prompt on the next row, as after a command.
    void showOk();
    // Runs one statement given as text (the CLS menu commands), as if it stood in a direct
    // command, without a prompt afterwards; an error is shown as usual.
    void runStatementCommand(std::string_view text);
    // Shows an error that a command raised outside a run (menu Open, Save As), then the prompt.
    void showPendingError();
    [[nodiscard]] bool isRunning() const { return m_run.running; }
    // A program or direct command is under way (running, or waiting for input).
    // An INPUT (or RANDOMIZE) waits for its line.
    [[nodiscard]] bool isWaitingForInput() const
    {
        return m_run.runMode == RunMode::Running && !m_run.running && m_run.lastFlow == Flow::InputWait;
    }
    // An INPUT$ waits for keys: the run makes no progress until a key (or an event) arrives.
    [[nodiscard]] bool isWaitingForKeys() const { return m_run.running && m_run.waitingForKeys; }
    // The run needs a serial port looked at again soon: a send or receive waits, or a COM trap is
    // on. The host then calls idle() every few milliseconds instead of at once or not at all.
    [[nodiscard]] bool pollsDevices();
    // A send or receive on a serial port waits: the host calls idle() again after a few milliseconds.
    [[nodiscard]] bool isWaitingForDevice() const { return m_run.running && m_run.waitingForDevice; }
    [[nodiscard]] bool isBusy() const { return m_run.running || m_run.runMode != RunMode::Direct; }

    // --- Subsystems ---
    ProgramStore& program() { return m_program; }
    PreparedProgram& prepared() { return m_prepared; }
    CompiledProgram& compiled() { return *m_compiled; }
    RunState& run() { return m_run; }
    BasicError& error() { return m_error; }
    ErrorTrap& trap() { return m_trap; }
    EventTraps& eventTraps() { return m_eventTraps; }
    ControlStacks& stacks() { return m_stacks; }
    DataState& dataState() { return m_data; }
    StatementBuffer& buffer() { return m_buffer; }
    screen::TextScreen& screen() { return *m_screen; }
    screen::Keyboard& keyboard() { return *m_keyboard; }
    screen::Colours& colours() { return *m_colours; }
    screen::FunctionKeys& functionKeys() { return *m_functionKeys; }
    screen::EditorState& editor() { return *m_editor; }
    screen::GraphicScreen& graphics() { return *m_graphics; }
    // The pixel side, when the host shows pixels; nullptr when it does not.
    screen::Renderer* renderer() { return m_renderer; }
    void setRenderer(screen::Renderer* renderer);
    expr::VariableStore& variables() { return *m_variables; }
    expr::ArrayStore& arrays() { return *m_arrays; }
    expr::FunctionState& functionState() { return *m_functionState; }
    expr::ExpressionScratch& expressionScratch() { return *m_expressionScratch; }
    expr::InputState& inputState() { return *m_inputState; }
    io::ProgramFormats& programFormats() { return *m_programFormats; }
    io::ChainState& chainState() { return *m_chainState; }
    io::FileTable& files() { return *m_files; }
    io::UserMemory& memory() { return *m_memory; }
    Host& host() { return m_host; }
    std::array<int32_t, 10>& usrAddresses() { return m_usrAddresses; }

    // --- Raising errors (each returns a Failure, kFailed as an int) ---
    // The line number is the program line of the entry being executed.
    Failure raise(ErrorId id);
    // The line number is the program line of the given entry.
    Failure raiseAt(int entry, ErrorId id);
    // The message is followed by the given number.
    Failure raiseForLine(ErrorId id, int lineNumber);
    // Line 0, no number in the message (line entry, CONT).
    Failure raiseWithoutLine(ErrorId id);
    // ERROR n: "error in " with ERR n.
    Failure raiseUserError(int code);

    // The number of the program line that entry belongs to; 0 for a direct command.
    [[nodiscard]] int sourceLineNumber(int entry) const;

private:
    Failure raiseWithText(int16_t code, std::string_view text, int entry);

    Host& m_host;
    ProgramStore m_program;
    PreparedProgram m_prepared;
    std::unique_ptr<CompiledProgram> m_compiled;
    RunState m_run;
    bool m_inIdle = false; // idle() is under way (a question shown inside a statement lets the
                           // window's idle calls in: they must not run another step)
    BasicError m_error;
    ErrorTrap m_trap;
    EventTraps m_eventTraps;
    ControlStacks m_stacks;
    DataState m_data;
    StatementBuffer m_buffer;
    std::unique_ptr<screen::TextScreen> m_screen;
    std::unique_ptr<screen::Keyboard> m_keyboard;
    std::unique_ptr<screen::Colours> m_colours;
    std::unique_ptr<screen::FunctionKeys> m_functionKeys;
    std::unique_ptr<screen::EditorState> m_editor;
    std::unique_ptr<screen::GraphicScreen> m_graphics;
    screen::Renderer* m_renderer = nullptr;
    std::unique_ptr<expr::VariableStore> m_variables;
    std::unique_ptr<expr::ArrayStore> m_arrays;
    std::unique_ptr<expr::FunctionState> m_functionState;
    std::unique_ptr<expr::ExpressionScratch> m_expressionScratch;
    std::unique_ptr<expr::InputState> m_inputState;
    std::unique_ptr<io::ProgramFormats> m_programFormats;
    std::unique_ptr<io::ChainState> m_chainState;
    std::unique_ptr<io::FileTable> m_files;
    std::unique_ptr<io::UserMemory> m_memory;
    std::array<int32_t, 10> m_usrAddresses {};
};

} // namespace tessaly::core
