// PRINT USING formats: locating the fields of a format and filling them with items.
#pragma once

#include <string>
#include <string_view>

#include "expr/values.h"

namespace tessaly::expr {

enum class FieldKind : uint8_t { None, FirstCharacter, WholeString, FixedString, Numeric };

struct Field {
    FieldKind kind = FieldKind::None;
    size_t start = 0;
    size_t length = 0;
};

// The first field at or after `from`; kind None when there is none.
[[nodiscard]] Field locateField(std::string_view text, size_t from);

enum class FillResult : uint8_t { Ok, Illegal, Syntax };

// The text that replaces the field for the value.
FillResult fillField(std::string_view field, FieldKind kind, const Value& value, std::string& text);

// Removes every "_" and keeps the character after it.
[[nodiscard]] std::string removeEscapes(std::string_view line);

} // namespace tessaly::expr
