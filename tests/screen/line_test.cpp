// LINE as the edge cases of the system draw it: end pixel left out, relative points, boxes in
// any corner order, styles, filled boxes; and the line style's dash runs.
#include <gtest/gtest.h>

#include "core/interpreter.h"
#include "screen/statements.h"
#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

constexpr Pixel kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF, kWhite = 0xFFFFFF;

struct Fixture : test::GraphicsSession {
    // The set pixels of a row between x0 and x1, as a string of '#' and '.'.
    std::string row(int y, int x0, int x1)
    {
        std::string out;
        for (int x = x0; x <= x1; ++x)
            out += at(x, y) == 0 ? '.' : '#';
        return out;
    }
};

TEST(Line, LeavesOutItsEndPixel)
{
    Fixture f;
    EXPECT_EQ(f.session.messageOf("LINE (0,0)-(10,0)"), "");
    EXPECT_EQ(f.row(0, 0, 11), "##########..");
    EXPECT_EQ(f.at(5, 0), kWhite);
    EXPECT_EQ(f.session.messageOf("LINE(0,2)-(3,2)"), "");
    EXPECT_EQ(f.row(2, 0, 4), "###..");
    EXPECT_EQ(f.session.messageOf("LINE (0,0)"), "Syntax error in ");
    // A point takes two numbers, for every figure statement alike.
    for (const char* command : {"LINE (\"A\",0)-(1,1)", "PSET (1,\"B\")", "CIRCLE (\"C\",1),5", "PAINT (1)"})
        EXPECT_EQ(f.session.messageOf(command), "Syntax error in ") << command;
}

TEST(Line, StartsFromTheLastPointAndStepsFromTheFirst)
{
    Fixture f;
    f.session.type("PSET (20,20),2:LINE -(20,30),2");
    EXPECT_EQ(f.at(20, 25), kRed);
    f.session.type("LINE (10,10)-STEP(5,5),4:PSET STEP(0,0),1");
    EXPECT_EQ(f.at(14, 14), kGreen);
    EXPECT_EQ(f.at(15, 15), kBlue); // the last point is (15, 15)
}

TEST(Line, BoxesInAnyCornerOrderAreTheSame)
{
    Fixture a;
    Fixture b;
    a.session.type("LINE (20,20)-(10,10),,B");
    b.session.type("LINE (10,10)-(20,20),,B");
    for (int y = 8; y <= 22; ++y)
        EXPECT_EQ(a.row(y, 8, 22), b.row(y, 8, 22)) << y;
    EXPECT_EQ(b.row(10, 8, 22), "..###########..");
    EXPECT_EQ(b.row(15, 8, 22), "..#.........#..");
    EXPECT_EQ(b.row(20, 8, 22), "..###########..");
}

TEST(Line, AStyleDrawsItsRuns)
{
    Fixture f;
    f.session.type("LINE (0,0)-(100,0),2,,&HF0F0");
    EXPECT_EQ(f.row(0, 0, 15), "####....####....");
    EXPECT_EQ(f.at(0, 0), kRed);
    EXPECT_EQ(f.session.messageOf("LINE (0,0)-(9,9),,,65536"), "Illegal function call in ");
    // The style is rounded half away from zero like every argument: 255.5 is &H100.
    f.session.type("LINE (0,2)-(100,2),2,,255.5");
    EXPECT_EQ(f.row(2, 0, 15), ".......#........");
    EXPECT_EQ(f.session.messageOf("LINE (0,0)-(9,9),,,65535.5"), "Illegal function call in ");
}

TEST(Line, FilledBoxes)
{
    Fixture f;
    f.session.type("LINE (10,10)-(50,50),4,BF");
    EXPECT_EQ(f.at(10, 10), kGreen);
    EXPECT_EQ(f.at(30, 30), kGreen);
    f.session.type("LINE (60,10)-(100,50),4,BF,1");
    EXPECT_EQ(f.at(60, 10), kGreen); // outlined in green
    EXPECT_EQ(f.at(80, 30), kBlue);  // filled with blue
    EXPECT_EQ(f.at(101, 30), 0U);
}

TEST(Line, WithoutAColourItTakesColoursFourthArgument)
{
    Fixture f;
    f.session.type("COLOR 7,0,0,5:PSET (1,1),2:LINE (0,5)-(5,5)");
    EXPECT_EQ(f.at(2, 5), 0x00FFFFU); // colour 5 (cyan), not PSET's red
    f.session.type("PSET (1,1),2:LINE (0,6)-(5,6),,B");
    EXPECT_EQ(f.at(2, 6), kRed); // an empty colour argument keeps the colour of the moment
}

TEST(Figures, CoordinatesFarOffTheScreenAreHeldNotOverflowed)
{
    Fixture f;
    for (const char* command : {"PSET (1E+20,5)", "LINE (0,0)-(1E+09,0)", "CIRCLE (100,100),1E+09",
             "CIRCLE (1E+30,1E+30),1E+30,,,,1E+30", "CIRCLE (100,100),50,,,,-1E+30", "PAINT (1E+30,-1E+30)",
             "VIEW (10,10)-(100,100):WINDOW (0,0)-(1E-30,1E-30):PSET (1E+30,1E+30)"})
        EXPECT_EQ(f.session.messageOf(command), "") << command;
    // The long line still starts where it was asked to.
    EXPECT_EQ(f.at(0, 0), kWhite);
    EXPECT_EQ(f.at(639, 0), kWhite);
}

TEST(Line, StyleToDashes)
{
    EXPECT_EQ(lineStyleToDashes(0xFF00), (std::vector<int> {8, 8}));
    EXPECT_EQ(lineStyleToDashes(0xF0F0), (std::vector<int> {4, 4, 4, 4}));
    EXPECT_EQ(lineStyleToDashes(0x0FFF), (std::vector<int> {0, 4, 12, 0}));
}

TEST(FloodFill, StopsAtTheBorderAndCrossesPixelsOfItsOwnColour)
{
    Plane plane(10, 10, 0);
    for (int k = 0; k < 10; ++k)
        plane.setPixel(5, k, 1); // a wall
    plane.setPixel(2, 2, 7);     // already of the fill colour
    plane.floodFill(0, 0, 7, 1);
    EXPECT_EQ(plane.pixel(4, 9), 7U);
    EXPECT_EQ(plane.pixel(2, 3), 7U);
    EXPECT_EQ(plane.pixel(6, 0), 0U);
    plane.setClip({0, 0, 3, 3});
    plane.floodFill(8, 8, 9, 1); // outside the clip: nothing
    EXPECT_EQ(plane.pixel(8, 8), 0U);
}

} // namespace
} // namespace tessaly::screen
