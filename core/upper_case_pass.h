// Upper-casing of text. The one pass that upper-cases program text outside string literals, for
// typed lines, program files and CHAIN alike, in which the second byte of a double-byte Shift-JIS
// character is never changed; and the plain byte-by-byte form for names, words and file names.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/char_class.h"

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

// A byte after which the next byte is the second half of a double-byte character, for this pass.
// Wider than core::IsLeadByte (0x81..0x9F, 0xE0..0xFC): 0x80 and 0xFD..0xFF count too, so a letter
// after one of them keeps its case, as it always has in program text.
[[nodiscard]] constexpr bool startsDoubleByte(uint8_t b) { return (b >= 0x80 && b <= 0x9F) || b >= 0xE0; }

// Upper-cases the letters a-z of text that stand outside string literals and outside the text that
// rules keep. A quote, CR, apostrophe or colon after a lead byte cannot be a second byte and keeps
// its meaning.
void upperCaseOutsideStrings(std::string& text, CaseRules rules);

// The text with every byte a-z upper-cased, quotes and Shift-JIS second bytes included. The
// names, keywords and mode words it serves are ASCII, where the two rules agree; a file name with
// a double-byte character whose second byte is a-z (0x61..0x7A) has that byte changed, as file
// names always have had.
[[nodiscard]] inline std::string upperCased(std::string_view text)
{
    std::string out(text);
    for (char& c : out)
        c = toUpperAscii(c);
    return out;
}

} // namespace tessaly::core
