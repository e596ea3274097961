// The graphics state the figures share: the clip that VIEW sets on the page (x1-1..x2-1 by
// y1-1..y2-1) for every figure, kept by SCREEN until the next VIEW; CLS 2 inside a view; and
// where each figure statement's point lands when it is not a whole number.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/interpreter.h"
#include "screen/graphics.h"
#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

constexpr Pixel kRed = 0xFF0000, kGreen = 0x00FF00;

using Fixture = test::GraphicsSession;
using Points = std::vector<std::pair<int, int>>;

struct ClipCase {
    const char* figure; // drawn after VIEW (10,10)-(100,100)
    Points drawn;       // pixels the figure sets
    Points clipped;     // pixels it would set without the clip
};

class ViewClip : public ::testing::TestWithParam<ClipCase> {};

TEST_P(ViewClip, FiguresStayWithinTheView)
{
    Fixture f;
    ASSERT_EQ(f.session.messageOf("VIEW (10,10)-(100,100)"), "");
    ASSERT_EQ(f.session.messageOf(GetParam().figure), "");
    for (auto [x, y] : GetParam().drawn)
        EXPECT_NE(f.at(x, y), 0U) << GetParam().figure << " at " << x << "," << y;
    for (auto [x, y] : GetParam().clipped)
        EXPECT_EQ(f.at(x, y), 0U) << GetParam().figure << " at " << x << "," << y;
}

INSTANTIATE_TEST_SUITE_P(Graphics, ViewClip,
    ::testing::Values(
        ClipCase {"PSET (99,99):PSET (100,99):PSET (99,100):PSET (9,9):PSET (8,9)", {{99, 99}, {9, 9}},
            {{100, 99}, {99, 100}, {8, 9}}},
        ClipCase {"LINE (0,50)-(200,50)", {{9, 50}, {99, 50}}, {{8, 50}, {100, 50}}},
        ClipCase {"LINE (50,0)-(50,200)", {{50, 9}, {50, 99}}, {{50, 8}, {50, 100}}},
        ClipCase {"LINE (20,20)-(100,100),,B", {{20, 50}, {50, 20}, {99, 20}, {20, 99}}, {{100, 50}, {50, 100}}},
        ClipCase {"LINE (50,50)-(120,120),7,BF", {{50, 50}, {99, 99}}, {{100, 99}, {99, 100}}},
        ClipCase {"CIRCLE (100,50),20,7,,,,F", {{99, 50}, {81, 50}}, {{100, 50}, {110, 50}}},
        ClipCase {"CIRCLE (50,100),20,7,,,,F", {{50, 99}}, {{50, 100}, {50, 110}}},
        ClipCase {"PAINT (50,50),4", {{9, 9}, {99, 99}, {9, 99}, {99, 9}}, {{8, 50}, {100, 50}, {50, 100}, {50, 8}}},
        ClipCase {"DRAW \"BM50,50R100\"", {{50, 50}, {99, 50}}, {{100, 50}, {120, 50}}},
        ClipCase {"DRAW \"BM50,50D100\"", {{50, 99}}, {{50, 100}}}));

TEST(Graphics, ViewFillsInsideAndBordersOutsideItsClip)
{
    Fixture f;
    f.session.type("VIEW (10,10)-(100,100),1,2:LINE (0,50)-(200,50),4");
    EXPECT_EQ(f.at(9, 50), kGreen); // the left border lies inside the clip: the line covers it
    EXPECT_EQ(f.at(10, 50), kGreen);
    EXPECT_EQ(f.at(99, 50), kGreen);
    EXPECT_EQ(f.at(100, 50), 0U);   // neither filled nor drawn
    EXPECT_EQ(f.at(101, 50), kRed); // the right border, out of reach
    EXPECT_EQ(f.at(100, 30), 0U);
    EXPECT_EQ(f.at(99, 30), 0x0000FFU);
}

TEST(Graphics, ScreenKeepsTheClipOfTheLastView)
{
    Fixture f;
    auto& in = f.session.interpreter();
    f.session.type("VIEW (10,10)-(100,100):SCREEN 0,0:PSET (200,200),2:PSET (50,50),2");
    EXPECT_FALSE(in.graphics().viewActive);
    EXPECT_EQ(f.session.valueOf("VIEW(2)"), " 639 ");
    EXPECT_EQ(f.at(200, 200), 0U);
    EXPECT_EQ(f.at(50, 50), kRed);
    // The next VIEW replaces the clip.
    f.session.type("VIEW (150,150)-(250,250):PSET (200,200),2:PSET (50,60),2");
    EXPECT_EQ(f.at(200, 200), kRed);
    EXPECT_EQ(f.at(50, 60), 0U);
    // A fresh screen (File New, LOAD) starts without a clip.
    in.resetScreen();
    f.session.type("PSET (300,300),2");
    EXPECT_EQ(f.at(300, 300), kRed);
}

TEST(Graphics, ClsTwoClearsTheViewWithinTheClip)
{
    Fixture f;
    f.session.type("LINE (0,0)-(200,200),2,BF:VIEW (10,10)-(100,100),,4:CLS 2");
    EXPECT_EQ(f.at(10, 10), 0U);
    EXPECT_EQ(f.at(99, 99), 0U);
    EXPECT_EQ(f.at(9, 50), kGreen);   // the border stays
    EXPECT_EQ(f.at(50, 9), kGreen);
    EXPECT_EQ(f.at(100, 50), kRed);   // outside the clip
    EXPECT_EQ(f.at(101, 50), kGreen);
    EXPECT_EQ(f.at(150, 150), kRed);
    // Without a view the whole page is cleared, as far as the clip reaches.
    f.session.type("SCREEN 0,0:CLS 2");
    EXPECT_EQ(f.at(9, 50), 0U);
    EXPECT_EQ(f.at(100, 50), kRed);
    EXPECT_EQ(f.at(150, 150), kRed);
}

struct RoundingCase {
    const char* figure;
    const char* lastPoint; // POINT(2);POINT(3) afterwards
};

class FigureRounding : public ::testing::TestWithParam<RoundingCase> {};

TEST_P(FigureRounding, PointsRoundHalfAwayFromZero)
{
    Fixture f;
    f.session.type("PSET (7,7)");
    f.session.type(GetParam().figure);
    EXPECT_EQ(f.session.valueOf("STR$(POINT(2))+STR$(POINT(3))"), GetParam().lastPoint) << GetParam().figure;
}

INSTANTIATE_TEST_SUITE_P(Graphics, FigureRounding,
    ::testing::Values(RoundingCase {"PSET (-0.7,2.5)", "-1 3"}, RoundingCase {"PRESET (1.5,-2.5)", " 2-3"},
        RoundingCase {"POINT (0.4,-0.4)", " 0 0"}, RoundingCase {"LINE -(-2.5,1.5)", "-3 2"},
        RoundingCase {"LINE (0,0)-STEP(-0.5,0.5)", "-1 1"}, RoundingCase {"CIRCLE (-0.5,0.5),3", "-1 1"},
        RoundingCase {"DRAW \"BM-0.5,2.5\"", "-1 3"}, RoundingCase {"PAINT (-0.7,2),4", " 7 7"}));

} // namespace
} // namespace tessaly::screen
