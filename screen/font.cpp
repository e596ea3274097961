// The screen font read on first use, and drawing Shift-JIS text with it.
#include "screen/font.h"

#include <utility>

#include "core/shift_jis.h"

namespace tessaly::screen {

std::optional<Font> Font::load(const std::string& path, std::string& error, std::string cacheFolder)
{
    auto key = FontSourceKeyOf(path);
    if (!key) {
        error = "cannot read the screen font " + path + " (install the Debian package \"" + kUnifontPackage + "\")";
        return std::nullopt;
    }
    if (key->size == 0) {
        error = "the screen font " + path + " holds no glyphs (reinstall the Debian package \"" +
            std::string(kUnifontPackage) + "\")";
        return std::nullopt;
    }
    Font font;
    font.m_hexPath = path;
    font.m_cacheFolder = std::move(cacheFolder);
    return font;
}

Font Font::parse(std::string_view text)
{
    Font font;
    font.m_hexText = text;
    return font;
}

const GlyphTable& Font::glyphs() const
{
    if (!m_glyphs)
        m_glyphs = readGlyphs();
    return *m_glyphs;
}

GlyphTable Font::readGlyphs() const
{
    if (m_hexPath.empty())
        return m_hexText.empty() ? GlyphTable() : GlyphTable::fromHexText(m_hexText);
    // The file was there at the start; when it has gone since, the characters stay blank.
    auto key = FontSourceKeyOf(m_hexPath);
    if (!key)
        return GlyphTable();
    if (auto cached = ReadFontCache(m_cacheFolder, m_hexPath, *key))
        return std::move(*cached);
    auto table = GlyphTable::fromHexFile(m_hexPath, *key);
    if (!table)
        return GlyphTable();
    WriteFontCache(m_cacheFolder, m_hexPath, *key, *table);
    return std::move(*table);
}

void Font::drawText(Plane& plane, int x, int y, std::string_view sjis, Pixel colour) const
{
    for (size_t pos = 0; pos < sjis.size(); ++pos) {
        auto byte = static_cast<uint8_t>(sjis[pos]);
        uint16_t code = byte;
        int cells = 1;
        if (core::IsLeadByte(byte) && pos + 1 < sjis.size()) {
            code = static_cast<uint16_t>(byte << 8 | static_cast<uint8_t>(sjis[pos + 1]));
            cells = 2;
            ++pos;
        }
        Glyph glyph = glyphForShiftJis(code);
        int bytesPerRow = glyph.width / 8;
        // A wide glyph for a single byte (the control-code boxes) is narrowed into its one cell,
        // each pixel column standing for two of the glyph's.
        int squeeze = glyph.width > 8 * cells ? 2 : 1;
        for (int row = 0; glyph.width > 0 && row < 16; ++row) {
            for (int column = 0; column < glyph.width; ++column) {
                uint8_t bits = glyph.rows[row * bytesPerRow + column / 8];
                if (bits & (0x80 >> (column % 8)))
                    plane.setPixel(x + column / squeeze, y + row, colour);
            }
        }
        x += 8 * cells;
    }
}

} // namespace tessaly::screen
