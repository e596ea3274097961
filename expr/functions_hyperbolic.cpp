// SINH, COSH, TANH, SECH, CSCH, COTH and their inverses, with their domain errors.
#include <cmath>

#include "core/interpreter.h"
#include "expr/builtin_functions.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

namespace {

// factor * ln(q) for the inverse functions: a q that is not positive lies outside their domain.
int scaledLogarithm(core::Interpreter& in, double q, double factor, double& y)
{
    if (q < kNearZero)
        return in.raise(ErrorId::IllegalFunctionCall);
    y = factor * std::log(q);
    return 0;
}

} // namespace

int hyperbolicSine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::sinh(x); });
}

int hyperbolicCosine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::cosh(x); });
}

int hyperbolicTangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::tanh(x); });
}

int hyperbolicSecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return 1 / std::cosh(x); });
}

int hyperbolicCosecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return reciprocalOf(in, call, result, [](double x) { return std::sinh(x); });
}

int hyperbolicCotangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return reciprocalOf(in, call, result, [](double x) { return std::tanh(x); });
}

int hyperbolicArcSine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        double sum = x + std::sqrt(x * x + 1);
        if (sum < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        y = std::log(sum);
        return 0;
    });
}

int hyperbolicArcCosine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x < 1)
            return in.raise(ErrorId::IllegalFunctionCall);
        return scaledLogarithm(in, x + std::sqrt(x * x - 1), 1, y);
    });
}

int hyperbolicArcTangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x < -1 || x > 1)
            return in.raise(ErrorId::IllegalFunctionCall);
        if (1 - x < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        return scaledLogarithm(in, (1 + x) / (1 - x), 0.5, y);
    });
}

int hyperbolicArcSecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        if (1 - x * x < 0)
            return in.raise(ErrorId::IllegalFunctionCall);
        y = std::log((1 + std::sqrt(1 - x * x)) / x);
        return 0;
    });
}

int hyperbolicArcCosecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (std::fabs(x) < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        double sign = x > 0 ? 1 : -1;
        return scaledLogarithm(in, (std::sqrt(1 + x * x) * sign + 1) / x, 1, y);
    });
}

int hyperbolicArcCotangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (std::fabs(x - 1) < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        return scaledLogarithm(in, (x + 1) / (x - 1), 0.5, y);
    });
}

} // namespace tessaly::expr::builtin
