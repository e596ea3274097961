// The built-in functions reached from expressions: recognition of a name and the call with its
// evaluated arguments. The lists: core/numeric_functions.def and core/string_functions.def; the
// handlers: expr/builtin_functions.h; DEF FN: expr/user_functions.
#pragma once

#include <cstdint>
#include <ctime>
#include <string_view>
#include <vector>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

enum class FunctionKind : uint8_t { None, Numeric, String };

// The code of each function in its list.
enum class NumericFunction : uint8_t {
    None = 0,
#define X(name, code, text, shape, handler) name = code,
#include "core/numeric_functions.def"
#undef X
};

enum class StringFunction : uint8_t {
    None = 0,
#define X(name, code, text, shape, handler) name = code,
#include "core/string_functions.def"
#undef X
};

// How the evaluator reads what follows a function's name.
enum class ArgumentShape : uint8_t {
    // The values of the arguments in parentheses; none when no "(" follows (RND, CSRLIN, INKEY$).
    Values,
    // VARPTR(name) and VARPTR(name(subscripts)): the variable itself, not its value.
    Variable,
};

struct FunctionId {
    FunctionKind kind = FunctionKind::None;
    int code = 0; // keyword table code in its list
    ArgumentShape shape = ArgumentShape::Values;
};

// What a handler is called with.
struct FunctionCall {
    std::string_view name;              // upper-cased as written: USR0 .. USR9 keep their digit
    const std::vector<Value>& arguments;
    bool hasParentheses = false;        // tells RND from RND()
};

// Recognises a built-in function by its whole name (every name of both lists, and USR0 .. USR9).
[[nodiscard]] FunctionId findFunction(std::string_view name);

// A numeric function whose value depends on its arguments alone and that changes nothing (SIN,
// INT, ROUND and their kin): calling it once more with the same arguments shows nothing new.
[[nodiscard]] bool isPureNumericFunction(FunctionId function);

// Calls the function with its evaluated arguments. Returns 0, or kFailed with the error raised.
int callFunction(core::Interpreter& interpreter, FunctionId function, const FunctionCall& call, Value& result);

struct Number;
// SIN, COS, TAN, ATN, LOG, EXP and SQR also have a way on a number alone: it gives the number and
// raises the error that callFunction gives with that one number as the argument.
using OneNumberHandler = int (*)(core::Interpreter& interpreter, double x, Number& result);
// That way of the function; nullptr for every other function.
[[nodiscard]] OneNumberHandler oneNumberHandler(FunctionId function);

// The interpreter's clock: the host's local time moved by what DATE$ and TIME$ statements set.
std::tm interpreterClock(core::Interpreter& interpreter);

// FNname(args): the definition's expression with the parameters bound. Returns 0 or kFailed.
int callUserFunction(core::Interpreter& interpreter, std::string_view name, const std::vector<Value>& args,
    bool hasParentheses, Value& result);

} // namespace tessaly::expr
