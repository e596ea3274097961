// The screen font: reading .hex lines, the character each Shift-JIS code shows, drawing glyphs, and
// reading the font only when a glyph is first asked for.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "screen/font.h"
#include "screen/hex_glyphs.h"
#include "screen/screen_characters.h"

namespace tessaly::screen {
namespace {

// "A" as a small test glyph: a vertical bar in column 0; and a 16-wide glyph for あ (U+3042).
constexpr const char* kHex =
    "0041:80808080808080808080808080808080\n"
    "3042:FFFF0000000000000000000000000000000000000000000000000000000000FF\n"
    "FF71:0000000000000000000000000000FF00\n"
    "broken line\n"
    "0042:123\n";

// A one-row glyph line of an 8-wide glyph whose top row is the byte given.
std::string topRowGlyph(uint32_t codepoint, int top)
{
    char line[64];
    std::snprintf(line, sizeof line, "%04X:%02X%s\n", codepoint, top, std::string(30, '0').c_str());
    return line;
}

TEST(HexGlyphs, SplitsGlyphLinesAndPassesOverTheRest)
{
    struct Case {
        std::string line;
        bool glyph;
        uint32_t codepoint;
    };
    const std::string rows32(32, '0');
    const std::string rows64(64, 'F');
    const std::vector<Case> cases = {
        {"0041:" + rows32, true, 0x41},
        {"3042:" + rows64, true, 0x3042},
        {"1f600:" + rows32 + "\r", true, 0x1F600}, // lower-case digits, a CR line end
        {"0041:" + rows32 + "  ", true, 0x41},
        {"00000041:" + rows32, true, 0x41},        // eight code digits
        {"000000041:" + rows32, false, 0},         // nine
        {":" + rows32, false, 0},
        {"00G1:" + rows32, false, 0},
        {"0041 " + rows32, false, 0},
        {"0041:" + rows32.substr(1), false, 0},
        {"0041:" + rows32 + "0", false, 0},
        {"", false, 0},
    };
    for (const auto& c : cases) {
        auto glyph = SplitHexGlyphLine(c.line);
        ASSERT_EQ(glyph.has_value(), c.glyph) << c.line;
        if (glyph) {
            EXPECT_EQ(glyph->codepoint, c.codepoint) << c.line;
        }
    }
}

TEST(HexGlyphs, DecodesRowsOfBothWidths)
{
    uint8_t rows[kGlyphRowBytes];
    std::memset(rows, 0xEE, sizeof rows);
    EXPECT_EQ(DecodeHexRows("80C0E0F0F8FCFEFF0102040810204080", rows), 8);
    EXPECT_EQ(rows[0], 0x80);
    EXPECT_EQ(rows[7], 0xFF);
    EXPECT_EQ(rows[15], 0x80);
    EXPECT_EQ(rows[16], 0x00); // the unused half is cleared
    EXPECT_EQ(DecodeHexRows(std::string(62, '0') + "a5", rows), 16);
    EXPECT_EQ(rows[31], 0xA5);
}

// The file is read in pieces: lines that cross a piece's end, a line far longer than any glyph line
// and a last line without its line end come out as they do from the same text held whole.
TEST(HexGlyphs, AFileReadInPiecesGivesTheLinesOfTheText)
{
    std::string text;
    for (uint32_t code = 0x100; code < 0x1100; ++code)
        text += topRowGlyph(code, static_cast<int>(code & 0xFF));
    text += "0020:" + std::string(200000, 'F') + "\n"; // not a glyph line
    text += "0021:" + std::string(32, 'F');
    char path[] = "/tmp/tessaly-hex-XXXXXX";
    int descriptor = mkstemp(path);
    ASSERT_GE(descriptor, 0);
    ASSERT_EQ(write(descriptor, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    close(descriptor);

    auto collect = [](std::vector<std::pair<uint32_t, std::string>>& into) {
        return [&into](const HexGlyphLine& line) { into.emplace_back(line.codepoint, std::string(line.rowDigits)); };
    };
    std::vector<std::pair<uint32_t, std::string>> fromText;
    std::vector<std::pair<uint32_t, std::string>> fromFile;
    ForEachHexGlyphLine(text, collect(fromText));
    EXPECT_TRUE(ForEachHexGlyphLineOfFile(path, collect(fromFile)));
    std::remove(path);
    EXPECT_EQ(fromText.size(), 0x1000U + 1);
    EXPECT_EQ(fromFile, fromText);
    EXPECT_FALSE(ForEachHexGlyphLineOfFile("/nonexistent/font.hex", collect(fromFile)));
}

// What each single byte shows, and a few double-byte codes.
TEST(ScreenCharacters, EachCodeShowsItsCharacter)
{
    const std::vector<std::pair<uint16_t, uint32_t>> cases = {
        {0x00, 0x0000},   {0x01, 0x0001},   {0x1B, 0x001B},   // control-code boxes
        {0x1C, 0x2192},   {0x1D, 0x2190},   {0x1E, 0x2191},   {0x1F, 0x2193}, // arrows
        {0x20, 0x0020},   {0x41, 0x0041},   {0x5B, 0x005B},   {0x5D, 0x005D}, {0x7D, 0x007D},
        {0x5C, 0x00A5},   // the yen sign
        {0x7E, 0x203E},   // the overline
        {0x7F, 0x007F},
        {0xA1, 0xFF61},   {0xB1, 0xFF71},   {0xDF, 0xFF9F},   // half-width katakana
        {0x80, kNoCharacter}, {0xA0, kNoCharacter}, {0xFD, kNoCharacter}, {0xFE, kNoCharacter},
        {0xFF, kNoCharacter}, {0x81, kNoCharacter}, {0x9F, kNoCharacter}, {0xE0, kNoCharacter},
        {0xFC, kNoCharacter}, // lead bytes alone
        {0x815F, 0xFF3C}, // the double-byte backslash stays a backslash
        {0x818F, 0xFFE5}, // the double-byte yen sign
        {0x82A0, 0x3042}, {0x93FA, 0x65E5}, {0x889F, 0x4E9C},
        {0x81CA, 0xFFE2}, {0xEEF9, 0xFFE2}, {0xFA54, 0xFFE2}, // one character, three codes
        {0x8540, kNoCharacter}, // a code no character has
    };
    std::vector<uint16_t> codes;
    for (const auto& c : cases)
        codes.push_back(c.first);
    auto codepoints = ScreenCodepoints(codes);
    for (size_t k = 0; k < cases.size(); ++k)
        EXPECT_EQ(codepoints[k], cases[k].second) << std::hex << "code " << cases[k].first;
}

TEST(ScreenCharacters, TheCodesAreTheSingleBytesAndTheDoubleByteCodes)
{
    auto codes = ScreenCharacterCodes();
    ASSERT_EQ(codes.size(), 256U + 60 * 188);
    EXPECT_TRUE(std::is_sorted(codes.begin(), codes.end()));
    EXPECT_EQ(codes[256], 0x8140);
    EXPECT_EQ(codes.back(), 0xFCFC);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), 0x817F), 0);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), 0xA040), 0);
}

