// Evaluating an expression of the statement buffer into a Value.
// Raises "Syntax error in " and the arithmetic errors through the interpreter.
#pragma once

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

// Evaluates the text of the statement buffer from begin to end. Returns 0, or kFailed after raising.
int evaluateExpression(core::Interpreter& interpreter, int begin, int end, Value& result);

// The value read as an integer, as statements read their arguments (truncated toward zero,
// clamped to the 32-bit range).
[[nodiscard]] int32_t integerOf(const Value& value);

} // namespace tessaly::expr
