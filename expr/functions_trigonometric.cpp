// SIN, COS, TAN, ATN, SEC, CSC, COT and their inverses, with their domain errors. SEC, CSC and
// COT keep the sign of the function they invert.
#include <cmath>

#include "core/interpreter.h"
#include "expr/builtin_functions.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

int sine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::sin(x); });
}

int cosine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::cos(x); });
}

int tangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (std::fabs(std::cos(x)) < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        y = std::tan(x);
        return 0;
    });
}

int arcTangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, [](double x) { return std::atan(x); });
}

int secant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (std::fabs(std::cos(x)) < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        y = 1 / std::cos(x);
        return 0;
    });
}

int cosecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (std::fabs(std::sin(x)) < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        y = 1 / std::sin(x);
        return 0;
    });
}

int cotangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (std::fabs(std::tan(x)) < kNearZero)
            return in.raise(ErrorId::DivisionByZero);
        y = 1 / std::tan(x);
        return 0;
    });
}

int arcSine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x < -1 || x > 1)
            return in.raise(ErrorId::IllegalFunctionCall);
        y = std::asin(x);
        return 0;
    });
}

int arcCosine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x < -1 || x > 1)
            return in.raise(ErrorId::IllegalFunctionCall);
        y = std::acos(x);
        return 0;
    });
}

int arcSecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x > -1 && x < 1)
            return in.raise(ErrorId::IllegalFunctionCall);
        y = std::acos(1 / x);
        return 0;
    });
}

int arcCosecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x > -1 && x < 1)
            return in.raise(ErrorId::IllegalFunctionCall);
        y = std::asin(1 / x);
        return 0;
    });
}

int arcCotangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberInDomain(in, call, result, [&](double x, double& y) -> int {
        if (x < kNearZero)
            return in.raise(ErrorId::IllegalFunctionCall);
        y = std::atan(1 / x);
        return 0;
    });
}

} // namespace tessaly::expr::builtin