TEST(Font, FindsGlyphsForShiftJis)
{
    Font font = Font::parse(kHex);
    EXPECT_EQ(font.glyphForShiftJis('A').width, 8);
    EXPECT_EQ(font.glyphForShiftJis(0x82A0).width, 16); // あ
    EXPECT_EQ(font.glyphForShiftJis(0xB1).width, 8);    // half-width katakana ｱ
    EXPECT_EQ(font.glyphForShiftJis(0x82A2).width, 0);  // い is not in the test font
    EXPECT_EQ(font.glyphForShiftJis('B').width, 0);     // its line is broken
    EXPECT_EQ(font.glyphCount(), 3U);
}

TEST(Font, TheFirstLineOfACharacterWins)
{
    Font font = Font::parse(topRowGlyph(0x41, 0x81) + topRowGlyph(0x41, 0x42));
    EXPECT_EQ(font.glyphForShiftJis('A').rows[0], 0x81);
}

TEST(Font, BackslashAndTildeShowTheYenSignAndTheOverline)
{
    Font font = Font::parse(topRowGlyph(0x5C, 0x01) + topRowGlyph(0x7E, 0x02) + topRowGlyph(0xA5, 0x03) +
        topRowGlyph(0x203E, 0x04) + topRowGlyph(0xFF3C, 0x05));
    EXPECT_EQ(font.glyphForShiftJis(0x5C).rows[0], 0x03);
    EXPECT_EQ(font.glyphForShiftJis(0x7E).rows[0], 0x04);
    EXPECT_EQ(font.glyphForShiftJis(0x815F).rows[0], 0x05);
    Plane plane(16, 16, 0);
    font.drawText(plane, 0, 0, "\\~", 1);
    EXPECT_EQ(plane.pixel(6, 0), 1U); // 0x03: the yen sign's top row
    EXPECT_EQ(plane.pixel(7, 0), 1U);
    EXPECT_EQ(plane.pixel(13, 0), 1U); // 0x04: the overline's
    EXPECT_EQ(plane.pixel(7, 1), 0U);
}

TEST(Font, CodesOfOneCharacterShareItsGlyph)
{
    Font font = Font::parse(topRowGlyph(0xFFE2, 0x55));
    EXPECT_EQ(font.glyphForShiftJis(0x81CA).rows, font.glyphForShiftJis(0xEEF9).rows);
    EXPECT_EQ(font.glyphForShiftJis(0x81CA).rows, font.glyphForShiftJis(0xFA54).rows);
    EXPECT_EQ(font.glyphForShiftJis(0xFA54).rows[0], 0x55);
    EXPECT_EQ(font.glyphCount(), 1U);
}

