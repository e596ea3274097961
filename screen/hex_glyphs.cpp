// Reading Unifont .hex lines, from text or from a file read piece by piece.
#include "screen/hex_glyphs.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include "core/text_scan.h"

namespace tessaly::screen {

namespace {

// The longest line taken as a glyph line: 8 code digits, a colon, 64 row digits and a CR, with room
// to spare. A longer one is passed over without being held whole.
constexpr size_t kLongestLine = 256;
constexpr size_t kPieceBytes = 64 * 1024;

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

} // namespace

std::optional<HexGlyphLine> SplitHexGlyphLine(std::string_view line)
{
    auto colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0 || colon > 8)
        return std::nullopt;
    HexGlyphLine glyph;
    for (char c : line.substr(0, colon)) {
        int digit = hexDigit(c);
        if (digit < 0)
            return std::nullopt;
        glyph.codepoint = glyph.codepoint << 4 | static_cast<uint32_t>(digit);
    }
    auto rows = line.substr(colon + 1);
    while (!rows.empty() && (rows.back() == '\r' || rows.back() == ' '))
        rows.remove_suffix(1);
    if (rows.size() != 32 && rows.size() != 64)
        return std::nullopt;
    glyph.rowDigits = rows;
    return glyph;
}

int DecodeHexRows(std::string_view rowDigits, uint8_t* rows)
{
    std::memset(rows, 0, kGlyphRowBytes);
    size_t count = std::min(rowDigits.size() / 2, kGlyphRowBytes);
    for (size_t k = 0; k < count; ++k) {
        int high = hexDigit(rowDigits[2 * k]);
        int low = hexDigit(rowDigits[2 * k + 1]);
        rows[k] = static_cast<uint8_t>((high < 0 ? 0 : high) << 4 | (low < 0 ? 0 : low));
    }
    return rowDigits.size() == 64 ? 16 : 8;
}

void ForEachHexGlyphLine(std::string_view text, const HexGlyphLineTaker& take)
{
    size_t pos = 0;
    while (pos < text.size()) {
        if (auto glyph = SplitHexGlyphLine(core::takeLine(text, pos, "\n")))
            take(*glyph);
    }
}

bool ForEachHexGlyphLineOfFile(const std::string& path, const HexGlyphLineTaker& take)
{
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file)
        return false;
    std::vector<char> buffer(kPieceBytes);
    size_t held = 0;          // bytes of an unfinished line at the front of the buffer
    bool passingOver = false; // inside a line too long to be a glyph line
    for (;;) {
        size_t got = std::fread(buffer.data() + held, 1, buffer.size() - held, file.get());
        if (got == 0)
            break;
        std::string_view text(buffer.data(), held + got);
        size_t lineStart = 0;
        for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', lineStart)) {
            if (!passingOver) {
                if (auto glyph = SplitHexGlyphLine(text.substr(lineStart, end - lineStart)))
                    take(*glyph);
            }
            passingOver = false;
            lineStart = end + 1;
        }
        held = text.size() - lineStart;
        if (held > kLongestLine) {
            passingOver = true;
            held = 0;
        } else {
            std::memmove(buffer.data(), buffer.data() + lineStart, held);
        }
    }
    if (held > 0 && !passingOver) {
        if (auto glyph = SplitHexGlyphLine(std::string_view(buffer.data(), held)))
            take(*glyph);
    }
    return true;
}

} // namespace tessaly::screen
