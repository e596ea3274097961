// Value types and the value that expressions produce between evaluation steps.
// A number keeps the text form the user would see (a literal as written, a computed result with
// 16 or 7 digits, a variable in its type's form); expr/number_text turns it into that text.
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

// How a number's text is made (see numberValueText).
enum class NumberForm : uint8_t {
    Literal,     // as the user wrote it (kept in text)
    Computed16,  // GcvtText with 16 digits
    Computed7,   // GcvtText with 7 digits
    IntegerVar,  // the decimal digits of a 16-bit value
    SingleVar,   // GcvtText with 7 digits
    DoubleVar,   // GcvtText with 16 digits
};

// Strings longer than this do not fit the evaluator's 1,024-byte buffers with their quotes.
inline constexpr size_t kMaxStringLength = 1021;

struct Value {
    ValueType type = ValueType::Double;  // String, or the type shown by PRINT for a number
    double number = 0.0;                 // the number as its text reads back
    std::string text;                    // a string's bytes, or a literal's spelling
    NumberForm form = NumberForm::Computed16;
    bool empty = false;                  // nothing stood where the value was expected
    bool unsignedLiteral = false;        // a lone &H or &O literal: 0..65535 fits an integer

    [[nodiscard]] bool isString() const { return type == ValueType::String; }

    // In place, as makeNumber and makeString would make it: the string keeps its buffer, so a
    // value slot used again and again allocates nothing.
    void setNumber(double n, NumberForm f, ValueType shownType)
    {
        type = shownType;
        number = n;
        text.clear();
        form = f;
        empty = false;
        unsignedLiteral = false;
    }
    void setString(const std::string& bytes)
    {
        type = ValueType::String;
        number = 0.0;
        text = bytes;
        form = NumberForm::Computed16;
        empty = false;
        unsignedLiteral = false;
    }

    static Value makeString(std::string bytes)
    {
        Value v;
        v.type = ValueType::String;
        v.text = std::move(bytes);
        return v;
    }
    static Value makeNumber(double number, NumberForm form, ValueType shownType = ValueType::Double)
    {
        Value v;
        v.type = shownType;
        v.number = number;
        v.form = form;
        return v;
    }
};

} // namespace tessaly::expr