TEST(Font, DrawsOnlyTheSetPixels)
{
    Font font = Font::parse(kHex);
    Plane plane(40, 16, 7);
    font.drawText(plane, 0, 0, "A\x82\xa0" "A", 1);
    EXPECT_EQ(plane.pixel(0, 0), 1U);
    EXPECT_EQ(plane.pixel(1, 0), 7U);
    EXPECT_EQ(plane.pixel(8, 0), 1U);   // あ starts at column 8 and is 16 wide
    EXPECT_EQ(plane.pixel(23, 0), 1U);
    EXPECT_EQ(plane.pixel(15, 15), 7U);
    EXPECT_EQ(plane.pixel(16, 15), 1U);
    EXPECT_EQ(plane.pixel(23, 15), 1U);
    EXPECT_EQ(plane.pixel(24, 5), 1U);  // the second A at column 24
}

TEST(Font, ControlBytesFitTheirCell)
{
    // A wide control-code box is narrowed into one cell; 0x1C..0x1F are arrows.
    Font font = Font::parse("0001:FFFF0000000000000000000000000000000000000000000000000000000000FF\n"
                            "2192:FF000000000000000000000000000000\n");
    Plane plane(24, 16, 0);
    font.drawText(plane, 0, 0, std::string("\x01\x1c", 2), 1);
    EXPECT_EQ(plane.pixel(0, 0), 1U);
    EXPECT_EQ(plane.pixel(7, 0), 1U);
    EXPECT_EQ(plane.pixel(3, 15), 0U);
    EXPECT_EQ(plane.pixel(7, 15), 1U);  // the box's last column, narrowed
    EXPECT_EQ(plane.pixel(8, 0), 1U);   // the arrow in the second cell
    EXPECT_EQ(plane.pixel(8, 1), 0U);
    EXPECT_EQ(plane.pixel(16, 0), 0U);  // nothing spills into the third cell
}

TEST(Font, AMissingOrEmptyFileNamesThePackage)
{
    std::string error;
    EXPECT_FALSE(Font::load("/nonexistent/unifont_jp.hex", error).has_value());
    EXPECT_NE(error.find("cannot read the screen font /nonexistent/unifont_jp.hex"), std::string::npos) << error;
    EXPECT_NE(error.find("\"unifont\""), std::string::npos) << error;
    EXPECT_FALSE(Font::load("/tmp", error).has_value()); // a folder
    EXPECT_NE(error.find("cannot read"), std::string::npos) << error;
    std::string empty = std::filesystem::temp_directory_path() / "tessaly-empty-font.hex";
    std::ofstream(empty).close();
    EXPECT_FALSE(Font::load(empty, error, "").has_value());
    EXPECT_NE(error.find("holds no glyphs"), std::string::npos) << error;
    std::remove(empty.c_str());
}

// Loading only looks at the file: what it holds when the first glyph is asked for is what is drawn.
TEST(Font, NothingIsReadBeforeTheFirstGlyph)
{
    std::string path = std::filesystem::temp_directory_path() / "tessaly-late-font.hex";
    std::ofstream(path) << topRowGlyph(0x41, 0x11);
    std::string error;
    auto font = Font::load(path, error, "");
    ASSERT_TRUE(font.has_value()) << error;
    std::ofstream(path) << topRowGlyph(0x41, 0x22);
    EXPECT_FALSE(font->glyphsRead());
    EXPECT_EQ(font->glyphForShiftJis('A').rows[0], 0x22);
    EXPECT_TRUE(font->glyphsRead());
    // Gone after its first use: the glyphs read stay.
    std::remove(path.c_str());
    EXPECT_EQ(font->glyphForShiftJis('A').rows[0], 0x22);
}

TEST(Font, AFileGoneBeforeTheFirstGlyphLeavesTheCharactersBlank)
{
    std::string path = std::filesystem::temp_directory_path() / "tessaly-gone-font.hex";
    std::ofstream(path) << topRowGlyph(0x41, 0x11);
    std::string error;
    auto font = Font::load(path, error, "");
    ASSERT_TRUE(font.has_value()) << error;
    std::remove(path.c_str());
    EXPECT_EQ(font->glyphForShiftJis('A').width, 0);
}

TEST(Font, TheInstalledJapaneseFontHasTheScreenCharacters)
{
    char folder[] = "/tmp/tessaly-font-cache-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    std::string error;
    auto font = Font::load(kUnifontJapanesePath, error, folder);
    ASSERT_TRUE(font.has_value()) << error;
    EXPECT_EQ(font->glyphForShiftJis('A').width, 8);
    EXPECT_EQ(font->glyphForShiftJis(0xB1).width, 8);
    EXPECT_EQ(font->glyphForShiftJis(0x93FA).width, 16); // 日
    EXPECT_EQ(font->glyphForShiftJis(0x5C).width, 8);    // ¥
    EXPECT_EQ(font->glyphForShiftJis(0x7E).width, 8);    // ‾
    EXPECT_EQ(font->glyphForShiftJis(0x01).width, 16);   // a control-code box
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace tessaly::screen
