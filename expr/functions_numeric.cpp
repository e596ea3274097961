// The numeric functions: recognition of every function name, the mathematical functions with their
// domain errors, CINT/FIX/INT/ROUND, RND, ERR/ERL, and the string-taking ASC/LEN/INSTR/VAL/CVx.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <unordered_map>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "io/file_functions.h"
#include "io/memory.h"
#include "core/keyword_table.h"
#include "expr/evaluator.h"
#include "expr/functions.h"
#include "expr/number_text.h"
#include "screen/statements.h"

namespace tessaly::expr {

namespace {

using core::ErrorId;

constexpr double kZeroThreshold = 1e-50;
constexpr double kNearZero = 1e-30;

// Numeric function codes (the keyword table's numeric list).
enum Fn {
    Sin = 1, Cos, Tan, Log, Sqr, Abs, Exp, Atn, Sgn, Cint, Csng, Cdbl, Asc, Csrlin, Pos, Cvi, Cvs, Cvd, Val, Point,
    Fix, Int, Rnd, Instr, Eof, Len, Peek, Defuser, Varptr, Inp, Usr, FnCall, Erl, Err, Sec, Csc, Cot, ArcSin, ArcCos,
    ArcSec, ArcCsc, ArcCot, Sinh, Cosh, Tanh, Sech, Csch, Coth, ArcSinh, ArcCosh, ArcTanh, ArcSech, ArcCsch,
    ArcCoth, Cosec, Asin, Acos, Asec, Acsc, Acosec, Acot, Cosech, Asinh, Acosh, Atanh, Asech, Acsch, Acosech,
    Acoth, Map, View, Window, Lof, Pen, Round, Segptr, Loc
};

// Aliases share the handler of their long name.
int canonical(int code)
{
    switch (code) {
    case Asin: return ArcSin;
    case Acos: return ArcCos;
    case Asec: return ArcSec;
    case Acsc: return ArcCsc;
    case Acot: return ArcCot;
    case Asinh: return ArcSinh;
    case Atanh: return ArcTanh;
    case Cosec: return Csc;
    case Cosech: return Csch;
    case Acosec: return ArcCsc;
    case Acosech: return ArcCsch;
    case Acosh: return ArcCosh;
    case Asech: return ArcSech;
    case Acsch: return ArcCsch;
    case Acoth: return ArcCoth;
    default: return code;
    }
}

const std::unordered_map<std::string_view, FunctionId>& functionNames()
{
    static const auto names = [] {
        std::unordered_map<std::string_view, FunctionId> map;
        const auto& table = core::keywordTable();
        for (int code = 1; code <= core::KeywordTable::numericFunctionCount(); ++code)
            map.emplace(table.numericFunction(code), FunctionId {FunctionKind::Numeric, code});
        for (int code = 1; code <= core::KeywordTable::stringFunctionCount(); ++code)
            map.emplace(table.stringFunction(code), FunctionId {FunctionKind::String, code});
        return map;
    }();
    return names;
}

int result16(core::Interpreter& in, double x, Value& result)
{
    if (!std::isfinite(x))
        return in.raise(ErrorId::Overflow);
    result = Value::makeNumber(RoundToDigits(x, 16), NumberForm::Computed16);
    return 0;
}

int needNumber(core::Interpreter& in, const std::vector<Value>& args, size_t k, double& x)
{
    if (k >= args.size() || args[k].empty) {
        x = 0;
        return 0;
    }
    if (args[k].isString())
        return in.raise(ErrorId::TypeMismatch);
    x = args[k].number;
    return 0;
}

int needString(core::Interpreter& in, const std::vector<Value>& args, size_t k, const std::string*& s)
{
    if (k >= args.size() || !args[k].isString())
        return in.raise(ErrorId::SyntaxError);
    s = &args[k].text;
    return 0;
}

int trigonometric(core::Interpreter& in, int code, double x, double& y)
{
    auto div0 = [&] { return in.raise(ErrorId::DivisionByZero); };
    auto illegal = [&] { return in.raise(ErrorId::IllegalFunctionCall); };
    switch (code) {
    case Sin: y = std::sin(x); return 0;
    case Cos: y = std::cos(x); return 0;
    case Tan:
        if (std::fabs(std::cos(x)) < kNearZero)
            return div0();
        y = std::tan(x);
        return 0;
    case Atn: y = std::atan(x); return 0;
    // SEC, CSC and COT keep the sign of the function they invert.
    case Sec:
        if (std::fabs(std::cos(x)) < kNearZero)
            return div0();
        y = 1 / std::cos(x);
        return 0;
    case Csc:
        if (std::fabs(std::sin(x)) < kNearZero)
            return div0();
        y = 1 / std::sin(x);
        return 0;
    case Cot:
        if (std::fabs(std::tan(x)) < kNearZero)
            return div0();
        y = 1 / std::tan(x);
        return 0;
    case ArcSin:
    case ArcCos:
        if (x < -1 || x > 1)
            return illegal();
        y = code == ArcSin ? std::asin(x) : std::acos(x);
        return 0;
    case ArcSec:
    case ArcCsc:
        if (x > -1 && x < 1)
            return illegal();
        y = code == ArcSec ? std::acos(1 / x) : std::asin(1 / x);
        return 0;
    case ArcCot:
        if (x < kNearZero)
            return illegal();
        y = std::atan(1 / x);
        return 0;
    default:
        return illegal();
    }
}

int hyperbolic(core::Interpreter& in, int code, double x, double& y)
{
    auto div0 = [&] { return in.raise(ErrorId::DivisionByZero); };
    auto illegal = [&] { return in.raise(ErrorId::IllegalFunctionCall); };
    switch (code) {
    case Sinh: y = std::sinh(x); return 0;
    case Cosh: y = std::cosh(x); return 0;
    case Tanh: y = std::tanh(x); return 0;
    case Sech: y = 1 / std::cosh(x); return 0;
    case Csch:
        if (std::fabs(std::sinh(x)) < kNearZero)
            return div0();
        y = 1 / std::sinh(x);
        return 0;
    case Coth:
        if (std::fabs(std::tanh(x)) < kNearZero)
            return div0();
        y = 1 / std::tanh(x);
        return 0;
    case ArcSinh: {
        double sum = x + std::sqrt(x * x + 1);
        if (sum < kNearZero)
            return div0();
        y = std::log(sum);
        return 0;
    }
    case ArcCosh: {
        if (x < 1)
            return illegal();
        double sum = x + std::sqrt(x * x - 1);
        if (sum < kNearZero)
            return illegal();
        y = std::log(sum);
        return 0;
    }
    case ArcTanh: {
        if (x < -1 || x > 1)
            return illegal();
        if (1 - x < kNearZero)
            return div0();
        double q = (1 + x) / (1 - x);
        if (q < kNearZero)
            return illegal();
        y = 0.5 * std::log(q);
        return 0;
    }
    case ArcSech:
        if (x < kNearZero)
            return div0();
        if (1 - x * x < 0)
            return illegal();
        y = std::log((1 + std::sqrt(1 - x * x)) / x);
        return 0;
    case ArcCsch: {
        if (std::fabs(x) < kNearZero)
            return div0();
        double s = x > 0 ? 1 : -1;
        double q = (std::sqrt(1 + x * x) * s + 1) / x;
        if (q < kNearZero)
            return illegal();
        y = std::log(q);
        return 0;
    }
    case ArcCoth: {
        if (std::fabs(x - 1) < kNearZero)
            return div0();
        double q = (x + 1) / (x - 1);
        if (q < kNearZero)
            return illegal();
        y = 0.5 * std::log(q);
        return 0;
    }
    default:
        return illegal();
    }
}

// ROUND(x, n): x written with exactly n decimals, halves away from zero, then read back.
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

int bytesValue(core::Interpreter& in, const std::string& s, size_t size, double& y)
{
    if (s.size() != size)
        return in.raise(ErrorId::IllegalFunctionCall);
    if (size == 2) {
        int16_t v = 0;
        std::memcpy(&v, s.data(), 2);
        y = v;
    } else if (size == 4) {
        float v = 0;
        std::memcpy(&v, s.data(), 4);
        y = v;
    } else {
        std::memcpy(&y, s.data(), 8);
    }
    if (!std::isfinite(y))
        return in.raise(ErrorId::Overflow);
    return 0;
}

// VAL: &H and &O (or & alone) as 32-bit integers, else a decimal number.
double valueOfText(std::string_view text)
{
    size_t pos = 0;
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    if (pos < text.size() && text[pos] == '&') {
        ++pos;
        int base = 8;
        if (pos < text.size() && (text[pos] == 'H' || text[pos] == 'h')) {
            base = 16;
            ++pos;
        } else if (pos < text.size() && (text[pos] == 'O' || text[pos] == 'o')) {
            ++pos;
        }
        uint32_t number = 0;
        for (; pos < text.size(); ++pos) {
            char c = text[pos];
            int digit = (c >= '0' && c <= '9') ? c - '0'
                : (c >= 'A' && c <= 'F') ? c - 'A' + 10
                : (c >= 'a' && c <= 'f') ? c - 'a' + 10
                                         : 99;
            if (digit >= base)
                break;
            number = number * static_cast<uint32_t>(base) + static_cast<uint32_t>(digit);
        }
        return static_cast<int32_t>(number);
    }
    return ReadNumberText(text);
}

} // namespace

FunctionId findFunction(std::string_view name)
{
    const auto& names = functionNames();
    auto found = names.find(name);
    if (found != names.end())
        return found->second;
    // USR0 .. USR9
    if (name.size() == 4 && name.starts_with("USR") && name[3] >= '0' && name[3] <= '9')
        return {FunctionKind::Numeric, Usr};
    return {};
}

int callNumericFunction(core::Interpreter& in, int code, const std::vector<Value>& args, bool hasParentheses,
    Value& result)
{
    code = canonical(code);
    double x = 0;
    double y = 0;
    switch (code) {
    case Asc: {
        const std::string* s = nullptr;
        TRY_BASIC(needString(in, args, 0, s));
        if (s->empty())
            return in.raise(ErrorId::IllegalFunctionCall);
        return result16(in, static_cast<unsigned char>((*s)[0]), result);
    }
    case Len: {
        const std::string* s = nullptr;
        TRY_BASIC(needString(in, args, 0, s));
        return result16(in, static_cast<double>(s->size()), result);
    }
    case Val: {
        const std::string* s = nullptr;
        TRY_BASIC(needString(in, args, 0, s));
        return result16(in, valueOfText(*s), result);
    }
    case Cvi:
    case Cvs:
    case Cvd: {
        const std::string* s = nullptr;
        TRY_BASIC(needString(in, args, 0, s));
        TRY_BASIC(bytesValue(in, *s, code == Cvi ? 2 : (code == Cvs ? 4 : 8), y));
        return result16(in, y, result);
    }
    case Instr: {
        size_t first = 0;
        double start = 1;
        if (!args.empty() && !args[0].isString()) {
            start = args[0].number;
            first = 1;
        }
        const std::string* s = nullptr;
        const std::string* t = nullptr;
        TRY_BASIC(needString(in, args, first, s));
        TRY_BASIC(needString(in, args, first + 1, t));
        auto from = static_cast<size_t>(start < 1 ? 0 : std::min(std::trunc(start) - 1, 1e9));
        auto found = from > s->size() ? std::string::npos : s->find(*t, from);
        return result16(in, found == std::string::npos ? 0 : static_cast<double>(found + 1), result);
    }
    case Rnd: {
        bool hasArgument = hasParentheses && !args.empty() && !args[0].empty;
        TRY_BASIC(needNumber(in, args, 0, x));
        return result16(in, in.functionState().random.rnd(hasArgument, x), result);
    }
    case Err:
        return result16(in, in.error().code, result);
    case Erl:
        return result16(in, in.error().line, result);
    case Csrlin:
        return result16(in, in.screen().cursorRow(), result);
    case Pos:
        return result16(in, in.screen().cursorColumn(), result);
    case Point:
        return screen::graphicsFunction(in, screen::GraphicsFunction::Point, args, hasParentheses, result);
    case Map:
        return screen::graphicsFunction(in, screen::GraphicsFunction::Map, args, hasParentheses, result);
    case View:
        return screen::graphicsFunction(in, screen::GraphicsFunction::View, args, hasParentheses, result);
    case Window:
        return screen::graphicsFunction(in, screen::GraphicsFunction::Window, args, hasParentheses, result);
    case Eof: case Lof: case Loc: {
        TRY_BASIC(needNumber(in, args, 0, x));
        auto query = code == Eof ? io::FileQuery::AtEnd : code == Lof ? io::FileQuery::Length : io::FileQuery::Position;
        double answer = 0;
        TRY_BASIC(io::queryFile(in, query, static_cast<int>(std::trunc(x)), answer));
        return result16(in, answer, result);
    }
    case Peek:
        return io::memoryFunction(in, io::MemoryFunction::Peek, args, result);
    case Defuser:
        return io::memoryFunction(in, io::MemoryFunction::Defuser, args, result);
    case Segptr:
        return io::memoryFunction(in, io::MemoryFunction::Segptr, args, result);
    case Inp:
        return io::memoryFunction(in, io::MemoryFunction::Inp, args, result);
    case Pen: {
        TRY_BASIC(needNumber(in, args, 0, x));
        TRY_BASIC(core::penFunction(in, static_cast<int>(std::trunc(x)), y));
        return result16(in, y, result);
    }
    case Varptr: case Usr:
        // Reached by name in the evaluator (they need the variable or the digit, not values).
        return in.raise(ErrorId::IllegalFunctionCall);
    default:
        break;
    }
    TRY_BASIC(needNumber(in, args, 0, x));
    switch (code) {
    case Log:
        if (x < kZeroThreshold)
            return in.raise(ErrorId::IllegalFunctionCall);
        return result16(in, std::log(x), result);
    case Sqr:
        if (x < -kZeroThreshold)
            return in.raise(ErrorId::IllegalFunctionCall);
        return result16(in, x < 0 ? 0 : std::sqrt(x), result);
    case Exp: return result16(in, std::exp(x), result);
    case Abs: return result16(in, std::fabs(x), result);
    case Sgn: return result16(in, x > 0 ? 1 : (x < 0 ? -1 : 0), result);
    case Cint: {
        double r = core::roundHalfAwayFromZero(x);
        if (r >= 32768 || r <= -32769)
            return in.raise(ErrorId::Overflow);
        return result16(in, r, result);
    }
    case Csng: return result16(in, static_cast<float>(x), result);
    case Cdbl: return result16(in, x, result);
    case Fix: return result16(in, std::trunc(x), result);
    case Int: return result16(in, std::floor(x), result);
    case Round: {
        double n = 0;
        TRY_BASIC(needNumber(in, args, 1, n));
        if (n < 0 || n > 16)
            return in.raise(ErrorId::IllegalFunctionCall);
        return result16(in, roundDecimals(x, static_cast<int>(n)), result);
    }
    case Sinh: case Cosh: case Tanh: case Sech: case Csch: case Coth: case ArcSinh: case ArcCosh: case ArcTanh:
    case ArcSech: case ArcCsch: case ArcCoth:
        TRY_BASIC(hyperbolic(in, code, x, y));
        return result16(in, y, result);
    default:
        TRY_BASIC(trigonometric(in, code, x, y));
        return result16(in, y, result);
    }
}

} // namespace tessaly::expr
