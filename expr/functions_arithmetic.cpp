// LOG, SQR, EXP, ABS, SGN, the conversions CINT, CSNG and CDBL, and FIX, INT and ROUND.
#include <cmath>
#include <cstdio>
#include <string>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "expr/builtin_functions.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

namespace {

// Below this a logarithm's argument counts as zero, and SQR's as negative.
constexpr double kZeroThreshold = 1e-50;

// Shared by the handlers and their ways on a number alone.
constexpr auto kLogarithm = [](double x) { return std::log(x); };
constexpr auto kLogarithmRefused = [](double x) { return x < kZeroThreshold; };
constexpr auto kSquareRoot = [](double x) { return x < 0 ? 0 : std::sqrt(x); };
constexpr auto kSquareRootRefused = [](double x) { return x < -kZeroThreshold; };
constexpr auto kExponential = [](double x) { return std::exp(x); };

// x written with exactly n decimals, halves away from zero, then read back.
double roundDecimals(double x, int n)
{
    char text[512];
    std::snprintf(text, sizeof text, "%.*f", n + 25, std::fabs(x));
    std::string digits = text;
    auto dot = digits.find('.');
    bool up = digits[dot + static_cast<size_t>(n) + 1] >= '5';
    std::string kept = digits.substr(0, dot) + digits.substr(dot + 1, static_cast<size_t>(n));
    if (up) {
        size_t k = kept.size();
        while (k > 0) {
            --k;
            if (kept[k] == '9') {
                kept[k] = '0';
                continue;
            }
            ++kept[k];
            break;
        }
        if (k == 0 && kept[0] == '0')
            kept.insert(0, 1, '1');
    }
    size_t point = kept.size() - static_cast<size_t>(n);
    kept = kept.substr(0, point) + "." + kept.substr(point);
    double value = std::strtod(kept.c_str(), nullptr);
    return x < 0 ? -value : value;
}

} // namespace

int naturalLogarithm(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(in, call, result, kLogarithmRefused, ErrorId::IllegalFunctionCall, kLogarithm);
}

int naturalLogarithmOfNumber(core::Interpreter& in, double x, Number& result)
{
    return numberUnless(in, x, result, kLogarithmRefused, ErrorId::IllegalFunctionCall, kLogarithm);
}

int squareRoot(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(in, call, result, kSquareRootRefused, ErrorId::IllegalFunctionCall, kSquareRoot);
}

int squareRootOfNumber(core::Interpreter& in, double x, Number& result)
{
    return numberUnless(in, x, result, kSquareRootRefused, ErrorId::IllegalFunctionCall, kSquareRoot);
}

int exponential(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, kExponential);
}

int exponentialOfNumber(core::Interpreter& in, double x, Number& result)
{
    return numberOf(in, x, result, kExponential);
}

int absoluteValue(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::fabs(x); });
}

int sign(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return x > 0 ? 1.0 : (x < 0 ? -1.0 : 0.0); });
}

int roundedToInteger(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        y = core::roundHalfAwayFromZero(x);
        if (y >= 32768 || y <= -32769)
            return in.raise(ErrorId::Overflow);
        return 0;
    });
}

int toSingle(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) -> double { return static_cast<float>(x); });
}

int toDouble(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return x; });
}

int truncated(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::trunc(x); });
}

int floored(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::floor(x); });
}

int roundedToDecimals(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double x = 0;
    double decimals = 0;
    TRY_BASIC(numberOrZero(in, call.arguments, 0, x));
    TRY_BASIC(numberOrZero(in, call.arguments, 1, decimals));
    if (decimals < 0 || decimals > 16)
        return in.raise(ErrorId::IllegalFunctionCall);
    return numberResult(in, roundDecimals(x, static_cast<int>(decimals)), result);
}

} // namespace tessaly::expr::builtin
