// Recognition of a function name and the call of its handler, both made from the function lists.
#include <array>
#include <unordered_map>

#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "expr/builtin_functions.h"
#include "expr/functions.h"

namespace tessaly::expr {

namespace {

using FunctionHandler = int (*)(core::Interpreter& interpreter, const FunctionCall& call, Value& result);

struct FunctionEntry {
    ArgumentShape shape;
    FunctionHandler handler;
};

// Indexed by code - 1: the keyword table checks that the codes run 1, 2, 3 ... down each list.
constexpr FunctionEntry kNumericEntries[] = {
#define X(name, code, text, shape, handler) {ArgumentShape::shape, &builtin::handler},
#include "core/numeric_functions.def"
#undef X
};
constexpr FunctionEntry kStringEntries[] = {
#define X(name, code, text, shape, handler) {ArgumentShape::shape, &builtin::handler},
#include "core/string_functions.def"
#undef X
};
static_assert(std::size(kNumericEntries) == core::kNumericFunctionCount, "one handler for each numeric function");
static_assert(std::size(kStringEntries) == core::kStringFunctionCount, "one handler for each string function");

// The entry of a function, or nullptr for a code outside its list.
const FunctionEntry* entryOf(FunctionKind kind, int code)
{
    if (kind == FunctionKind::Numeric && code >= 1 && code <= core::kNumericFunctionCount)
        return &kNumericEntries[code - 1];
    if (kind == FunctionKind::String && code >= 1 && code <= core::kStringFunctionCount)
        return &kStringEntries[code - 1];
    return nullptr;
}

FunctionId identify(FunctionKind kind, int code)
{
    return {kind, code, entryOf(kind, code)->shape};
}

// Every name of both lists; where a name stood twice, the first in search order would win.
const std::unordered_map<std::string_view, FunctionId>& functionNames()
{
    static const auto names = [] {
        std::unordered_map<std::string_view, FunctionId> map;
        const auto& table = core::keywordTable();
        for (int code = 1; code <= core::kNumericFunctionCount; ++code)
            map.emplace(table.numericFunction(code), identify(FunctionKind::Numeric, code));
        for (int code = 1; code <= core::kStringFunctionCount; ++code)
            map.emplace(table.stringFunction(code), identify(FunctionKind::String, code));
        return map;
    }();
    return names;
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
        return identify(FunctionKind::Numeric, static_cast<int>(NumericFunction::Usr));
    return {};
}

bool isPureNumericFunction(FunctionId function)
{
    if (function.kind != FunctionKind::Numeric)
        return false;
    auto code = static_cast<NumericFunction>(function.code);
    // The trigonometric, logarithmic and conversion functions (SIN to CDBL), FIX and INT, the
    // further trigonometric and hyperbolic ones (SEC to ACOTH) and ROUND.
    return (code >= NumericFunction::Sin && code <= NumericFunction::Cdbl) || code == NumericFunction::Fix
        || code == NumericFunction::Int || (code >= NumericFunction::Sec && code <= NumericFunction::Acoth)
        || code == NumericFunction::Round;
}

OneNumberHandler oneNumberHandler(FunctionId function)
{
    if (function.kind != FunctionKind::Numeric)
        return nullptr;
    switch (static_cast<NumericFunction>(function.code)) {
    case NumericFunction::Sin: return &builtin::sineOfNumber;
    case NumericFunction::Cos: return &builtin::cosineOfNumber;
    case NumericFunction::Tan: return &builtin::tangentOfNumber;
    case NumericFunction::Atn: return &builtin::arcTangentOfNumber;
    case NumericFunction::Log: return &builtin::naturalLogarithmOfNumber;
    case NumericFunction::Exp: return &builtin::exponentialOfNumber;
    case NumericFunction::Sqr: return &builtin::squareRootOfNumber;
    default: return nullptr;
    }
}

int callFunction(core::Interpreter& in, FunctionId function, const FunctionCall& call, Value& result)
{
    const auto* entry = entryOf(function.kind, function.code);
    if (entry == nullptr)
        return in.raise(core::ErrorId::SyntaxError);
    return entry->handler(in, call, result);
}

} // namespace tessaly::expr
