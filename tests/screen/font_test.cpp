// The screen font: reading .hex glyphs, finding them for Shift-JIS characters, drawing them.
#include <gtest/gtest.h>

#include <string>

#include "screen/font.h"

namespace tessaly::screen {
namespace {

// "A" as a small test glyph: a vertical bar in column 0; and a 16-wide glyph for あ (U+3042).
constexpr const char* kHex =
    "0041:80808080808080808080808080808080\n"
    "3042:FFFF0000000000000000000000000000000000000000000000000000000000FF\n"
    "FF71:0000000000000000000000000000FF00\n"
    "broken line\n"
    "0042:123\n";

TEST(Font, ParsesHexGlyphs)
{
    Font font = Font::parse(kHex);
    EXPECT_EQ(font.glyphCount(), 3U);
    EXPECT_EQ(font.glyphForCodepoint(0x41).width, 8);
    EXPECT_EQ(font.glyphForCodepoint(0x3042).width, 16);
    EXPECT_EQ(font.glyphForCodepoint(0x42).width, 0);
}

TEST(Font, FindsGlyphsForShiftJis)
{
    Font font = Font::parse(kHex);
    EXPECT_EQ(font.glyphForShiftJis('A').width, 8);
    EXPECT_EQ(font.glyphForShiftJis(0x82A0).width, 16); // あ
    EXPECT_EQ(font.glyphForShiftJis(0xB1).width, 8);    // half-width katakana ｱ
    EXPECT_EQ(font.glyphForShiftJis(0x82A2).width, 0);  // い is not in the test font
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

TEST(Font, MissingFileNamesThePackage)
{
    std::string error;
    EXPECT_FALSE(Font::load("/nonexistent/unifont_jp.hex", error).has_value());
    EXPECT_NE(error.find("unifont"), std::string::npos);
}

TEST(Font, TheInstalledJapaneseFontHasTheScreenCharacters)
{
    std::string error;
    auto font = Font::load(kUnifontJapanesePath, error);
    ASSERT_TRUE(font.has_value()) << error;
    EXPECT_EQ(font->glyphForShiftJis('A').width, 8);
    EXPECT_EQ(font->glyphForShiftJis(0xB1).width, 8);
    EXPECT_EQ(font->glyphForShiftJis(0x93FA).width, 16); // 日
    EXPECT_EQ(font->glyphForShiftJis(0x5C).width, 8);
}

} // namespace
} // namespace tessaly::screen
