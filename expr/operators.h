// The operators of expressions: their codes, which of two neighbours is done first, and the
// operations on numbers and strings with their errors.
#pragma once

#include <cstdint>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

// The code is also the precedence level; relational codes are above every arithmetic one.
enum class Op : uint8_t {
    Imp = 1, Eqv = 2, Xor = 3, And = 4, Or = 5, Not = 6,
    Add = 11, Subtract = 12, Mod = 13, IntDivide = 14, Multiply = 15, Divide = 16, Power = 17,
    Less = 21, Greater = 22, LessEqual = 23, GreaterEqual = 25, Equal = 27, NotEqual = 28,
};

[[nodiscard]] constexpr bool isRelational(Op op) { return static_cast<int>(op) >= 21; }

// Whether the pending operator is done before the newly found one.
[[nodiscard]] bool goesFirst(Op pending, Op found);

// left = left op right. Returns 0, or kFailed with the error raised.
int applyBinary(core::Interpreter& interpreter, Op op, Value& left, const Value& right);
// operand = NOT operand.
int applyNot(core::Interpreter& interpreter, Value& operand);
// Truncated toward zero and taken as a 16-bit value.
[[nodiscard]] int16_t toInt16(double value);

} // namespace tessaly::expr
