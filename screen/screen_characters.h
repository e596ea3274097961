// Which character each Shift-JIS code shows on the screen: the Unicode code point whose glyph the
// font draws for it. Texts stay Shift-JIS bytes; only the pictures of some single bytes differ from
// a plain conversion (the yen sign for 0x5C, for one).
#pragma once

#include <cstdint>
#include <vector>

namespace tessaly::screen {

// Returned for a code that shows no glyph (its cells stay blank).
inline constexpr uint32_t kNoCharacter = 0xFFFFFFFF;

// Every code the screen can show: the single bytes 0x00..0xFF, then the double-byte codes (lead
// byte 0x81..0x9F or 0xE0..0xFC, trail byte 0x40..0xFC but 0x7F) as lead x 256 + trail, ascending.
[[nodiscard]] std::vector<uint16_t> ScreenCharacterCodes();
// The code point shown for each code (kNoCharacter for none).
[[nodiscard]] std::vector<uint32_t> ScreenCodepoints(const std::vector<uint16_t>& codes);

} // namespace tessaly::screen
