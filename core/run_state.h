// The state of a run: mode, current entry, CONT state, the shared output text, prompt flags.
// How entries are run is core/run_loop; how one statement is run is core/executor.
#pragma once

#include <cstdint>
#include <string>

#include "core/outcome.h"

namespace tessaly::core {

enum class RunMode : int32_t {
    Direct = 0,
    Running = 3,
    Ended = 13,     // END executed
    Gosub = 14,     // a GOSUB (or an event-trap GOSUB) was executed
    Returned = 15,  // a RETURN was executed
    Break = -100,   // BREAK requested
};

// Events waiting for the run loop (RunState::pendingEvents). Event sources only mark them; the
// loop takes them at its one yield point, between two entries.
namespace pending {
inline constexpr uint32_t kBreak = 1U << 31;  // BREAK requested (ESC, the menu, STOP, SIGINT)
// The trap of event slot `slot` (see core/event_traps.h) is due to fire.
constexpr uint32_t trapBit(int slot) { return 1U << slot; }
} // namespace pending

// What the screen showed last at the end of a run or a line entry.
enum class RunOutcome : uint8_t { None, Ok, Break, Error };

struct RunState {
    RunMode runMode = RunMode::Direct;
    bool running = false;         // the idle driver runs the loop while set
    int currentIndex = 0;         // the entry being executed
    int endIndex = 0;             // the END entry behind the last program line
    int jumpTarget = 0;           // the entry chosen by the last GOTO, GOSUB or RETURN
    bool directMode = false;      // the entries being run come from a direct command
    bool canContinue = false;     // set by BREAK and STOP
    int continueIndex = -1;       // where BREAK or STOP interrupted; -1 when none
    int statementCode = 0;        // the code of the statement being executed, refined by handlers
    Flow lastFlow = Flow::Done;   // how the last executed statement went on
    int previousCode = 0;         // the code of the statement executed before
    int autoLine = 0;             // AUTO's next line number; above 0 while AUTO is active
    int autoStep = 10;
    int statementEcho = 0;
    bool loadStartedByRun = false; // RUN "file" performs LOAD and then runs
    bool editShown = false;       // EDIT has put a line on the screen: no prompt after it
    bool printNewline = true;     // the printed row is finished; the next output starts a new row
    int printColumn = 0;          // the length of the text already printed on the row (TAB)
    std::string pendingPrintText; // what earlier PRINTs ending in ; or , left on the current row
    bool lineInputMode = false;   // INPUT was reached as LINE INPUT
    int switchMode = 0;           // KEY, STOP, TIME$ followed by ON (1), OFF (2) or STOP (3)
    bool waitingForKeys = false;  // INPUT$ found too few keys: the statement runs again at the next step
    bool waitingForDevice = false; // a serial port has not brought or taken enough yet: the same
    bool executing = false;       // a statement handler is running (BREAK then waits for the loop)
    int lastExecutedIndex = 0;    // the entry whose statement ran last in this run; 0 after the run
    int startEntry = 0;           // the first entry of a direct command, taken at the first step
    uint32_t pendingEvents = 0;   // pending::kBreak and trap bits, taken by the run loop
    std::string outputText;       // what the statement printed, or the error message
    RunOutcome lastOutcome = RunOutcome::None;
};

} // namespace tessaly::core
