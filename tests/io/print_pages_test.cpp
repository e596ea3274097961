// A listing page and the screen as printed, checked by their pixels.
#include <gtest/gtest.h>

#include "core/program_store.h"
#include "io/print_pages.h"
#include "screen/font.h"

namespace tessaly::io {
namespace {

// A font whose every glyph we use is a solid 8 x 16 block, so that a character's cell is all ink.
screen::Font blockFont()
{
    std::string hex;
    for (char c : std::string("0123456789-X ")) {
        char code[8];
        std::snprintf(code, sizeof code, "%04X:", static_cast<unsigned>(c));
        hex += code + std::string(32, c == ' ' ? '0' : 'F') + "\n";
    }
    return screen::Font::parse(hex);
}

// How many ink pixels the rectangle holds.
int inkIn(const screen::Plane& plane, int left, int top, int right, int bottom)
{
    int ink = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            ink += plane.pixel(x, y, kPaper) == kInk ? 1 : 0;
    return ink;
}

TEST(ListingPageCanvas, RowsStand18ApartUnderEachOtherAndThePageNumberBelow)
{
    core::ProgramStore store;
    store.replaceAll({{10, "10 X\r\n"}, {20, "20 " + std::string(130, 'X') + "\r\n"}, {30, "30 X\r\n"}});
    auto font = blockFont();
    auto canvas = ListingPageCanvas(store, {2, 3}, 2, 50, font);
    EXPECT_EQ(canvas.width(), 1024);
    EXPECT_EQ(canvas.height(), 55 * 18);
    // Line 20 prints as a row of 120 bytes and one of 13, line 30 below them.
    EXPECT_EQ(inkIn(canvas, 1, 18, 1 + 120 * 8, 18 + 16), 119 * 8 * 16); // "20 " then 117 X: the blank has no ink
    EXPECT_EQ(inkIn(canvas, 1 + 120 * 8, 18, 1024, 34), 0);
    EXPECT_EQ(inkIn(canvas, 1, 36, 1 + 13 * 8, 52), 13 * 8 * 16);
    EXPECT_EQ(inkIn(canvas, 1, 54, 1 + 4 * 8, 70), 3 * 8 * 16);           // "30 X"
    EXPECT_EQ(inkIn(canvas, 0, 0, 1024, 18), 0);                          // nothing above the first row
    EXPECT_EQ(inkIn(canvas, 0, 72, 1024, 53 * 18), 0);                    // nothing between
    // "-2-" at x 200 on row 53.
    EXPECT_EQ(inkIn(canvas, 200, 53 * 18, 224, 53 * 18 + 16), 3 * 8 * 16);
    EXPECT_EQ(inkIn(canvas, 0, 53 * 18, 200, 55 * 18), 0);
}

TEST(ScreenPrintImage, ANegativePrintInvertsEveryColour)
{
    screen::Plane screen;
    screen.setPixel(3, 4, 0xFFFFFF);
    screen.setPixel(5, 6, 0x0000FF);
    auto positive = ScreenPrintImage(screen, false);
    auto negative = ScreenPrintImage(screen, true);
    EXPECT_EQ(positive.pixel(3, 4), 0xFFFFFFu);
    EXPECT_EQ(positive.pixel(0, 0), 0x000000u);
    // A black screen with white text prints white paper with black text.
    EXPECT_EQ(negative.pixel(3, 4), 0x000000u);
    EXPECT_EQ(negative.pixel(0, 0), 0xFFFFFFu);
    EXPECT_EQ(negative.pixel(5, 6), 0xFFFF00u);
}

} // namespace
} // namespace tessaly::io
