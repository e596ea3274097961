// DEF FN definitions and FN calls: parameters are ordinary scalars for the length of the call, saved
// in X_X-style variables before it and given back after it.
#include <string>

#include "core/interpreter.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "expr/function_state.h"
#include "expr/functions.h"
#include "expr/statements.h"
#include "expr/variables.h"

namespace tessaly::expr {

namespace {

using core::ErrorId;

// The parameters written between the parentheses of a definition.
std::vector<std::string> parameterNames(std::string_view list)
{
    std::vector<std::string> names;
    size_t start = 0;
    for (size_t pos = 0; pos <= list.size(); ++pos) {
        if (pos == list.size() || list[pos] == ',') {
            auto name = core::trimBlanks(list.substr(start, pos - start));
            if (!name.empty())
                names.push_back(name);
            start = pos + 1;
        }
    }
    return names;
}

// X gives X_X, N% gives N_N%.
std::string saveName(const std::string& parameter)
{
    std::string bare = parameter;
    std::string suffix;
    if (!bare.empty() && (bare.back() == '%' || bare.back() == '!' || bare.back() == '#' || bare.back() == '$')) {
        suffix = bare.back();
        bare.pop_back();
    }
    return bare + "_" + bare + suffix;
}

Target scalar(core::Interpreter& in, const std::string& name)
{
    return {name, {}, false, in.variables().typeOfName(name)};
}

int storeScalar(core::Interpreter& in, const std::string& name, const Value& value)
{
    return assignTarget(in, scalar(in, name), value);
}

int readScalar(core::Interpreter& in, const std::string& name, Value& value)
{
    return readTarget(in, scalar(in, name), value);
}

ValueType typeFromSuffix(std::string_view name)
{
    if (name.ends_with("%"))
        return ValueType::Integer;
    if (name.ends_with("#"))
        return ValueType::Double;
    if (name.ends_with("$"))
        return ValueType::String;
    return ValueType::Single;
}

// The result of a call takes the function's type: a number is narrowed as a variable of it would be.
int finishResult(core::Interpreter& in, ValueType type, Value& result)
{
    if ((type == ValueType::String) != result.isString())
        return in.raise(ErrorId::TypeMismatch);
    if (!result.isString())
        result.type = type;
    return 0;
}

} // namespace

int callUserFunction(core::Interpreter& in, std::string_view name, const std::vector<Value>& args, bool, Value& result)
{
    auto& state = in.functionState();
    const UserFunction* found = nullptr;
    bool withParameters = false;
    for (const auto& function : state.userFunctions) {
        if (function.name == name && !function.definition.empty() && function.definition[0] == '(') {
            found = &function;
            withParameters = true;
            break;
        }
        if (function.name == name) {
            found = &function;
            break;
        }
    }
    if (found == nullptr)
        return in.raise(ErrorId::UndefinedUserFunction);
    if (state.userFunctionDepth >= kMaxUserFunctionDepth)
        return in.raise(ErrorId::OutOfMemory);
    // The definition may be replaced while it runs (a DEF FN inside is impossible, but be safe).
    UserFunction function = *found;
    auto equals = function.definition.find('=');
    if (equals == std::string::npos)
        return in.raise(ErrorId::SyntaxError);
    std::string expression = function.definition.substr(equals + 1);

    ++state.userFunctionDepth;
    struct DepthGuard {
        int& depth;
        ~DepthGuard() { --depth; }
    } guard {state.userFunctionDepth};

    if (!withParameters) {
        TRY_BASIC(evaluateText(in, expression, result));
        return finishResult(in, typeFromSuffix(name), result);
    }
    auto close = function.definition.find(')');
    if (close == std::string::npos || close > equals)
        return in.raise(ErrorId::SyntaxError);
    auto parameters = parameterNames(std::string_view(function.definition).substr(1, close - 1));
    size_t bound = std::min(parameters.size(), args.size());
    // A parameter without an argument keeps its current value.
    for (size_t k = 0; k < bound; ++k) {
        Value current;
        TRY_BASIC(readScalar(in, parameters[k], current));
        TRY_BASIC(storeScalar(in, saveName(parameters[k]), current));
        TRY_BASIC(storeScalar(in, parameters[k], args[k]));
    }
    int outcome = evaluateText(in, expression, result);
    for (size_t k = 0; k < bound; ++k) {
        Value saved;
        TRY_BASIC(readScalar(in, saveName(parameters[k]), saved));
        TRY_BASIC(storeScalar(in, parameters[k], saved));
    }
    TRY_BASIC(outcome);
    return finishResult(in, function.resultType, result);
}

} // namespace tessaly::expr
