// The operations: arithmetic with its 16-digit results, integer division
// and MOD, 16-bit logical and relational operations, string joining and comparison.
#include "expr/operators.h"

#include <cmath>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "expr/number_text.h"

namespace tessaly::expr {

namespace {

// Rounded half away from zero to a 32-bit integer.
bool roundTo32(double x, int64_t& out)
{
    double rounded = core::roundHalfAwayFromZero(x);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0))
        return false;
    out = static_cast<int64_t>(rounded);
    return true;
}

// A computed number: its text reads back with the given number of digits; too big is Overflow.
int finishNumber(core::Interpreter& in, Number& result, double x, int digits, ValueType shown)
{
    if (!std::isfinite(x))
        return in.raise(core::ErrorId::Overflow);
    double rounded = RoundToDigits(x, digits);
    if (!std::isfinite(rounded))
        return in.raise(core::ErrorId::Overflow);
    result = {rounded, shown, digits == 16 ? NumberForm::Computed16 : NumberForm::Computed7};
    return 0;
}

int finishNumber(core::Interpreter& in, Value& result, double x, int digits, ValueType shown)
{
    Number number {};
    TRY_BASIC(finishNumber(in, number, x, digits, shown));
    result.setNumber(number.number, number.form, number.type);
    return 0;
}

int power(core::Interpreter& in, double a, double b, double& result)
{
    if (a == 0) {
        result = 0;
        return 0;
    }
    if (wholePowerExactly(a, b, result))
        return 0;
    bool integralB = std::trunc(b) == b;
    if (a < 0) {
        if (!integralB)
            return in.raise(core::ErrorId::IllegalFunctionCall);
        result = std::exp(std::log(-a) * b);
        if (std::fmod(std::fabs(b), 2.0) == 1.0)
            result = -result;
        return 0;
    }
    result = std::exp(std::log(a) * b);
    if (b > 0 && integralB && std::trunc(a) == a)
        result = core::roundHalfAwayFromZero(result);
    return 0;
}

int compareNumbers(double left, double right)
{
    int a = toInt16(left);
    int b = toInt16(right);
    return a < b ? -1 : (a > b ? 1 : 0);
}

int compareValues(const Value& left, const Value& right)
{
    if (left.isString()) {
        int c = left.text.compare(right.text);
        return c < 0 ? -1 : (c > 0 ? 1 : 0);
    }
    return compareNumbers(left.number, right.number);
}

bool relationHolds(Op op, int comparison)
{
    switch (op) {
    case Op::Less: return comparison < 0;
    case Op::Greater: return comparison > 0;
    case Op::LessEqual: return comparison <= 0;
    case Op::GreaterEqual: return comparison >= 0;
    case Op::Equal: return comparison == 0;
    default: return comparison != 0;
    }
}

int16_t logical(Op op, int16_t a, int16_t b)
{
    uint16_t x = static_cast<uint16_t>(a);
    uint16_t y = static_cast<uint16_t>(b);
    uint16_t r = 0;
    switch (op) {
    case Op::And: r = x & y; break;
    case Op::Or: r = x | y; break;
    case Op::Xor: r = x ^ y; break;
    case Op::Eqv: r = static_cast<uint16_t>(~(x ^ y)); break;
    default: r = static_cast<uint16_t>(~(x ^ y) | y); break; // IMP
    }
    return static_cast<int16_t>(r);
}

} // namespace

bool wholePowerExactly(double a, double b, double& result)
{
    // exp(log(a) x b) is a^b within a few units in the last place: for a^b up to 1e12 less than
    // 0.01, which the rounding to the nearest whole number removes. The product is exact there.
    constexpr double kExactUpTo = 1e12;
    if (!(a >= 1 && a <= kExactUpTo && std::trunc(a) == a && b >= 1 && b <= 40 && std::trunc(b) == b))
        return false;
    double product = a;
    for (int k = 1; k < static_cast<int>(b); ++k) {
        product *= a;
        if (product > kExactUpTo)
            return false;
    }
    result = product;
    return true;
}

