// Reading the pieces of variable lists in the statement buffer: a variable name (upper-cased), the
// parenthesised arguments after an array name, and the commas between the items of a list.
#pragma once

#include <string>
#include <vector>

#include "core/statement_buffer.h"
#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

void skipBlanks(const core::StatementBuffer& buffer, int& pos, int end);

// A name starts with a letter after any blanks; pos moves past it. false when no letter stands
// there (pos then stands on that character).
bool readVariableName(const core::StatementBuffer& buffer, int& pos, int end, std::string& name);

// Evaluates the arguments inside the parentheses that open at pos; pos moves past the ")".
// "Syntax error in " when the ")" is missing.
int readParenthesisedArguments(core::Interpreter& in, int& pos, int end, std::vector<Value>& values);

// After an item of a comma list: 1 when another item follows (pos past the comma), 0 at the
// end of the statement, kFailed ("Syntax error in ") when anything else follows.
int nextListItem(core::Interpreter& in, int& pos, int end);

} // namespace tessaly::expr
