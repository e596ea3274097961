// Evaluating expressions of the statement buffer: operands (literals, variables, array elements,
// function calls), groups in parentheses reduced innermost first, and IF/WHILE conditions.
#pragma once

#include <string_view>
#include <vector>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

inline constexpr int kMaxGroupDepth = 63;

// Evaluates the statement buffer's text from begin to end. Returns 0, or kFailed after raising.
// An expression with nothing in it gives a value with `empty` set.
int evaluateExpression(core::Interpreter& interpreter, int begin, int end, Value& result);

enum class Quotes : uint8_t { Plain, DoubledIsQuote };

// Evaluates a text that is not in the statement buffer (an argument list element, a definition).
// With DoubledIsQuote (PRINT and WRITE items) "" inside a string literal stands for one ".
int evaluateText(core::Interpreter& interpreter, std::string_view text, Value& result, Quotes quotes = Quotes::Plain);
// The same for a text taken from the statement: restOfStatement is the statement's text from the
// expression to its end, which is what decides whether a leading minus applies to the whole first
// term (a MOD or logical word in a later item of a PRINT keeps it from doing so).
int evaluateText(core::Interpreter& interpreter, std::string_view text, Value& result, Quotes quotes,
    std::string_view restOfStatement);

// Evaluates a text that must give a number: a string is "Type mismatch in ", a text with nothing in
// it "Syntax error in ". Returns 0, or kFailed after raising.
int evaluateNumber(core::Interpreter& interpreter, std::string_view text, double& number);
// The condition of IF or WHILE: comparisons are made on whole sides and exactly, then the logical
// operators combine -1 and 0. Sets truth; returns 0, or kFailed after raising.
int evaluateCondition(core::Interpreter& interpreter, int begin, int end, bool& truth);

// A statement argument read as an integer (truncated toward zero, clamped to 32 bits).
[[nodiscard]] int32_t integerOf(const Value& value);
// Rounded half away from zero, clamped to 32 bits.
[[nodiscard]] int32_t roundedIntegerOf(const Value& value);

// Evaluates a comma-separated argument list (each argument its own expression) from the text.
int evaluateArguments(core::Interpreter& interpreter, std::string_view text, std::vector<Value>& values);

} // namespace tessaly::expr
