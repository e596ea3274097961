// Handlers of the statements that the core owns (run control, error trapping, jumps).
// Each takes the position after its keyword and the statement's end; see core/dispatch.h.
#pragma once

#include <string>
#include <string_view>

#include "core/outcome.h"

namespace tessaly::core {

class Interpreter;

// core/stmt_traps.cpp
Outcome stmtOnKeyGosub(Interpreter&, int begin, int end);
Outcome stmtKeySwitch(Interpreter&, int begin, int end);
Outcome stmtOnStopGosub(Interpreter&, int begin, int end);
Outcome stmtStopSwitch(Interpreter&, int begin, int end);
Outcome stmtOnTimeGosub(Interpreter&, int begin, int end);
Outcome stmtTimeSwitch(Interpreter&, int begin, int end);
Outcome stmtOnPenGosub(Interpreter&, int begin, int end);
Outcome stmtPen(Interpreter&, int begin, int end);
Outcome stmtComTraps(Interpreter&, int begin, int end);

// core/stmt_run.cpp
Outcome stmtRun(Interpreter&, int begin, int end);
Outcome stmtEnd(Interpreter&, int begin, int end);
Outcome stmtStop(Interpreter&, int begin, int end);
Outcome stmtCont(Interpreter&, int begin, int end);
Outcome stmtNothing(Interpreter&, int begin, int end); // REM, ', DATA at run time, USR
Outcome stmtBeep(Interpreter&, int begin, int end);
Outcome stmtDefUsr(Interpreter&, int begin, int end);

// core/stmt_error.cpp
Outcome stmtOnErrorGoto(Interpreter&, int begin, int end);
Outcome stmtResume(Interpreter&, int begin, int end);
Outcome stmtError(Interpreter&, int begin, int end);

// core/stmt_goto.cpp
Outcome stmtGoto(Interpreter&, int begin, int end);

// core/stmt_flow.cpp
Outcome stmtGosub(Interpreter&, int begin, int end);
Outcome stmtReturn(Interpreter&, int begin, int end);
Outcome stmtIf(Interpreter&, int begin, int end);
Outcome stmtOnGoto(Interpreter&, int begin, int end);

// core/stmt_for.cpp
Outcome stmtFor(Interpreter&, int begin, int end);
Outcome stmtNext(Interpreter&, int begin, int end);

// core/stmt_data.cpp
Outcome stmtRead(Interpreter&, int begin, int end);
Outcome stmtRestore(Interpreter&, int begin, int end);

// core/stmt_while.cpp
Outcome stmtWhile(Interpreter&, int begin, int end);
Outcome stmtWend(Interpreter&, int begin, int end);

// core/stmt_list.cpp
Outcome stmtList(Interpreter&, int begin, int end);
Outcome stmtLlist(Interpreter&, int begin, int end);
void listLines(Interpreter&, int from, int to);
// The number of the program line that defines a label; -1 when none does.
int labelLineNumber(Interpreter&, std::string_view label);

// core/stmt_edit.cpp
Outcome stmtDelete(Interpreter&, int begin, int end);
Outcome stmtAuto(Interpreter&, int begin, int end);
Outcome stmtEdit(Interpreter&, int begin, int end);
Outcome stmtNew(Interpreter&, int begin, int end);
// The program and everything prepared from it are gone, with the run-time state (NEW, File New).
void forgetProgram(Interpreter&);
// The statement ends the run as END does, its program being gone or replaced (NEW, LOAD, MERGE).
Outcome endAsAtEnd(Interpreter&);
int deleteLines(Interpreter&, int from, int to);
// A line entered while AUTO is active.
void autoLineEntered(Interpreter&, std::string_view text);

// core/stmt_renum.cpp
Outcome stmtRenum(Interpreter&, int begin, int end);

// Resets what RUN, CLEAR and NEW reset: variables, type defaults, stacks, event traps.
void resetRunTime(Interpreter&);
// Starts a run as RUN does: from the first line, or from a line number or label when given.
Outcome beginRun(Interpreter&, int lineNumber, const std::string& label);
// The program text changed (a line typed or deleted, DELETE, RENUM, NEW): the document is marked
// modified, and an interrupted run can no longer be continued, since its prepared entries no
// longer match the program ("Can't continue " as after END).
void programEdited(Interpreter&);

} // namespace tessaly::core
