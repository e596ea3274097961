// Executing one statement held in the statement buffer: line numbers, labels, keyword recognition
// with its refinements, and the call of the statement's handler through the dispatch table.
#pragma once

#include "core/outcome.h"

namespace tessaly::core {

class Interpreter;

// The statement's outcome; its (refined) code is left in RunState::statementCode.
Outcome executeStatement(Interpreter& interpreter, int begin, int end);

// Executes the statement again from the keyword at position begin (used after a handler
// rewrote the statement, as RETURN n and ON n GOTO do).
Outcome executeFromKeyword(Interpreter& interpreter, int begin, int end);

// Line entry of a numbered line standing in the statement buffer.
void storeNumberedLine(Interpreter& interpreter);

} // namespace tessaly::core
