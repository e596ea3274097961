// Executing one statement held in the statement buffer: line numbers, labels, keyword recognition
// with its refinements, and the call of the statement's handler through the dispatch table.
#pragma once

namespace tessaly::core {

class Interpreter;

// Returns kFailed when a BASIC error was raised, otherwise the statement code or a special result.
int executeStatement(Interpreter& interpreter, int begin, int end);

// Executes the statement again from the keyword at position begin (used after a handler
// rewrote the statement, as RETURN n and ON n GOTO do).
int executeFromKeyword(Interpreter& interpreter, int begin, int end);

// Line entry of a numbered line standing in the statement buffer.
void storeNumberedLine(Interpreter& interpreter);

} // namespace tessaly::core
