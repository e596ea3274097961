// The operators of expressions: their codes, their priorities (which of two neighbours is done
// first), and the operations on numbers and strings with their errors.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "expr/number_text.h"
#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

enum class Op : uint8_t {
    Imp, Eqv, Xor, And, Or, Not,
    Add, Subtract, Mod, IntDivide, Multiply, Divide, Power,
    Less, Greater, LessEqual, GreaterEqual, Equal, NotEqual,
};

// Which of two neighbouring operators is done first. An operator waiting for its right operand
// (pending) goes before the next one found when its level is above the found one's yieldAbove.
struct OperatorPriority {
    Op op;
    uint8_t level;
    uint8_t yieldAbove;
};

// A relational operator found after another takes the operand just before it; waiting, it goes
// before anything found after it but another relational operator (1<2+3 compares first).
inline constexpr uint8_t kNeverYields = 255;

// Indexed by Op; an operator stands at its own place.
inline constexpr OperatorPriority kOperatorPriorities[] = {
    {Op::Imp, 1, 1},
    {Op::Eqv, 2, 2},
    {Op::Xor, 3, 3},
    {Op::And, 4, 4},
    {Op::Or, 5, 5},
    {Op::Not, 6, 6},
    {Op::Add, 11, 10},
    {Op::Subtract, 12, 10},
    {Op::Mod, 13, 12},
    {Op::IntDivide, 14, 13},
    {Op::Multiply, 15, 14},
    {Op::Divide, 16, 14},
    {Op::Power, 17, 16},
    {Op::Less, 21, kNeverYields},
    {Op::Greater, 21, kNeverYields},
    {Op::LessEqual, 21, kNeverYields},
    {Op::GreaterEqual, 21, kNeverYields},
    {Op::Equal, 21, kNeverYields},
    {Op::NotEqual, 21, kNeverYields},
};

[[nodiscard]] constexpr bool eachOperatorAtItsPlace()
{
    for (size_t k = 0; k < std::size(kOperatorPriorities); ++k) {
        if (static_cast<size_t>(kOperatorPriorities[k].op) != k)
            return false;
    }
    return std::size(kOperatorPriorities) == static_cast<size_t>(Op::NotEqual) + 1;
}
static_assert(eachOperatorAtItsPlace(), "one priority per operator, in the order of Op");

[[nodiscard]] constexpr const OperatorPriority& priorityOf(Op op) { return kOperatorPriorities[static_cast<size_t>(op)]; }

[[nodiscard]] constexpr bool isRelational(Op op) { return op >= Op::Less; }

// Whether the pending operator is done before the newly found one.
[[nodiscard]] constexpr bool goesFirst(Op pending, Op found)
{
    return priorityOf(pending).level > priorityOf(found).yieldAbove;
}

// A number as the operations see it: its value, the type PRINT shows it with, its text form.
struct Number {
    double number;
    ValueType type;
    NumberForm form;
};

// left = left op right. Returns 0, or kFailed with the error raised.
int applyBinary(core::Interpreter& interpreter, Op op, Value& left, const Value& right);
// The same on two numbers (the right one's type plays no part).
int applyBinary(core::Interpreter& interpreter, Op op, Number& left, double right);
// A divisor below this in size is a division by zero.
inline constexpr double kDivisorThreshold = 1e-50;

// a^b for a whole a from 1 and a whole b from 1 whose power is at most 1e12: the exact product,
// which is what a^b gives there (false outside that range, result untouched).
[[nodiscard]] bool wholePowerExactly(double a, double b, double& result);

// The commonest operations done inline, before applyBinary: +, -, * and / with a finite result
// and whole powers of whole numbers, rounded to 16 digits as applyBinary rounds them (a whole
// number below a million reads back as itself). false leaves left as it was: applyBinary then
// raises the error there is. Always inline: it is the step of every operation in a group.
[[nodiscard, gnu::always_inline]] inline bool applyQuickly(Op op, Number& left, double right)
{
    double x = 0;
    switch (op) {
    case Op::Add: x = left.number + right; break;
    case Op::Subtract: x = left.number - right; break;
    case Op::Multiply: x = left.number * right; break;
    case Op::Divide:
        if (!(right >= kDivisorThreshold || right <= -kDivisorThreshold))
            return false;
        x = left.number / right;
        break;
    case Op::Power:
        if (!wholePowerExactly(left.number, right, x))
            return false;
        break;
    default: return false;
    }
    if (isShortWhole(x)) {
        left = {x == 0.0 ? 0.0 : x, left.type, NumberForm::Computed16};
        return true;
    }
    if (!std::isfinite(x))
        return false;
    double rounded = RoundToDigitsBeyondShortWholes(x, 16);
    if (!std::isfinite(rounded))
        return false;
    left = {rounded, left.type, NumberForm::Computed16};
    return true;
}
// operand = NOT operand.
int applyNot(core::Interpreter& interpreter, Value& operand);
int applyNot(core::Interpreter& interpreter, Number& operand);
// Truncated toward zero and taken as a 16-bit value.
[[nodiscard]] int16_t toInt16(double value);

} // namespace tessaly::expr
