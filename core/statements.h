// What the core's statement handlers share with the rest of the system: listing, the program's
// edits, starting and ending runs. The handlers themselves (core/stmt_*.cpp) are reached only
// through the dispatch table, which takes them from core/keywords.def.
#pragma once

#include <string>
#include <string_view>

#include "core/outcome.h"

namespace tessaly::core {

class Interpreter;

// core/stmt_list.cpp
void listLines(Interpreter& interpreter, int from, int to);
// The number of the program line that defines a label; -1 when none does.
int labelLineNumber(Interpreter& interpreter, std::string_view label);

// core/stmt_edit.cpp
// The program and everything prepared from it are gone, with the run-time state (NEW, File New).
void forgetProgram(Interpreter& interpreter);
// The statement ends the run as END does, its program being gone or replaced (NEW, LOAD, MERGE).
Outcome endAsAtEnd(Interpreter& interpreter);
int deleteLines(Interpreter& interpreter, int from, int to);
// A line entered while AUTO is active.
void autoLineEntered(Interpreter& interpreter, std::string_view text);

// Resets what RUN, CLEAR and NEW reset: variables, type defaults, stacks, event traps.
void resetRunTime(Interpreter& interpreter);
// Starts a run as RUN does: from the first line, or from a line number or label when given.
Outcome beginRun(Interpreter& interpreter, int lineNumber, const std::string& label);
// The program text changed (a line typed or deleted, DELETE, RENUM, NEW): the document is marked
// modified, and an interrupted run can no longer be continued, since its prepared entries no
// longer match the program ("Can't continue " as after END).
void programEdited(Interpreter& interpreter);

} // namespace tessaly::core
