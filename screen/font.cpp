// Reading Unifont .hex glyphs and drawing Shift-JIS text with them.
#include "screen/font.h"

#include <fstream>

#include "core/shift_jis.h"
#include "core/text_scan.h"

namespace tessaly::screen {

namespace {

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// The first code point of UTF-8 text; 0 when there is none.
uint32_t firstCodepoint(std::string_view utf8)
{
    if (utf8.empty())
        return 0;
    auto lead = static_cast<unsigned char>(utf8[0]);
    int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    uint32_t codepoint = more == 0 ? lead : lead & (0x3F >> more);
    for (int k = 1; k <= more && static_cast<size_t>(k) < utf8.size(); ++k)
        codepoint = codepoint << 6 | (static_cast<unsigned char>(utf8[static_cast<size_t>(k)]) & 0x3F);
    return codepoint;
}

} // namespace

Font Font::parse(std::string_view text)
{
    Font font;
    // A glyph line is "XXXX:" and 32 or 64 hex digits: about 40 to 70 bytes of text each.
    font.m_index.reserve(text.size() / 40);
    font.m_bitmaps.reserve(text.size() / 2);
    size_t pos = 0;
    while (pos < text.size()) {
        auto line = core::takeLine(text, pos, "\n");
        auto colon = line.find(':');
        if (colon == std::string_view::npos || colon == 0 || colon > 8)
            continue;
        uint32_t codepoint = 0;
        bool valid = true;
        for (char c : line.substr(0, colon)) {
            int digit = hexDigit(c);
            valid = valid && digit >= 0;
            codepoint = codepoint << 4 | static_cast<uint32_t>(digit < 0 ? 0 : digit);
        }
        auto rows = line.substr(colon + 1);
        while (!rows.empty() && (rows.back() == '\r' || rows.back() == ' '))
            rows.remove_suffix(1);
        if (!valid || (rows.size() != 32 && rows.size() != 64) || font.m_index.count(codepoint) != 0)
            continue;
        auto offset = static_cast<uint32_t>(font.m_bitmaps.size());
        font.m_bitmaps.push_back(static_cast<uint8_t>(rows.size() == 32 ? 8 : 16));
        for (size_t k = 0; k + 1 < rows.size(); k += 2) {
            int high = hexDigit(rows[k]);
            int low = hexDigit(rows[k + 1]);
            font.m_bitmaps.push_back(static_cast<uint8_t>((high < 0 ? 0 : high) << 4 | (low < 0 ? 0 : low)));
        }
        font.m_index.emplace(codepoint, offset);
    }
    font.m_shiftJisCodepoints.assign(65536, -2);
    return font;
}

std::optional<Font> Font::load(const std::string& path, std::string& error)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "cannot read the screen font " + path + " (install the Debian package \"" + kUnifontPackage + "\")";
        return std::nullopt;
    }
    // Read in one piece: the file is some megabytes.
    std::string contents;
    file.seekg(0, std::ios::end);
    auto size = file.tellg();
    file.seekg(0, std::ios::beg);
    if (size > 0) {
        contents.resize(static_cast<size_t>(size));
        file.read(contents.data(), size);
        contents.resize(static_cast<size_t>(file.gcount()));
    }
    Font font = parse(contents);
    if (font.glyphCount() == 0) {
        error = "the screen font " + path + " holds no glyphs (reinstall the Debian package \"" +
            std::string(kUnifontPackage) + "\")";
        return std::nullopt;
    }
    return font;
}

Font::Glyph Font::glyphForCodepoint(uint32_t codepoint) const
{
    auto found = m_index.find(codepoint);
    if (found == m_index.end())
        return {};
    const uint8_t* data = m_bitmaps.data() + found->second;
    return {data + 1, data[0]};
}

Font::Glyph Font::glyphForShiftJis(uint16_t code) const
{
    auto& memo = m_shiftJisCodepoints[code];
    if (memo == -2) {
        std::string bytes;
        if (code > 0xFF)
            bytes = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
        else
            bytes = std::string(1, static_cast<char>(code));
        std::string utf8 = core::ShiftJisToUtf8(bytes);
        uint32_t codepoint = firstCodepoint(utf8);
        // The cursor-movement bytes 0x1C..0x1F show as the arrows they stand for (right, left,
        // up, down); the other control bytes show the font's control-code box.
        static constexpr uint32_t kArrows[] = {0x2192, 0x2190, 0x2191, 0x2193};
        if (code >= 0x1C && code <= 0x1F)
            codepoint = kArrows[code - 0x1C];
        memo = codepoint == 0xFFFD && code != 0 ? -1 : static_cast<int32_t>(codepoint);
    }
    return memo < 0 ? Glyph {} : glyphForCodepoint(static_cast<uint32_t>(memo));
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
