// DRAW strings as the system's edge cases use them.
#include <gtest/gtest.h>

#include "core/interpreter.h"
#include "screen/graphics.h"
#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

constexpr Pixel kRed = 0xFF0000, kWhite = 0xFFFFFF;

struct Fixture : test::GraphicsSession {
    std::pair<int, int> pen() { return {session.interpreter().graphics().lastX, session.interpreter().graphics().lastY}; }
};

TEST(Draw, ASquareReturnsToItsStart)
{
    Fixture f;
    EXPECT_EQ(f.session.messageOf("PSET (100,100),0:DRAW \"R10D10L10U10\""), "");
    EXPECT_EQ(f.pen(), std::make_pair(100, 100));
    EXPECT_EQ(f.at(105, 100), kWhite);
    EXPECT_EQ(f.at(110, 105), kWhite);
    EXPECT_EQ(f.at(105, 105), 0U);
}

TEST(Draw, ScaleAngleAndBlankMoves)
{
    Fixture f;
    f.session.type("PSET (100,100),0:DRAW \"S2R10\"");
    EXPECT_EQ(f.pen(), std::make_pair(120, 100));
    f.session.type("DRAW \"S1A1R10\"");
    EXPECT_EQ(f.pen(), std::make_pair(120, 90)); // a quarter turn: right becomes up
    Fixture g;
    g.session.type("DRAW \"BM50,50R10\"");
    EXPECT_EQ(g.at(40, 45), 0U); // nothing from the origin to (50, 50)
    EXPECT_EQ(g.at(55, 50), kWhite);
}

TEST(Draw, BoxesAndSubstrings)
{
    Fixture f;
    f.session.type("PSET (10,10),0:DRAW \"C2Q20,10\"");
    EXPECT_EQ(f.at(20, 10), kRed);
    EXPECT_EQ(f.at(30, 15), kRed);
    EXPECT_EQ(f.pen(), std::make_pair(30, 20));
    f.session.type("A$=\"U5\":PSET (200,200),0:DRAW \"X=A$;R5\"");
    EXPECT_EQ(f.pen(), std::make_pair(205, 195));
}

TEST(Draw, AStyleFromAnEarlierString)
{
    Fixture f;
    f.session.type("DRAW \"Y&HFF00\"");
    f.session.type("PSET (0,50),2:DRAW \"R100\"");
    EXPECT_EQ(f.at(3, 50), kRed);  // the drawing colour, as PSET left it
    EXPECT_EQ(f.at(12, 50), 0U);   // a gap, in black
}

struct DrawFailure {
    const char* command;
    const char* message;
};

class DrawFailures : public ::testing::TestWithParam<DrawFailure> {};

TEST_P(DrawFailures, ShowTheirMessage)
{
    Fixture f;
    EXPECT_EQ(f.session.messageOf(GetParam().command), GetParam().message) << GetParam().command;
}

INSTANTIATE_TEST_SUITE_P(Strings, DrawFailures,
    ::testing::Values(DrawFailure {"DRAW \"\"", "Syntax error in "}, DrawFailure {"DRAW \"A4\"", "Illegal function call in "},
        DrawFailure {"PSET (5,5),0:DRAW \"L10\"", "Illegal function call in "},
        DrawFailure {"PSET (635,10),0:DRAW \"R5\"", ""}, DrawFailure {"DRAW \"Q10\"", "Illegal function call in "},
        DrawFailure {"DRAW \"Y&HF0F0R100\"", "Illegal function call in "},
        DrawFailure {"DRAW \"C9\"", "Illegal function call in "}, DrawFailure {"DRAW \"S0\"", "Illegal function call in "},
        DrawFailure {"A$=\"X=A$;\":DRAW \"X=A$;\"", "Out of memory in "},
        DrawFailure {"DRAW \"XA$;\"", "Illegal function call in "}));

TEST(Draw, FillsFromThePen)
{
    Fixture f;
    f.session.type("PSET (100,100),0:DRAW \"C7Q20,20BM110,110C2P7\"");
    EXPECT_EQ(f.at(110, 110), kRed);
    EXPECT_EQ(f.at(100, 100), kWhite);
    f.session.type("PSET (200,100),0:DRAW \"C4T20,20\"");
    EXPECT_EQ(f.at(210, 110), 0x00FF00U);
}

} // namespace
} // namespace tessaly::screen
