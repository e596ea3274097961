// Handlers of the statements that the core owns (run control, error trapping, jumps).
// Each takes the position after its keyword and the statement's end; see core/dispatch.h.
#pragma once

namespace tessaly::core {

class Interpreter;

// core/stmt_run.cpp
int stmtRun(Interpreter&, int begin, int end);
int stmtEnd(Interpreter&, int begin, int end);
int stmtStop(Interpreter&, int begin, int end);
int stmtCont(Interpreter&, int begin, int end);
int stmtNothing(Interpreter&, int begin, int end); // REM, ', DATA at run time, USR
int stmtBeep(Interpreter&, int begin, int end);
int stmtDefUsr(Interpreter&, int begin, int end);

// core/stmt_error.cpp
int stmtOnErrorGoto(Interpreter&, int begin, int end);
int stmtResume(Interpreter&, int begin, int end);
int stmtError(Interpreter&, int begin, int end);

// core/stmt_goto.cpp
int stmtGoto(Interpreter&, int begin, int end);

// Resets what RUN, CLEAR and NEW reset: variables, type defaults, stacks, event traps.
void resetRunTime(Interpreter&);

} // namespace tessaly::core
