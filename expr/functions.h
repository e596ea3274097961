// The built-in functions reached from expressions: recognition of a name and the call with its
// evaluated arguments. Numeric functions: expr/functions_numeric; string functions:
// expr/functions_string; DEF FN: expr/user_functions.
#pragma once

#include <ctime>
#include <string_view>
#include <vector>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

enum class FunctionKind : uint8_t { None, Numeric, String };

struct FunctionId {
    FunctionKind kind = FunctionKind::None;
    int code = 0; // keyword table code in its list
};

// The numeric functions that the evaluator calls by name: VARPTR takes a variable, not its value,
// and USRd its digit.
inline constexpr int kVarptrCode = 29;
inline constexpr int kUsrCode = 31;

// Recognises a built-in function by its whole name (every name of both lists).
[[nodiscard]] FunctionId findFunction(std::string_view name);

// Calls a numeric function with its evaluated arguments; hasParentheses tells RND from RND().
int callNumericFunction(core::Interpreter& in, int code, const std::vector<Value>& args, bool hasParentheses,
    Value& result);
int callStringFunction(core::Interpreter& in, int code, const std::vector<Value>& args, Value& result);
// The interpreter's clock: the host's local time moved by what DATE$ and TIME$ statements set.
std::tm interpreterClock(core::Interpreter& in);

// FNname(args): the definition's expression with the parameters bound. Returns 0 or kFailed.
int callUserFunction(core::Interpreter& in, std::string_view name, const std::vector<Value>& args,
    bool hasParentheses, Value& result);

} // namespace tessaly::expr
