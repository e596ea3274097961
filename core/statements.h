// Handlers of the statements that the core owns (run control, error trapping, jumps).
// Each takes the position after its keyword and the statement's end; see core/dispatch.h.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::core {

class Interpreter;

// core/stmt_traps.cpp
int stmtOnKeyGosub(Interpreter&, int begin, int end);
int stmtKeySwitch(Interpreter&, int begin, int end);
int stmtOnStopGosub(Interpreter&, int begin, int end);
int stmtStopSwitch(Interpreter&, int begin, int end);
int stmtOnTimeGosub(Interpreter&, int begin, int end);
int stmtTimeSwitch(Interpreter&, int begin, int end);
int stmtOnPenGosub(Interpreter&, int begin, int end);
int stmtPen(Interpreter&, int begin, int end);
int stmtComTraps(Interpreter&, int begin, int end);

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

// core/stmt_flow.cpp
int stmtGosub(Interpreter&, int begin, int end);
int stmtReturn(Interpreter&, int begin, int end);
int stmtIf(Interpreter&, int begin, int end);
int stmtOnGoto(Interpreter&, int begin, int end);

// core/stmt_for.cpp
int stmtFor(Interpreter&, int begin, int end);
int stmtNext(Interpreter&, int begin, int end);

// core/stmt_data.cpp
int stmtRead(Interpreter&, int begin, int end);
int stmtRestore(Interpreter&, int begin, int end);

// core/stmt_while.cpp
int stmtWhile(Interpreter&, int begin, int end);
int stmtWend(Interpreter&, int begin, int end);

// core/stmt_list.cpp
int stmtList(Interpreter&, int begin, int end);
int stmtLlist(Interpreter&, int begin, int end);
void listLines(Interpreter&, int from, int to);
// The number of the program line that defines a label; -1 when none does.
int labelLineNumber(Interpreter&, std::string_view label);

// core/stmt_edit.cpp
int stmtDelete(Interpreter&, int begin, int end);
int stmtAuto(Interpreter&, int begin, int end);
int stmtEdit(Interpreter&, int begin, int end);
int stmtNew(Interpreter&, int begin, int end);
// The program and everything prepared from it are gone, with the run-time state (NEW, File New).
void forgetProgram(Interpreter&);
// The statement ends the run as END does, its program being gone or replaced (NEW, LOAD, MERGE).
int endAsAtEnd(Interpreter&);
int deleteLines(Interpreter&, int from, int to);
// A line entered while AUTO is active.
void autoLineEntered(Interpreter&, std::string_view text);

// core/stmt_renum.cpp
int stmtRenum(Interpreter&, int begin, int end);

// Resets what RUN, CLEAR and NEW reset: variables, type defaults, stacks, event traps.
void resetRunTime(Interpreter&);
// Starts a run as RUN does: from the first line, or from a line number or label when given.
int beginRun(Interpreter&, int lineNumber, const std::string& label);
// The program text changed (a line typed or deleted, DELETE, RENUM, NEW): the document is marked
// modified, and an interrupted run can no longer be continued, since its prepared entries no
// longer match the program ("Can't continue " as after END).
void programEdited(Interpreter&);

} // namespace tessaly::core
