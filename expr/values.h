// Value types and the value that expressions produce between evaluation steps.
// Variables, arrays and the evaluator build on these; number texts come from expr/number_text.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::expr {

enum class ValueType : int8_t {
    Integer = 0, // 16-bit
    Single = 1,  // 32-bit float
    Double = 2,  // 64-bit float
    String = 3,
    Unknown = 127,
};

// A number (kept in double precision while an expression is worked on) or a string.
struct Value {
    ValueType type = ValueType::Double;
    double number = 0.0;
    std::string text;  // the characters of a string
    bool empty = false; // nothing stood where the value was expected
    bool unsignedLiteral = false; // a &H or &O literal

    [[nodiscard]] bool isString() const { return type == ValueType::String; }
};

} // namespace tessaly::expr
