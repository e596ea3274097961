// The parts of an IF or WHILE condition, shared by reading it from text and compiling it: the
// logical words that separate its terms, the comparison of a term, and a term's truth.
#pragma once

#include <cmath>
#include <cstddef>
#include <string_view>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

// The first logical word (with its blank) outside quotes from pos; npos when none.
size_t findLogical(std::string_view text, size_t pos, size_t& length);

struct Relation {
    size_t at = std::string_view::npos;
    size_t length = 0;
    int kind = 0; // 1 =, 2 <>, 3 <, 4 <=, 5 >, 6 >=
};

// The first relational operator of a term outside quotes and parentheses.
Relation findRelation(std::string_view term);

// A term without a comparison: its value read as an integer (IF 0.5 THEN is false).
int valueTruth(core::Interpreter& interpreter, const Value& value, bool& truth);
// A comparison of two whole sides, exactly.
int sidesTruth(core::Interpreter& interpreter, const Value& left, const Value& right, int kind, bool& truth);
// A number alone as a condition: true unless its whole part is 0.
[[nodiscard]] inline bool numberTruth(double number) { return std::trunc(number) != 0; }
// Whether the relation of the given kind holds between two numbers.
[[nodiscard]] bool numbersHold(int kind, double left, double right);

} // namespace tessaly::expr
