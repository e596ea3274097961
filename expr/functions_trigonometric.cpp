// SIN, COS, TAN, ATN, SEC, CSC, COT and their inverses, with their domain errors. SEC, CSC and
// COT keep the sign of the function they invert.
#include <cmath>

#include "core/interpreter.h"
#include "expr/builtin_functions.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

namespace {

bool outsideOne(double x) { return x < -1 || x > 1; }
bool insideOne(double x) { return x > -1 && x < 1; }

// Shared by the handlers and their ways on a number alone.
constexpr auto kSine = [](double x) { return std::sin(x); };
constexpr auto kCosine = [](double x) { return std::cos(x); };
constexpr auto kTangent = [](double x) { return std::tan(x); };
constexpr auto kTangentRefused = [](double x) { return std::fabs(std::cos(x)) < kNearZero; };
constexpr auto kArcTangent = [](double x) { return std::atan(x); };

} // namespace

int sine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, kSine);
}

int sineOfNumber(core::Interpreter& in, double x, Number& result)
{
    return numberOf(in, x, result, kSine);
}

int cosine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, kCosine);
}

int cosineOfNumber(core::Interpreter& in, double x, Number& result)
{
    return numberOf(in, x, result, kCosine);
}

int tangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(in, call, result, kTangentRefused, ErrorId::DivisionByZero, kTangent);
}

int tangentOfNumber(core::Interpreter& in, double x, Number& result)
{
    return numberUnless(in, x, result, kTangentRefused, ErrorId::DivisionByZero, kTangent);
}

int arcTangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumber(in, call, result, kArcTangent);
}

int arcTangentOfNumber(core::Interpreter& in, double x, Number& result)
{
    return numberOf(in, x, result, kArcTangent);
}

int secant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return reciprocalOf(in, call, result, [](double x) { return std::cos(x); });
}

int cosecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return reciprocalOf(in, call, result, [](double x) { return std::sin(x); });
}

int cotangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return reciprocalOf(in, call, result, [](double x) { return std::tan(x); });
}

int arcSine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(in, call, result, outsideOne, ErrorId::IllegalFunctionCall,
        [](double x) { return std::asin(x); });
}

int arcCosine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(in, call, result, outsideOne, ErrorId::IllegalFunctionCall,
        [](double x) { return std::acos(x); });
}

int arcSecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(in, call, result, insideOne, ErrorId::IllegalFunctionCall,
        [](double x) { return std::acos(1 / x); });
}

int arcCosecant(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(in, call, result, insideOne, ErrorId::IllegalFunctionCall,
        [](double x) { return std::asin(1 / x); });
}

int arcCotangent(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return ofNumberUnless(
        in, call, result, [](double x) { return x < kNearZero; }, ErrorId::IllegalFunctionCall,
        [](double x) { return std::atan(1 / x); });
}

} // namespace tessaly::expr::builtin
