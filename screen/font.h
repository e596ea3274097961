// The 8 x 16 screen font: glyphs read from a GNU Unifont .hex file (Debian's unifont package),
// found for Shift-JIS characters through their Unicode code points, and drawn onto planes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "screen/raster.h"

namespace tessaly::screen {

inline constexpr const char* kUnifontJapanesePath = "/usr/share/unifont/unifont_jp.hex";
inline constexpr const char* kUnifontPackage = "unifont";

class Font {
public:
    struct Glyph {
        const uint8_t* rows = nullptr; // 16 rows of 1 byte (8 wide) or 2 bytes (16 wide)
        int width = 0;                 // 0 when there is no glyph
    };

    // Reads a .hex file; nullopt with a message naming the package when it cannot be read.
    static std::optional<Font> load(const std::string& path, std::string& error);
    // Parses .hex text: lines "CODE:HEXROWS" with 32 (8 x 16) or 64 (16 x 16) hex digits.
    static Font parse(std::string_view text);

    [[nodiscard]] Glyph glyphForCodepoint(uint32_t codepoint) const;
    // A single byte (below 0x100) or a double-byte code lead x 256 + trail.
    [[nodiscard]] Glyph glyphForShiftJis(uint16_t code) const;
    [[nodiscard]] size_t glyphCount() const { return m_index.size(); }

    // Draws Shift-JIS text from pixel (x, y): 8 pixels a byte, a double-byte character 16.
    // Only the set pixels of the glyphs are drawn (a transparent background).
    void drawText(Plane& plane, int x, int y, std::string_view sjis, Pixel colour) const;

private:
    std::unordered_map<uint32_t, uint32_t> m_index; // code point -> offset in m_bitmaps
    std::vector<uint8_t> m_bitmaps;                  // per glyph: width byte, then its rows
    mutable std::vector<int32_t> m_shiftJisCodepoints; // memo: -2 not looked up, -1 none
};

} // namespace tessaly::screen
