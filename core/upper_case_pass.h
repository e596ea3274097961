// The one pass that upper-cases program text outside string literals, for typed lines, program
// files and CHAIN alike. The second byte of a double-byte Shift-JIS character is never changed.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::core {

// Which text keeps its case besides string literals.
enum class CaseRules : uint8_t {
    // A line typed in: the rest of the line after an apostrophe, REM text up to the next colon,
    // and DATA items (after "DATA ") up to the next colon.
    TypedLine,
    // A Text program file: an apostrophe comment, REM text and DATA items (after "DATA") up to the
    // next colon; a CR ends every string and comment, an LF does not.
    ProgramFile,
    // Lines read by CHAIN: every letter outside string literals.
    AllOutsideStrings,
};

// A byte after which the next byte is the second half of a double-byte character.
[[nodiscard]] constexpr bool startsDoubleByte(uint8_t b) { return (b >= 0x80 && b <= 0x9F) || b >= 0xE0; }

// Upper-cases the letters a-z of text that stand outside string literals and outside the text that
// rules keep. A quote, CR, apostrophe or colon after a lead byte cannot be a second byte and keeps
// its meaning.
void upperCaseOutsideStrings(std::string& text, CaseRules rules);

} // namespace tessaly::core
