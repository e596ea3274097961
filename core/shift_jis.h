// Conversions between Shift-JIS (code page 932), the interpreter's text, and UTF-8, the text of
// the terminal and the desktop. Never fails: what cannot be converted is replaced. Fonts are elsewhere.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::core {

// A lead byte of a double-byte character: 0x81..0x9F or 0xE0..0xFC.
[[nodiscard]] constexpr bool IsLeadByte(uint8_t b) { return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC); }

// Shift-JIS to UTF-8; bytes that do not convert become U+FFFD. Bytes 0x00..0x7F (0x5C stays a
// backslash) and half-width katakana map one to one.
[[nodiscard]] std::string ShiftJisToUtf8(std::string_view sjis);
// UTF-8 to Shift-JIS; a character without a Shift-JIS form, or a broken UTF-8 sequence, becomes "?".
// ASCII stays as it is; U+00A5 (yen) and U+203E (overline) become 0x5C and 0x7E.
[[nodiscard]] std::string Utf8ToShiftJis(std::string_view utf8);
// UTF-8 to Shift-JIS with nothing replaced: nullopt and sjis holding the whole text, or the byte
// offset of the first character that has no Shift-JIS form (or of a broken sequence), sjis then
// holding the text before it.
[[nodiscard]] std::optional<size_t> Utf8ToShiftJisExact(std::string_view utf8, std::string& sjis);
// Every byte above 0x7F belongs to a well-formed UTF-8 sequence.
[[nodiscard]] bool IsValidUtf8(std::string_view text);
// The Unicode code point of each Shift-JIS character code (a single byte below 0x100, else lead
// byte x 256 + trail byte), as ShiftJisToUtf8 converts it alone; 0xFFFD when it does not convert.
[[nodiscard]] std::vector<uint32_t> ShiftJisCodepoints(const std::vector<uint16_t>& codes);

} // namespace tessaly::core
