// CLS, LOCATE, COLOR, CONSOLE, KEY and KEY LIST as the screen and its settings show them.
#include <gtest/gtest.h>

#include <string>

#include "core/interpreter.h"
#include "expr/variables.h"
#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/statements.h"
#include "screen/text_screen.h"
#include "support/test_host.h"

namespace tessaly::screen {
namespace {

struct ColorCase {
    const char* command;
    const char* error;
    int text, background, foreground, mode;
};

class ColorStatements : public ::testing::TestWithParam<ColorCase> {};

TEST_P(ColorStatements, CheckAndStore)
{
    test::Session session;
    const auto& c = GetParam();
    EXPECT_EQ(session.messageOf(c.command), c.error) << c.command;
    const auto& colours = session.interpreter().colours();
    EXPECT_EQ(colours.textColour, c.text) << c.command;
    EXPECT_EQ(colours.backgroundColour, c.background) << c.command;
    EXPECT_EQ(colours.foregroundColour, c.foreground) << c.command;
    EXPECT_EQ(colours.colourMode, c.mode) << c.command;
}

INSTANTIATE_TEST_SUITE_P(Screen, ColorStatements,
    ::testing::Values(ColorCase {"COLOR 2", "", 2, 0, 7, 0}, ColorCase {"COLOR 8", "Syntax error in ", 7, 0, 7, 0},
        ColorCase {"COLOR ,3", "", 7, 3, 7, 0}, ColorCase {"COLOR ,12,,,2", "", 7, 12, 7, 2},
        ColorCase {"COLOR ,12", "Syntax error in ", 7, 0, 7, 0}, ColorCase {"COLOR ,,,5", "", 7, 0, 5, 0},
        ColorCase {"COLOR 1,2,3,4,3", "Syntax error in ", 7, 0, 7, 0}, ColorCase {"COLOR 1,,9", "Syntax error in ", 7, 0, 7, 0}));

TEST(Screen, PaletteEntries)
{
    test::Session session;
    auto& colours = session.interpreter().colours();
    EXPECT_EQ(session.messageOf("COLOR =(1,2)"), "");
    EXPECT_EQ(colours.palette[1], 0xFF0000U);
    EXPECT_EQ(session.messageOf("COLOR =(1,8)"), "Syntax error in ");
    EXPECT_EQ(session.messageOf("COLOR ,,,,1:COLOR =(3,&H0FF)"), "");
    EXPECT_EQ(colours.palette[3], 0xFF00FFU);
    EXPECT_EQ(session.messageOf("COLOR =(8,1)"), "Syntax error in ");
}

TEST(Screen, LocateReplacesOutOfRangeValues)
{
    test::Session session;
    auto& screen = session.interpreter().screen();
    session.type("LOCATE 80,5:X=POS(0):Y=CSRLIN");
    session.type("LOCATE 10,7");
    session.type("LOCATE 81,5:Z=POS(0)");
    session.type("LOCATE 4,30:R=CSRLIN:C=POS(0)");
    auto& variables = session.interpreter().variables();
    expr::Value v;
    variables.read("X", expr::ValueType::Single, v);
    EXPECT_EQ(v.number, 80);
    variables.read("Y", expr::ValueType::Single, v);
    EXPECT_EQ(v.number, 5);
    variables.read("Z", expr::ValueType::Single, v);
    EXPECT_EQ(v.number, 0);
    variables.read("C", expr::ValueType::Single, v);
    EXPECT_EQ(v.number, 4);
    test::Session fresh;
    EXPECT_EQ(fresh.messageOf("LOCATE ,,0"), "");
    EXPECT_EQ(fresh.interpreter().screen().cursorSwitch(), 0);
    (void)screen;
}

TEST(Screen, ConsoleSetsTheWindow)
{
    test::Session session;
    auto& screen = session.interpreter().screen();
    EXPECT_EQ(session.messageOf("CONSOLE"), "Illegal function call in ");
    EXPECT_EQ(session.messageOf("CONSOLE 0,25,0"), "");
    EXPECT_EQ(screen.lastTextRow(), 24);
    EXPECT_FALSE(session.interpreter().functionKeys().lineShown);
    EXPECT_EQ(session.messageOf("CONSOLE 5,10"), "");
    EXPECT_EQ(screen.scrollTop(), 5);
    EXPECT_EQ(screen.lastTextRow(), 14);
    EXPECT_EQ(session.messageOf("CONSOLE 0,0"), "");
    EXPECT_EQ(screen.lastTextRow(), 0);
    EXPECT_EQ(session.messageOf("CONSOLE 25"), "Illegal function call in ");
    EXPECT_EQ(session.messageOf("CONSOLE 0,26"), "Illegal function call in ");
}

TEST(Screen, ClsClearsTheWindowAndGoesHome)
{
    test::Session session;
    auto& in = session.interpreter();
    session.type({"PRINT \"A\"", "COLOR ,3"});
    EXPECT_EQ(in.colours().backgroundInEffect, 0);
    session.type("CLS");
    EXPECT_EQ(in.screen().row(1), "");
    EXPECT_EQ(in.screen().row(0), "OK");
    session.type("CLS 2");
    EXPECT_EQ(in.colours().backgroundInEffect, 3);
}

struct ClsCase {
    const char* command;
    const char* cursor; // column and row afterwards
    bool textStays;
};

class ClsCursor : public ::testing::TestWithParam<ClsCase> {};

TEST_P(ClsCursor, GoesHomeAndClearsWhatItClears)
{
    test::Session session;
    session.type(std::string("10 LOCATE 7,5:PRINT \"XY\";:") + GetParam().command + ":C=POS(0):R=CSRLIN");
    session.type("RUN");
    EXPECT_EQ(session.valueOf("STR$(C)+STR$(R)"), GetParam().cursor) << GetParam().command;
    EXPECT_EQ(session.interpreter().screen().row(5).find("XY") != std::string::npos, GetParam().textStays)
        << GetParam().command;
}

INSTANTIATE_TEST_SUITE_P(Screen, ClsCursor,
    ::testing::Values(ClsCase {"CLS", " 0 0", false}, ClsCase {"CLS 1", " 0 0", false},
        ClsCase {"CLS 2", " 0 0", true}, ClsCase {"CLS 3", " 0 0", false}, ClsCase {"CLS 4", " 9 5", true}));

TEST(Screen, KeyTextsAndKeyList)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("KEY 1,\"LIST\"+CHR$(13)"), "");
    EXPECT_EQ(session.interpreter().functionKeys().texts[0], "LIST\r");
    EXPECT_EQ(session.messageOf("KEY 11,\"X\""), "Syntax error in ");
    EXPECT_EQ(session.messageOf("KEY 0,\"X\""), "Syntax error in ");
    std::string listed = session.type("KEY LIST");
    EXPECT_EQ(listed, "KEY LIST\nLIST\r\nauto  \ngo to \nlist  \nrun   \nsave  \nkey   \nprint \nedit  \ncont  \nOK\n");
}

TEST(TextScreenClipboard, EachRowFollowsALineEndUnlessTheTextEndsWithOne)
{
    TextScreen screen;
    screen.setRow(0, "10 PRINT 1");
    screen.setRow(2, "OK");
    screen.setRow(23, "LAST");
    // Row 1 is empty: after it the text already ends with CR LF, so row 2 follows directly.
    EXPECT_EQ(textScreenForClipboard(screen), "\r\n10 PRINT 1\r\nOK\r\nLAST");
}

} // namespace
} // namespace tessaly::screen
