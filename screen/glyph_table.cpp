// Building the Shift-JIS glyph table from .hex glyphs, and checking a stored one.
#include "screen/glyph_table.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "screen/screen_characters.h"

namespace tessaly::screen {

namespace {

constexpr char kMagic[8] = {'T', 'S', 'L', 'Y', 'G', 'L', 'Y', 'F'};
constexpr size_t kVersionAt = 8;
constexpr size_t kCountAt = 12;
constexpr size_t kSizeAt = 16;
constexpr size_t kModifiedAt = 24;
constexpr size_t kChecksumAt = 32;
constexpr size_t kSlotsAt = kGlyphTableHeaderBytes;
constexpr size_t kWidthsAt = kSlotsAt + kShiftJisCodes * sizeof(uint16_t);

size_t rowsAt(size_t glyphCount) { return kWidthsAt + glyphCount; }
size_t tableBytes(size_t glyphCount) { return rowsAt(glyphCount) + glyphCount * kGlyphRowBytes; }

template <typename Number>
Number numberAt(const std::vector<uint8_t>& bytes, size_t at)
{
    Number number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

template <typename Number>
void putNumber(std::vector<uint8_t>& bytes, size_t at, Number number)
{
    std::memcpy(bytes.data() + at, &number, sizeof number);
}

// A 64-bit hash of the bytes after the header, a word at a time.
uint64_t checksumOf(const std::vector<uint8_t>& bytes)
{
    constexpr uint64_t kPrime = 0x100000001B3;
    uint64_t hash = 0xCBF29CE484222325;
    size_t at = kGlyphTableHeaderBytes;
    for (; at + 8 <= bytes.size(); at += 8) {
        hash = (hash ^ numberAt<uint64_t>(bytes, at)) * kPrime;
        hash ^= hash >> 29;
    }
    for (; at < bytes.size(); ++at)
        hash = (hash ^ bytes[at]) * kPrime;
    return hash;
}

} // namespace

GlyphTable::GlyphTable() = default;

GlyphTable::GlyphTable(std::vector<uint8_t> bytes, size_t glyphCount)
    : m_bytes(std::move(bytes))
    , m_glyphCount(glyphCount)
{
}

GlyphTable GlyphTable::fromHexText(std::string_view text, const FontSourceKey& key)
{
    bool read = false;
    return fromHexLines(
        [text](const HexGlyphLineTaker& take) {
            ForEachHexGlyphLine(text, take);
            return true;
        },
        key, read);
}

std::optional<GlyphTable> GlyphTable::fromHexFile(const std::string& path, const FontSourceKey& key)
{
    bool read = false;
    GlyphTable table = fromHexLines(
        [&path](const HexGlyphLineTaker& take) { return ForEachHexGlyphLineOfFile(path, take); }, key, read);
    if (!read)
        return std::nullopt;
    return table;
}

GlyphTable GlyphTable::fromHexLines(const std::function<bool(const HexGlyphLineTaker&)>& readLines,
    const FontSourceKey& key, bool& read)
{
    // The characters wanted, by code point: one character may be shown by several codes.
    std::vector<uint16_t> codes = ScreenCharacterCodes();
    std::vector<uint32_t> codepoints = ScreenCodepoints(codes);
    std::vector<std::pair<uint32_t, uint16_t>> wanted;
    wanted.reserve(codes.size());
    for (size_t k = 0; k < codes.size(); ++k) {
        if (codepoints[k] != kNoCharacter)
            wanted.emplace_back(codepoints[k], codes[k]);
    }
    std::sort(wanted.begin(), wanted.end());

    std::vector<uint16_t> slots(kShiftJisCodes, 0);
    std::vector<uint8_t> widths;
    std::vector<uint8_t> rows;
    read = readLines([&](const HexGlyphLine& line) {
        auto first = std::lower_bound(wanted.begin(), wanted.end(), std::pair<uint32_t, uint16_t>(line.codepoint, 0));
        // A character no code shows, one an earlier line already gave, or no room left.
        if (first == wanted.end() || first->first != line.codepoint || slots[first->second] != 0
            || widths.size() >= kMostGlyphs)
            return;
        uint8_t glyphRows[kGlyphRowBytes];
        widths.push_back(static_cast<uint8_t>(DecodeHexRows(line.rowDigits, glyphRows)));
        rows.insert(rows.end(), glyphRows, glyphRows + kGlyphRowBytes);
        auto number = static_cast<uint16_t>(widths.size());
        for (auto it = first; it != wanted.end() && it->first == line.codepoint; ++it)
            slots[it->second] = number;
    });

    size_t count = widths.size();
    std::vector<uint8_t> bytes(tableBytes(count), 0);
    std::memcpy(bytes.data(), kMagic, sizeof kMagic);
    putNumber(bytes, kVersionAt, kGlyphTableVersion);
    putNumber(bytes, kCountAt, static_cast<uint32_t>(count));
    putNumber(bytes, kSizeAt, key.size);
    putNumber(bytes, kModifiedAt, key.modifiedNanoseconds);
    std::memcpy(bytes.data() + kSlotsAt, slots.data(), kShiftJisCodes * sizeof(uint16_t));
    std::copy(widths.begin(), widths.end(), bytes.begin() + static_cast<ptrdiff_t>(kWidthsAt));
    std::copy(rows.begin(), rows.end(), bytes.begin() + static_cast<ptrdiff_t>(rowsAt(count)));
    putNumber(bytes, kChecksumAt, checksumOf(bytes));
    return GlyphTable(std::move(bytes), count);
}

std::optional<GlyphTable> GlyphTable::fromBytes(std::vector<uint8_t> bytes, const FontSourceKey& key)
{
    if (bytes.size() < tableBytes(0) || std::memcmp(bytes.data(), kMagic, sizeof kMagic) != 0
        || numberAt<uint32_t>(bytes, kVersionAt) != kGlyphTableVersion)
        return std::nullopt;
    size_t count = numberAt<uint32_t>(bytes, kCountAt);
    FontSourceKey stored {numberAt<uint64_t>(bytes, kSizeAt), numberAt<int64_t>(bytes, kModifiedAt)};
    if (count > kMostGlyphs || bytes.size() != tableBytes(count) || stored != key
        || numberAt<uint64_t>(bytes, kChecksumAt) != checksumOf(bytes))
        return std::nullopt;
    for (size_t code = 0; code < kShiftJisCodes; ++code) {
        if (numberAt<uint16_t>(bytes, kSlotsAt + code * sizeof(uint16_t)) > count)
            return std::nullopt;
    }
    for (size_t k = 0; k < count; ++k) {
        if (bytes[kWidthsAt + k] != 8 && bytes[kWidthsAt + k] != 16)
            return std::nullopt;
    }
    return GlyphTable(std::move(bytes), count);
}

Glyph GlyphTable::glyph(uint16_t code) const
{
    if (m_bytes.empty())
        return {};
    size_t number = numberAt<uint16_t>(m_bytes, kSlotsAt + size_t {code} * sizeof(uint16_t));
    if (number == 0)
        return {};
    size_t index = number - 1;
    return {m_bytes.data() + rowsAt(m_glyphCount) + index * kGlyphRowBytes, m_bytes[kWidthsAt + index]};
}

} // namespace tessaly::screen