int16_t toInt16(double value)
{
    // The cast truncates toward zero, and two's complement keeps the low 16 bits of any whole number
    // that fits 64 bits.
    if (std::fabs(value) < 9.0e18)
        return static_cast<int16_t>(static_cast<uint16_t>(static_cast<int64_t>(value) & 0xFFFF));
    if (!std::isfinite(value))
        return 0;
    double wrapped = std::fmod(std::trunc(value), 65536.0);
    if (wrapped < 0)
        wrapped += 65536.0;
    return static_cast<int16_t>(static_cast<uint16_t>(wrapped));
}

int applyNot(core::Interpreter& in, Number& operand)
{
    auto value = static_cast<int16_t>(~static_cast<uint16_t>(toInt16(operand.number)));
    return finishNumber(in, operand, value, 7, ValueType::Double);
}

int applyNot(core::Interpreter& in, Value& operand)
{
    // Like the binary logical words, NOT has no meaning for a string.
    if (operand.isString())
        return in.raise(core::ErrorId::SyntaxError);
    Number number {operand.number, operand.type, operand.form};
    TRY_BASIC(applyNot(in, number));
    operand.setNumber(number.number, number.form, number.type);
    return 0;
}

int applyBinary(core::Interpreter& in, Op op, Value& left, const Value& right)
{
    if (left.isString() || right.isString()) {
        if (op == Op::Add) {
            // In a string expression + joins the string literals and values; a number beside it
            // adds no characters ("A"+1 is "A").
            size_t added = right.isString() ? right.text.size() : 0;
            if (left.isString() && left.text.size() + added > kMaxStringLength)
                return in.raise(core::ErrorId::OutOfMemory);
            if (!left.isString())
                left = right;
            else if (right.isString())
                left.text += right.text;
            return 0;
        }
        if (isRelational(op)) {
            if (left.isString() != right.isString())
                return in.raise(core::ErrorId::TypeMismatch);
            bool holds = relationHolds(op, compareValues(left, right));
            return finishNumber(in, left, holds ? -1 : 0, 7, ValueType::Integer);
        }
        // -, *, /, \ and, as their kin, MOD, ^ and the logical words: a string on either side is
        // a syntax error, not a type mismatch.
        return in.raise(core::ErrorId::SyntaxError);
    }
    Number number {left.number, left.type, left.form};
    if (!applyQuickly(op, number, right.number))
        TRY_BASIC(applyBinary(in, op, number, right.number));
    left.setNumber(number.number, number.form, number.type);
    return 0;
}

int applyBinary(core::Interpreter& in, Op op, Number& left, double b)
{
    double a = left.number;
    if (isRelational(op))
        return finishNumber(in, left, relationHolds(op, compareNumbers(a, b)) ? -1 : 0, 7, ValueType::Integer);
    ValueType shown = left.type;
    switch (op) {
    case Op::Add: return finishNumber(in, left, a + b, 16, shown);
    case Op::Subtract: return finishNumber(in, left, a - b, 16, shown);
    case Op::Multiply: return finishNumber(in, left, a * b, 16, shown);
    case Op::Divide:
        if (std::fabs(b) < kDivisorThreshold)
            return in.raise(core::ErrorId::DivisionByZero);
        return finishNumber(in, left, a / b, 16, shown);
    case Op::Power: {
        double result = 0;
        TRY_BASIC(power(in, a, b, result));
        return finishNumber(in, left, result, 16, shown);
    }
    case Op::IntDivide:
    case Op::Mod: {
        int64_t x = 0;
        int64_t y = 0;
        if (!roundTo32(a, x) || !roundTo32(b, y))
            return in.raise(core::ErrorId::Overflow);
        if (y == 0)
            return in.raise(core::ErrorId::DivisionByZero);
        int64_t quotient = x / y;
        return finishNumber(in, left, static_cast<double>(op == Op::Mod ? x - quotient * y : quotient), 7, shown);
    }
    default:
        return finishNumber(in, left, logical(op, toInt16(a), toInt16(b)), 7, shown);
    }
}

} // namespace tessaly::expr
