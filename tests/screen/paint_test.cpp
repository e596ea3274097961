// PAINT with a colour, a hatch and a tile, and the tiles of filled boxes and circles.
#include <gtest/gtest.h>

#include "core/interpreter.h"
#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

constexpr Pixel kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF, kWhite = 0xFFFFFF;

using Fixture = test::GraphicsSession;

TEST(Paint, FillsUpToTheBorderColour)
{
    Fixture f;
    f.session.type("LINE (50,50)-(150,150),7,B:LINE (100,60)-(100,140),2");
    EXPECT_EQ(f.session.messageOf("PAINT (70,100),2,7"), "");
    EXPECT_EQ(f.at(70, 100), kRed);
    EXPECT_EQ(f.at(120, 100), kRed); // the red line is no border: the fill goes past it
    EXPECT_EQ(f.at(40, 100), 0U);    // outside the white box
    // Without colours the fill takes the drawing colour and stops at it.
    f.session.type("CIRCLE (300,100),30,4:PSET (1,1),4:PAINT (300,100)");
    EXPECT_EQ(f.at(300, 100), kGreen);
    EXPECT_EQ(f.at(300, 200), 0U);
    // A seed on the border colour fills nothing.
    f.session.type("PAINT (50,60),1,7");
    EXPECT_EQ(f.at(50, 60), kWhite);
}

TEST(Paint, HatchesAndTiles)
{
    Fixture f;
    f.session.type("LINE (0,0)-(63,63),7,B:PAINT (10,10),\"HS_CROSS,4\",7");
    int green = 0, black = 0;
    for (int x = 1; x < 63; ++x) {
        green += f.at(x, 7) == kGreen;
        black += f.at(x, 10) == 0 && x % 8 != 0;
    }
    EXPECT_EQ(green, 62); // a horizontal line of the cross
    EXPECT_GT(black, 40); // gaps between the lines
    f.session.type("LINE (100,0)-(163,63),7,B:PAINT (110,10),\"HS_VERTICAL,1\",7");
    EXPECT_EQ(f.at(104, 10), kBlue);
    EXPECT_EQ(f.at(105, 10), 0U);
    // Three bytes a row: every pixel index 7; rows repeat to fill the tile.
    f.session.type("LINE (200,0)-(263,63),7,B:PAINT (210,10),CHR$(255)+CHR$(255)+CHR$(255),7");
    EXPECT_EQ(f.at(230, 30), kWhite);
    f.session.type("LINE (300,0)-(363,63),7,B:PAINT (310,10),CHR$(1)+CHR$(0)+CHR$(0),7");
    EXPECT_EQ(f.at(304, 10), kBlue); // bit 0 is the leftmost pixel of each 8
    EXPECT_EQ(f.at(305, 10), 0U);
    EXPECT_EQ(f.renderer.tilePlane().pixel(0, 3), kBlue); // the tile plane holds the last tile
    EXPECT_EQ(f.renderer.tilePlane().pixel(1, 3), 0U);
}

TEST(Paint, TileLengthsFollowTheColourMode)
{
    Fixture f;
    EXPECT_EQ(f.session.messageOf("PAINT (10,10),\"AB\""), "Illegal function call ,strings length not multiple 3 in ");
    f.session.type("COLOR 7,0,0,7,2");
    EXPECT_EQ(f.session.messageOf("PAINT (10,10),CHR$(255)+CHR$(255)+CHR$(255)"),
        "Illegal function call ,strings length not multiple 4 in ");
}

TEST(Paint, StepCountsFromTheLastPointWhichStays)
{
    Fixture f;
    f.session.type("LINE (90,90)-(120,120),7,B:PSET (100,100),0:PAINT STEP (5,5),2,7:PSET STEP (0,0),1");
    EXPECT_EQ(f.at(105, 105), kRed);
    EXPECT_EQ(f.at(100, 100), kBlue); // the last point is still (100, 100)
}

TEST(Paint, TheSeedIsRoundedByAddingOneHalf)
{
    // The seed is the value plus one half, truncated: -0.7 seeds at 0, where rounding half away
    // from zero would seed off the screen and fill nothing.
    Fixture f;
    f.session.type("LINE (-1,190)-(20,210),7,B:PAINT (-0.7,200),4,7");
    EXPECT_EQ(f.at(0, 200), kGreen);
    EXPECT_EQ(f.at(19, 209), kGreen);
    EXPECT_EQ(f.at(21, 200), 0U);
    f.session.type("LINE (0,290)-(20,310),7,B:PSET (0,300),0:PAINT (-0.5,300),4,7");
    EXPECT_EQ(f.at(0, 300), kGreen); // the black hole in the border is the seed
    f.session.type("LINE (100,0)-(120,20),7,B:PSET (110,0),0:PAINT (110.4,-0.7),2,7");
    EXPECT_EQ(f.at(110, 10), kRed);
}

TEST(Paint, FilledBoxesAndCirclesTakeATile)
{
    Fixture f;
    f.session.type("LINE (0,0)-(63,63),7,BF,\"HS_HORIZONTAL,2\"");
    EXPECT_EQ(f.at(10, 7), kRed);
    EXPECT_EQ(f.at(10, 8), 0U);
    f.session.type("CIRCLE (200,100),40,7,,,,F,\"HS_VERTICAL,4\"");
    EXPECT_EQ(f.at(200, 100), kGreen);
    EXPECT_EQ(f.at(201, 100), 0U);
}

} // namespace
} // namespace tessaly::screen
