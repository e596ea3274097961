// Lines of a GNU Unifont .hex file: "CODE:ROWS", CODE the code point in hex digits, ROWS 32 hex
// digits (8 x 16 pixels, one byte a row) or 64 (16 x 16, two bytes a row). Other lines are passed over.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly::screen {

inline constexpr size_t kGlyphRowBytes = 32; // room for 16 rows of 16 pixels

// A glyph line taken apart; its rows are decoded only when they are wanted.
struct HexGlyphLine {
    uint32_t codepoint = 0;
    std::string_view rowDigits; // 32 or 64 hex digits
};

// The code point and row digits of one line (without its line end); nullopt when it is no glyph line.
[[nodiscard]] std::optional<HexGlyphLine> SplitHexGlyphLine(std::string_view line);
// Decodes row digits into rows (kGlyphRowBytes bytes: 16 used for an 8-wide glyph, all 32 for a
// 16-wide one, the rest zero); returns the width, 8 or 16.
int DecodeHexRows(std::string_view rowDigits, uint8_t* rows);

using HexGlyphLineTaker = std::function<void(const HexGlyphLine&)>;
// Hands each glyph line of the text to take, in order.
void ForEachHexGlyphLine(std::string_view text, const HexGlyphLineTaker& take);
// The same for a file, read in pieces of some kilobytes; false when it cannot be opened.
bool ForEachHexGlyphLineOfFile(const std::string& path, const HexGlyphLineTaker& take);

} // namespace tessaly::screen
