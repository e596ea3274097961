// The handlers of the built-in functions, one for each handler named in core/numeric_functions.def
// and core/string_functions.def, and the argument readers they share. Each returns 0 with the
// result set, or kFailed with the error raised.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/basic_error.h"
#include "core/interpreter.h"
#include "expr/functions.h"
#include "expr/operators.h"

namespace tessaly::expr::builtin {

#define X(name, code, text, shape, handler) \
    int handler(core::Interpreter& interpreter, const FunctionCall& call, Value& result);
#include "core/numeric_functions.def"
#include "core/string_functions.def"
#undef X

// Argument k as a number; a missing or empty argument counts as 0, a string is a type mismatch.
int numberOrZero(core::Interpreter& interpreter, const std::vector<Value>& args, size_t k, double& x);
// Argument k as a number; missing or empty is a syntax error, a string a type mismatch.
int requiredNumber(core::Interpreter& interpreter, const std::vector<Value>& args, size_t k, double& x);
// Argument k as a string; missing or a number is a syntax error.
int requiredString(core::Interpreter& interpreter, const std::vector<Value>& args, size_t k,
    const std::string*& text);
// A numeric function's result, kept to 16 digits; Overflow when it is not finite.
int numberResult(core::Interpreter& interpreter, double x, Value& result);
int numberResult(core::Interpreter& interpreter, double x, Number& result);
// A string function's result.
int stringResult(std::string bytes, Value& result);

// Answered by io/expression_answers.cpp, beside the files and the memory map:
// VARPTR's address of a variable's cell (the variable made as on first use);
int addressOfVariable(core::Interpreter& interpreter, std::string_view name, bool isArray,
    const std::vector<int32_t>& subscripts, uint32_t& address);
// INPUT$'s bytes from file number `file` (a number out of range is no open file) or from the keys.
int bytesOfFile(core::Interpreter& interpreter, double file, size_t count, std::string& taken);
int bytesTyped(core::Interpreter& interpreter, size_t count, std::string& taken);

// Below this size a divisor or a logarithm's argument counts as zero.
inline constexpr double kNearZero = 1e-30;

// A function of one number (its first argument, 0 when missing) with a 16-digit result.
template <typename Compute>
int ofNumber(core::Interpreter& interpreter, const FunctionCall& call, Value& result, Compute compute)
{
    double x = 0;
    TRY_BASIC(numberOrZero(interpreter, call.arguments, 0, x));
    return numberResult(interpreter, compute(x), result);
}

// The same for a function with a domain: compute(x) where refused(x) is false, else the error.
template <typename Refused, typename Compute>
int ofNumberUnless(core::Interpreter& interpreter, const FunctionCall& call, Value& result, Refused refused,
    core::ErrorId error, Compute compute)
{
    double x = 0;
    TRY_BASIC(numberOrZero(interpreter, call.arguments, 0, x));
    if (refused(x))
        return interpreter.raise(error);
    return numberResult(interpreter, compute(x), result);
}

// 1 / divisor(x); Division by zero where divisor(x) is near zero.
template <typename Divisor>
int reciprocalOf(core::Interpreter& interpreter, const FunctionCall& call, Value& result, Divisor divisor)
{
    return ofNumberUnless(
        interpreter, call, result, [&](double x) { return std::fabs(divisor(x)) < kNearZero; },
        core::ErrorId::DivisionByZero, [&](double x) { return 1 / divisor(x); });
}

// A function of one number with several checks: compute(x, y) sets y, or returns the error it raised.
template <typename Compute>
int ofNumberInDomain(core::Interpreter& interpreter, const FunctionCall& call, Value& result, Compute compute)
{
    double x = 0;
    TRY_BASIC(numberOrZero(interpreter, call.arguments, 0, x));
    double y = 0;
    TRY_BASIC(compute(x, y));
    return numberResult(interpreter, y, result);
}

// The ways on a number alone (functions.h: oneNumberHandler), made from the same computations as
// the handlers: compute(x) where refused(x) is false, else the error.
template <typename Compute>
int numberOf(core::Interpreter& interpreter, double x, Number& result, Compute compute)
{
    return numberResult(interpreter, compute(x), result);
}
template <typename Refused, typename Compute>
int numberUnless(core::Interpreter& interpreter, double x, Number& result, Refused refused, core::ErrorId error,
    Compute compute)
{
    if (refused(x))
        return interpreter.raise(error);
    return numberResult(interpreter, compute(x), result);
}
int sineOfNumber(core::Interpreter& interpreter, double x, Number& result);
int cosineOfNumber(core::Interpreter& interpreter, double x, Number& result);
int tangentOfNumber(core::Interpreter& interpreter, double x, Number& result);
int arcTangentOfNumber(core::Interpreter& interpreter, double x, Number& result);
int naturalLogarithmOfNumber(core::Interpreter& interpreter, double x, Number& result);
int exponentialOfNumber(core::Interpreter& interpreter, double x, Number& result);
int squareRootOfNumber(core::Interpreter& interpreter, double x, Number& result);

} // namespace tessaly::expr::builtin
