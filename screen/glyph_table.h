// The glyphs of every character the screen shows, found directly by Shift-JIS code. The table is
// one block of bytes, kept as it is in the font cache file:
//   header (kGlyphTableHeaderBytes): "TSLYGLYF", the format version, the glyph count, the key of the
//          .hex file it was built from (size and modification time) and a checksum of the rest;
//   65536 slots of 16 bits, one per code (a single byte below 0x100, else lead x 256 + trail):
//          0 for no glyph, k for the k-th glyph;
//   one width byte per glyph (8 or 16);
//   kGlyphRowBytes bytes of rows per glyph.
// All numbers are in the machine's byte order: the cache is this machine's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "screen/hex_glyphs.h"

namespace tessaly::screen {

// Raise it whenever the layout, or the choice of glyph for a code, changes: the cache files of an
// older version are then passed over.
inline constexpr uint32_t kGlyphTableVersion = 1;
inline constexpr size_t kGlyphTableHeaderBytes = 40;
inline constexpr size_t kShiftJisCodes = 65536;
// The most glyphs a table holds (slot numbers are 16 bits, 0 meaning none), and its largest size.
inline constexpr size_t kMostGlyphs = 0xFFFF;
inline constexpr size_t kLargestGlyphTableBytes =
    kGlyphTableHeaderBytes + kShiftJisCodes * sizeof(uint16_t) + kMostGlyphs * (1 + kGlyphRowBytes);

// What identifies the .hex file a table was built from.
struct FontSourceKey {
    uint64_t size = 0;
    int64_t modifiedNanoseconds = 0;
    bool operator==(const FontSourceKey&) const = default;
};

struct Glyph {
    const uint8_t* rows = nullptr; // 16 rows of 1 byte (8 wide) or 2 bytes (16 wide)
    int width = 0;                 // 0 when there is no glyph
};

class GlyphTable {
public:
    // A table without glyphs.
    GlyphTable();
    // Built from the glyph lines of .hex text, or of a .hex file (nullopt when it cannot be read).
    static GlyphTable fromHexText(std::string_view text, const FontSourceKey& key = {});
    static std::optional<GlyphTable> fromHexFile(const std::string& path, const FontSourceKey& key);
    // A stored table, taken only when every part of it checks: its size, header, key, checksum, slots
    // and widths; nullopt otherwise.
    static std::optional<GlyphTable> fromBytes(std::vector<uint8_t> bytes, const FontSourceKey& key);

    [[nodiscard]] Glyph glyph(uint16_t code) const;
    // The number of distinct glyphs (codes showing the same character share one).
    [[nodiscard]] size_t glyphCount() const { return m_glyphCount; }
    // The bytes to store.
    [[nodiscard]] std::span<const uint8_t> bytes() const { return m_bytes; }

private:
    explicit GlyphTable(std::vector<uint8_t> bytes, size_t glyphCount);
    static GlyphTable fromHexLines(const std::function<bool(const HexGlyphLineTaker&)>& readLines,
        const FontSourceKey& key, bool& read);

    std::vector<uint8_t> m_bytes;
    size_t m_glyphCount = 0;
};

} // namespace tessaly::screen
