// Conversions between Shift-JIS (code page 932), the interpreter's text, and UTF-8, the text of
// the terminal and the desktop. Never fails: what cannot be converted is replaced.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly::io {

// A lead byte of a double-byte character: 0x81..0x9F or 0xE0..0xFC.
[[nodiscard]] constexpr bool IsLeadByte(uint8_t b) { return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC); }

// Shift-JIS to UTF-8; a byte that does not convert becomes U+FFFD. ASCII and control bytes stay.
[[nodiscard]] std::string ShiftJisToUtf8(std::string_view sjis);
// UTF-8 to Shift-JIS; a character without a Shift-JIS form becomes "?".
[[nodiscard]] std::string Utf8ToShiftJis(std::string_view utf8);

} // namespace tessaly::io
