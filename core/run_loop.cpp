// The run loop: one program entry per step, the end of a run, the prompts, BREAK and CONT.
// Statements are executed by core/executor; preparation of direct commands is core/preparation.
#include "core/run_loop.h"

#include <array>
#include <string>
#include <utility>

#include "core/compiled_program.h"
#include "core/event_traps.h"
#include "core/executor.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/preparation.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "screen/colours.h"
#include "screen/keyboard.h"
#include "screen/text_screen.h"
#include "io/device_transfer.h"
#include "io/file_table.h"

namespace tessaly::core {

namespace {

// The first character of a statement: "*", "?", an apostrophe, or any byte above "@".
bool startsStatement(unsigned char c) { return c == '*' || c > 64 || c == '?' || c == '\''; }

// What a completed statement's code asks of the loop beyond the steps every statement takes.
enum class AfterCode : uint8_t { Plain, End, Run, Jump, Print };

constexpr std::array<AfterCode, kStatementSlots> kAfterCodes = [] {
    std::array<AfterCode, kStatementSlots> table {};
    table[static_cast<size_t>(Stmt::End)] = AfterCode::End;
    table[static_cast<size_t>(Stmt::Run)] = AfterCode::Run;
    table[static_cast<size_t>(Stmt::Goto)] = AfterCode::Jump;
    table[static_cast<size_t>(Stmt::GoTo)] = AfterCode::Jump;
    table[static_cast<size_t>(Stmt::Print)] = AfterCode::Print;
    table[static_cast<size_t>(Stmt::Write)] = AfterCode::Print;
    table[static_cast<size_t>(Stmt::PrintUsing)] = AfterCode::Print;
    return table;
}();

AfterCode afterCodeOf(int code)
{
    return static_cast<unsigned>(code) < kAfterCodes.size() ? kAfterCodes[static_cast<size_t>(code)] : AfterCode::Plain;
}

// The most entries one call of the loop runs. Most statements return to the idle driver after
// their entry anyway; WHILE, WEND, CONT, IF, RUN and empty entries chain on at once, and this
// bound keeps a loop made only of them (WHILE 1:WEND) from holding the idle driver for good.
constexpr int kEntriesPerCall = 64;

// What the loop does at its next pass: the checks of a loop call's start, the next entry, or the
// current entry once more (INPUT completing).
enum class Next : uint8_t { Resume, Advance, Repeat };

enum class AfterStatement : uint8_t { GoOn, Return };

// The end of a run. Returns true when an ON ERROR GOTO handler caught the error and the run goes on.
// The rare paths of the loop stay out of line, so that the loop itself stays small.
[[gnu::noinline]] bool endRun(Interpreter& in)
{
    auto& run = in.run();
    // No receive waits once the run has ended (or an error handler has taken over).
    in.files().comPorts().forgetReceives();
    if (run.autoLine <= 0) {
        if (in.error().isPending()) {
            showPrompt(in, PromptKind::Output);
            if (in.error().pending == ErrorPending::Caught) {
                in.error().pending = ErrorPending::None;
                run.outputText.clear();
                return true;
            }
        } else {
            showPrompt(in, run.runMode == RunMode::Break ? PromptKind::Break : PromptKind::Ok);
        }
    }
    run.runMode = RunMode::Direct;
    run.lastFlow = Flow::Done;
    run.statementCode = 0;
    run.lastExecutedIndex = 0;
    run.pendingEvents = 0;
    run.pendingPrintText.clear();
    in.screen().saveCursor();
    run.running = false;
    // What the run printed goes to paper as one job.
    in.host().printerEndJob();
    return false;
}

// Step 2 of the loop: decides whether the loop runs on. Returns false when it must return.
bool checkRunMode(Interpreter& in, bool& repeatEntry)
{
    auto& run = in.run();
    repeatEntry = false;
    switch (run.runMode) {
    case RunMode::Break:
        endRun(in);
        return false;
    case RunMode::Gosub:
    case RunMode::Returned:
        run.runMode = RunMode::Running;
        return true;
    case RunMode::Running:
        if (run.lastFlow == Flow::InputWait || run.previousCode == static_cast<int>(Stmt::Input)) {
            // An INPUT waits until the key buffer ends with Enter; then it runs again and completes.
            const auto& keys = in.keyboard().keyBuffer;
            if (keys.empty() || keys.back() != '\r')
                return false;
            run.previousCode = 0;
            run.running = true;
            in.screen().setCursor(0, in.screen().cursorRow());
            repeatEntry = true;
            return true;
        }
        if (!run.running) {
            run.currentIndex = 0;
            in.stacks().whileDepth = 0;
        }
        return true;
    default:
        run.running = false;
        return false;
    }
}

// Step 3: the next entry, following the override.
bool advance(Interpreter& in)
{
    auto& run = in.run();
    run.running = true;
    if (run.startEntry > 0) {
        run.currentIndex = run.startEntry;
        run.startEntry = 0;
        return true;
    }
    ++run.currentIndex;
    if (!ProgramStore::isValidEntry(run.currentIndex) || run.currentIndex < 0)
        return false;
    int target = in.prepared().overrideAt(run.currentIndex);
    if (target != 0 && ProgramStore::isValidEntry(target))
        run.currentIndex = target;
    return true;
}

// BREAK taken between two entries: the run ends with "BREAK, OK " and CONT may go on from here.
void takeBreak(Interpreter& in)
{
    auto& run = in.run();
    run.continueIndex = run.currentIndex;
    run.currentIndex = 0;
    run.lastFlow = Flow::Done;
    run.previousCode = 0;
    run.runMode = RunMode::Break;
    endRun(in);
}

// The events marked since the last pass: due traps perform their GOSUB (in slot order), then a
// requested BREAK ends the run. Returns false when the loop must return.
[[gnu::noinline]] bool takeEvents(Interpreter& in)
{
    auto& run = in.run();
    uint32_t events = std::exchange(run.pendingEvents, 0);
    for (int slot = 0; slot < trap::kSlots; ++slot) {
        // A full GOSUB stack raises "Out of memory in ", which ends the run below.
        if ((events & pending::trapBit(slot)) != 0 && fireTrap(in, slot) == kFailed)
            break;
    }
    // A trap's subroutine starts at the next entry of this same pass.
    if (run.runMode == RunMode::Gosub)
        run.runMode = RunMode::Running;
    if ((events & pending::kBreak) != 0) {
        takeBreak(in);
        return false;
    }
    if (in.error().isPending())
        return endRun(in);
    return true;
}

// After an INPUT$ short of keys: the same statement runs again at the next step. The flag stays up
// until then, so that the idle driver can sleep until a key arrives.
AfterStatement waitAndRepeat(Interpreter& in)
{
    --in.run().currentIndex;
    in.run().lastFlow = Flow::Done;
    return AfterStatement::Return;
}

// Step 8 of the loop for a completed statement: its code decides (END, RUN, a jump, PRINT's newline).
AfterStatement afterCompleted(Interpreter& in, Flow flow)
{
    auto& run = in.run();
    auto endOrGoOn = [&] { return endRun(in) ? AfterStatement::GoOn : AfterStatement::Return; };
    int code = run.statementCode;
    AfterCode after = afterCodeOf(code);
    if (after == AfterCode::End)
        return endOrGoOn();
    if (after == AfterCode::Run) {
        run.runMode = RunMode::Running;
        in.colours().pointColour = 7;
        in.colours().foregroundColour = 7;
        if (flow == Flow::RunFromEntry)
            --run.currentIndex;
        else
            run.currentIndex = 0;
        return AfterStatement::GoOn;
    }
    run.previousCode = code;
    // Most statements leave neither an error nor text behind: nothing to show. Neither the jump
    // nor PRINT's new line below raises an error, so one that is pending now is the only one.
    bool toShow = in.error().isPending() || !run.outputText.empty();
    if (toShow) [[unlikely]]
        showPrompt(in, PromptKind::Output);
    if (after == AfterCode::Jump) {
        run.currentIndex = run.jumpTarget - 1;
    } else if (after == AfterCode::Print) {
        run.statementCode = 0;
        if (run.printNewline)
            in.screen().NewLine();
    }
    if (toShow && in.error().isPending())
        return endOrGoOn();
    // A statement that raised an event (STOP's BREAK, a remembered trap switched on) has it taken
    // at once, at the yield point.
    if (run.pendingEvents != 0)
        return AfterStatement::GoOn;
    if (flow == Flow::InputWait)
        run.running = false;
    return AfterStatement::Return;
}

// Step 8 of the loop: what the statement's outcome means for the run.
AfterStatement afterStatement(Interpreter& in, Outcome outcome)
{
    auto& run = in.run();
    switch (outcome.flow()) {
    case Flow::Failed:
        if ((run.waitingForKeys || run.waitingForDevice) && !in.error().isPending())
            return waitAndRepeat(in);
        return endRun(in) ? AfterStatement::GoOn : AfterStatement::Return;
    case Flow::ChainOn:
        return AfterStatement::GoOn;
    case Flow::RepeatEntry:
        --run.currentIndex;
        return AfterStatement::GoOn;
    case Flow::Done:
    case Flow::RunFromEntry:
    case Flow::InputWait:
        return afterCompleted(in, outcome.flow());
    }
    return AfterStatement::Return;
}

// A compiled statement runs as the executor runs its text once it has recognised it.
Outcome runCompiled(Interpreter& in, CompiledStatement& statement)
{
    auto& run = in.run();
    run.lineInputMode = false;
    run.statementCode = statement.code();
    return statement.run(in);
}

} // namespace

int loadEntryIntoBuffer(Interpreter& in, int entry)
{
    if (!ProgramStore::isValidEntry(entry))
        return 0;
    std::string_view text = in.program().textAt(entry);
    size_t start = 0;
    while (start < text.size() && !startsStatement(static_cast<unsigned char>(text[start])))
        ++start;
    if (start == 0 || start >= text.size())
        return 0;
    // A trailing comment (an apostrophe or REM outside quotes) is cut off; one at the start stays.
    size_t stop = findOutsideQuotesIf(text, start, [&](size_t pos) {
        char c = text[pos];
        return c == '\r' || c == '\n' || c == '\'' || (c == 'R' && text.compare(pos, 3, "REM") == 0);
    });
    if (stop == std::string_view::npos || (stop == start && text[stop] != '\r' && text[stop] != '\n'))
        stop = text.size();
    if (!in.buffer().assign(text.substr(start, stop - start)))
        return in.raise(ErrorId::LineBufferOverflow);
    return 1;
}

namespace {

// Steps 7 and 8's common part: the entry runs, from its compiled statement or from its text in the
// statement buffer, and its outcome is kept.
Outcome runEntry(Interpreter& in, CompiledStatement* compiled)
{
    auto& run = in.run();
    run.lastExecutedIndex = run.currentIndex;
    run.executing = true;
    run.waitingForKeys = false;
    run.waitingForDevice = false;
    Outcome outcome = compiled != nullptr ? runCompiled(in, *compiled) : executeStatement(in, 0, in.buffer().length());
    run.executing = false;
    run.lastFlow = outcome.flow();
    return outcome;
}

// The passes of the loop from the given point, at most budget of them.
[[gnu::noinline]] void runEntries(Interpreter& in, Next next, int budget)
{
    auto& run = in.run();
    CompiledStatement* compiled = nullptr;
    for (;; --budget) {
        // The yield point: every pass of the loop comes here before it takes an entry, and no
        // other place handles events. Marked traps fire and a requested BREAK is taken here; after
        // kEntriesPerCall passes the loop returns to the idle driver, whatever the statements
        // returned, so keys, clicks, timers and SIGINT are always seen after bounded work.
        if (run.pendingEvents != 0 || budget == 0) [[unlikely]] {
            if (run.pendingEvents != 0 && !takeEvents(in))
                return;
            if (budget == 0)
                return;
        }
        if (next == Next::Resume) {
            bool repeatEntry = false;
            if (!checkRunMode(in, repeatEntry))
                return;
            next = repeatEntry ? Next::Repeat : Next::Advance;
        }
        if (next == Next::Advance) {
            if (!advance(in)) {
                // Past the last entry: the run ends as at END.
                if (endRun(in))
                    continue;
                return;
            }
            compiled = in.compiled().statementAt(run.currentIndex, in.program().revision());
            // An INPUT that is completing reads its text again.
            if (run.lastFlow == Flow::InputWait)
                compiled = nullptr;
            if (compiled == nullptr) {
                int loaded = loadEntryIntoBuffer(in, run.currentIndex);
                if (loaded == 0)
                    continue;
                if (loaded < 0) {
                    if (endRun(in))
                        continue;
                    return;
                }
                if (in.compiled().untried(run.currentIndex))
                    in.compiled().remember(run.currentIndex, compileStatement(in.buffer().view()));
            }
        }
        next = Next::Advance;
        Outcome outcome = runEntry(in, compiled);
        compiled = nullptr;
        if (afterStatement(in, outcome) == AfterStatement::Return)
            return;
    }
}

// The commonest pass, taken without the general loop: a run going on with nothing due (no event,
// no INPUT waiting, no entry to start from) whose next entry, after its override, has a compiled
// statement. Returns it and the entry; nullptr (nothing changed) sends the pass the general way,
// which finds what this found.
CompiledStatement* plainNextStatement(Interpreter& in, int& entry)
{
    const auto& run = in.run();
    if (run.pendingEvents != 0 || run.startEntry > 0 || run.lastFlow == Flow::InputWait)
        return nullptr;
    if (run.runMode == RunMode::Running) {
        if (!run.running || run.previousCode == static_cast<int>(Stmt::Input))
            return nullptr;
    } else if (run.runMode != RunMode::Gosub && run.runMode != RunMode::Returned) {
        return nullptr; // after GOSUB and RETURN, step 2 only makes the mode Running again
    }
    entry = run.currentIndex + 1;
    if (!ProgramStore::isValidEntry(entry))
        return nullptr;
    int target = in.prepared().overrideAt(entry);
    if (target != 0 && ProgramStore::isValidEntry(target))
        entry = target;
    return in.compiled().statementAt(entry, in.program().revision());
}

} // namespace

void runLoop(Interpreter& in)
{
    int entry = 0;
    if (CompiledStatement* compiled = plainNextStatement(in, entry)) {
        // As steps 2 and 3 would have it.
        auto& run = in.run();
        if (run.runMode != RunMode::Running) {
            run.runMode = RunMode::Running;
            run.running = true;
        }
        run.currentIndex = entry;
        if (afterStatement(in, runEntry(in, compiled)) == AfterStatement::Return)
            return;
        runEntries(in, Next::Advance, kEntriesPerCall - 1);
        return;
    }
    runEntries(in, Next::Resume, kEntriesPerCall);
}

void showPrompt(Interpreter& in, PromptKind kind)
{
    auto& run = in.run();
    auto& screen = in.screen();
    if (kind == PromptKind::Output) {
        auto& error = in.error();
        if (error.isPending()) {
            auto& trap = in.trap();
            if (!trap.inTrapHandler && trap.trapTarget > 0) {
                trap.trapReturnIndex = error.line == 0 ? 0 : run.currentIndex;
                run.currentIndex = trap.trapTarget - 1;
                error.pending = ErrorPending::Caught;
                trap.inTrapHandler = true;
                return;
            }
            screen.Print(run.outputText);
            screen.NewLine();
            run.outputText.clear();
            error.pending = ErrorPending::None;
            run.lastOutcome = RunOutcome::Error;
            return;
        }
        if (!run.outputText.empty()) {
            screen.Print(run.outputText);
            run.outputText.clear();
        }
        return;
    }
    run.lastOutcome = kind == PromptKind::Ok ? RunOutcome::Ok : RunOutcome::Break;
    if (run.editShown)
        return;
    if (!run.printNewline)
        screen.NewLine();
    else
        run.printNewline = false;
    int row = screen.cursorRow();
    std::string rowText = screen.row(row);
    std::string prompt;
    if (kind == PromptKind::Ok) {
        prompt = "OK";
        rowText = rowText.size() > 2 ? prompt + rowText.substr(2) : prompt;
    } else {
        prompt = "BREAK, OK ";
        // The line shown is that of the statement executed last: after a jump the current entry
        // already stands before the jump's target, which is not where the program was stopped.
        int stopped = run.lastExecutedIndex;
        if (stopped > 0 && stopped != run.endIndex && !run.directMode)
            prompt += "in " + std::to_string(in.sourceLineNumber(stopped)) + " ";
        rowText.insert(0, prompt);
        if (rowText.size() > 80)
            rowText.resize(80);
    }
    screen.setRow(row, rowText);
    screen.PrintLineAt(0, row, prompt);
}

void runDirectCommand(Interpreter& in)
{
    auto& run = in.run();
    if (in.buffer().length() == 0)
        return;
    run.statementEcho = 0;
    in.keyboard().lastKey = 0;
    in.trap().inTrapHandler = false;
    // The command's messages start on the row below the command.
    in.screen().NewLine();
    if (prepareDirect(in) < 0) {
        showPrompt(in, PromptKind::Output);
        return;
    }
    run.runMode = RunMode::Running;
    run.running = false;
    run.currentIndex = 0;
    // Every direct command starts with the graphics colours at white; characters keep theirs.
    in.colours().pointColour = 7;
    in.colours().foregroundColour = 7;
    run.statementCode = static_cast<int>(Stmt::Run);
    runLoop(in);
}

void breakProgram(Interpreter& in)
{
    auto& run = in.run();
    run.canContinue = true;
    in.keyboard().lastKey = screen::vk::kEscape;
    // A statement that was collecting keys (INPUT$, GET of the keyboard) collects no more, and
    // one that waited for a serial port waits no more.
    in.keyboard().keyCapture = 0;
    in.files().comPorts().forgetReceives();
    // A program transfer through a device ends: a load's received text becomes the program.
    io::endDeviceTransfer(in);
    if (run.autoLine > 0) {
        // The row holds only the offered number: entering it ends AUTO.
        run.runMode = RunMode::Direct;
        in.screen().setCursor(0, in.screen().cursorRow());
        autoLineEntered(in, std::to_string(run.autoLine));
        return;
    }
    // The loop takes the break at its yield point: at once when no statement is running, after
    // the statement when one is (STOP).
    run.pendingEvents |= pending::kBreak;
    if (!run.executing)
        runLoop(in);
}

void continueProgram(Interpreter& in)
{
    auto& run = in.run();
    if (!run.canContinue) {
        in.raiseWithoutLine(ErrorId::CantContinue);
        return;
    }
    run.canContinue = false;
    if (run.continueIndex != -1) {
        run.running = true;
        run.runMode = RunMode::Running;
        run.currentIndex = run.continueIndex;
        run.continueIndex = -1;
        in.keyboard().lastKey = 0;
    }
}

} // namespace tessaly::core
