// The 8 x 16 screen font: glyphs from a GNU Unifont .hex file (Debian's unifont package), found for
// Shift-JIS characters through their Unicode code points (screen/screen_characters), and drawn onto
// planes. Nothing is read until a glyph is first asked for; the glyphs then come from the font cache
// (screen/font_cache) when it holds this .hex file's table, else from the .hex file, whose table is
// then stored there for the next start.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "screen/font_cache.h"
#include "screen/glyph_table.h"
#include "screen/raster.h"

namespace tessaly::screen {

inline constexpr const char* kUnifontJapanesePath = "/usr/share/unifont/unifont_jp.hex";
inline constexpr const char* kUnifontPackage = "unifont";

class Font {
public:
    using Glyph = screen::Glyph;

    // The font of a .hex file. Only looks whether the file is there and can be read (nothing of it
    // is read yet); nullopt with a message naming the package when it cannot. The glyph cache is
    // kept in cacheFolder; an empty one keeps none.
    static std::optional<Font> load(const std::string& path, std::string& error,
        std::string cacheFolder = UserFontCacheFolder());
    // A font of .hex text: lines "CODE:HEXROWS" with 32 (8 x 16) or 64 (16 x 16) hex digits. The text
    // is copied and read on the first glyph request.
    static Font parse(std::string_view text);

    // A single byte (below 0x100) or a double-byte code lead x 256 + trail.
    [[nodiscard]] Glyph glyphForShiftJis(uint16_t code) const { return glyphs().glyph(code); }
    // The distinct glyphs of the screen's characters.
    [[nodiscard]] size_t glyphCount() const { return glyphs().glyphCount(); }
    // Whether the glyphs have been read (a glyph was asked for).
    [[nodiscard]] bool glyphsRead() const { return m_glyphs.has_value(); }

    // Draws Shift-JIS text from pixel (x, y): 8 pixels a byte, a double-byte character 16.
    // Only the set pixels of the glyphs are drawn (a transparent background).
    void drawText(Plane& plane, int x, int y, std::string_view sjis, Pixel colour) const;

private:
    Font() = default;
    // The glyph table, read on the first call.
    const GlyphTable& glyphs() const;
    GlyphTable readGlyphs() const;

    std::string m_hexPath;  // the .hex file, when the glyphs come from one
    std::string m_hexText;  // else the .hex text given
    std::string m_cacheFolder;
    mutable std::optional<GlyphTable> m_glyphs;
};

} // namespace tessaly::screen
