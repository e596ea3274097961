// The text screen model: storing, wrapping, control bytes, scrolling of the window and the stream.
#include <gtest/gtest.h>

#include <string>

#include "screen/text_screen.h"

namespace tessaly::screen {
namespace {

class Recorder final : public TextListener {
public:
    void textWritten(std::string_view bytes) override { events += "[" + std::string(bytes) + "]"; }
    void rowAdvanced() override { events += "/"; }
    void bell() override { events += "!"; }
    std::string events;
};

class ScrollCounter final : public TextPlane {
public:
    void scrollUp(int top, int bottom) override { scrolls += std::to_string(top) + "-" + std::to_string(bottom) + " "; }
    std::string scrolls;
};

TEST(TextScreen, WrapsAtColumn80)
{
    TextScreen screen;
    Recorder recorder;
    screen.setListener(&recorder);
    screen.Print(std::string(80, 'A') + "B");
    EXPECT_EQ(screen.row(0), std::string(80, 'A'));
    EXPECT_EQ(screen.row(1), "B" + std::string(79, ' '));
    EXPECT_EQ(screen.cursorColumn(), 1);
    EXPECT_EQ(screen.cursorRow(), 1);
    EXPECT_EQ(recorder.events, "[" + std::string(80, 'A') + "]/[B]");
}

TEST(TextScreen, StreamOfPiecesAndRows)
{
    TextScreen screen;
    Recorder recorder;
    screen.setListener(&recorder);
    screen.Print("ABC");
    screen.Print("AB\r\nCD\x07");
    screen.NewLine();
    EXPECT_EQ(recorder.events, "[ABC][AB]/[CD]!/");
    EXPECT_EQ(screen.row(0).substr(0, 5), "ABCAB");
    EXPECT_EQ(screen.row(1).substr(0, 2), "CD");
}

struct ControlCase {
    const char* name;
    int startColumn;
    int startRow;
    char control;
    int column;
    int row;
};

class ControlBytes : public ::testing::TestWithParam<ControlCase> {};

TEST_P(ControlBytes, MoveTheCursor)
{
    const auto& c = GetParam();
    TextScreen screen;
    screen.setCursor(c.startColumn, c.startRow);
    screen.Print(std::string(1, c.control));
    EXPECT_EQ(screen.cursorColumn(), c.column) << c.name;
    EXPECT_EQ(screen.cursorRow(), c.row) << c.name;
}

INSTANTIATE_TEST_SUITE_P(TextScreen, ControlBytes,
    ::testing::Values(ControlCase {"backspace", 5, 3, 8, 4, 3}, ControlCase {"left at column 0", 0, 3, 28, 0, 3},
        ControlCase {"tab from 0", 0, 3, 9, 8, 3}, ControlCase {"tab from 3", 3, 3, 9, 8, 3},
        ControlCase {"tab from 8", 8, 3, 9, 16, 3}, ControlCase {"tab from 79", 79, 3, 9, 0, 4},
        ControlCase {"line feed", 5, 3, 10, 0, 4}, ControlCase {"home", 5, 3, 11, 0, 0},
        ControlCase {"carriage return", 5, 3, 13, 0, 3}, ControlCase {"right", 5, 3, 29, 6, 3},
        ControlCase {"up", 5, 3, 30, 5, 2}, ControlCase {"up at row 0", 5, 0, 30, 5, 0},
        ControlCase {"down", 5, 3, 31, 0, 4}, ControlCase {"other control", 5, 3, 1, 5, 3},
        ControlCase {"line feed into the last text row scrolls", 5, 22, 10, 0, 23},
        ControlCase {"carriage return on the last text row", 5, 23, 13, 0, 23}));

TEST(TextScreen, ControlBytesOnTheLastTextRowScrollTheWindow)
{
    TextScreen screen;
    screen.setRow(5, "FIVE");
    screen.setCursor(3, 23);
    screen.Print("\r");
    EXPECT_EQ(screen.row(4), "FIVE");
    screen.setCursor(0, 22);
    screen.Print("\n");
    EXPECT_EQ(screen.row(3), "FIVE");
    EXPECT_EQ(screen.cursorRow(), 23);
}

TEST(TextScreen, PrintingAtTheBottomOfAWindowScrollsOnlyTheWindow)
{
    TextScreen screen;
    ScrollCounter plane;
    screen.setPlane(&plane);
    screen.setScrollWindow(5, 10); // rows 5..14
    screen.setRow(4, "ABOVE");
    screen.setRow(6, "SIX");
    screen.setRow(15, "BELOW");
    screen.setCursor(0, 14);
    screen.Print("X");
    screen.NewLine();
    EXPECT_EQ(screen.row(4), "ABOVE");
    EXPECT_EQ(screen.row(5), "SIX");
    EXPECT_EQ(screen.row(13).substr(0, 1), "X");
    EXPECT_EQ(screen.row(14), "");
    EXPECT_EQ(screen.row(15), "BELOW");
    EXPECT_EQ(screen.cursorRow(), 14);
    EXPECT_EQ(plane.scrolls, "5-15 ");
}

TEST(TextScreen, ScrollingMovesTheLineLinks)
{
    TextScreen screen;
    screen.setLink(3, {3, 4});
    screen.setLink(4, {3, -1});
    screen.setCursor(0, 23);
    screen.NewLine();
    EXPECT_EQ(screen.link(2).firstRow, 2);
    EXPECT_EQ(screen.link(2).lastRow, 3);
    EXPECT_EQ(screen.link(3).firstRow, 2);
    EXPECT_EQ(screen.link(3).lastRow, -1);
    EXPECT_EQ(screen.link(4).firstRow, -1);
}

TEST(TextScreen, PrintLineAtMovesToTheNextRow)
{
    TextScreen screen;
    Recorder recorder;
    screen.setListener(&recorder);
    screen.PrintLineAt(0, 7, "OK");
    EXPECT_EQ(recorder.events, "[OK]/");
    EXPECT_EQ(screen.cursorRow(), 8);
    EXPECT_EQ(screen.cursorColumn(), 0);
}

TEST(TextScreen, CursorNeverLeavesTheScreen)
{
    TextScreen screen;
    screen.setScrollWindow(0, 3);
    for (int i = 0; i < 100; ++i) {
        screen.Print("\n\x1f\t\t\t\t\t\t\t\t\t\t");
        ASSERT_GE(screen.cursorRow(), 0);
        ASSERT_LE(screen.cursorRow(), 24);
    }
    screen.setIdleCursorRow(24);
    for (int i = 0; i < 30; ++i)
        screen.NewLine();
    EXPECT_LE(screen.cursorRow(), 24);
    screen.setCursor(-5, 99);
    screen.Print(std::string(2000, 'Z'));
    EXPECT_LE(screen.cursorRow(), 24);
}

TEST(TextScreen, CaretFollowsTheCursorAndTheEditMode)
{
    TextScreen screen;
    screen.setCursor(80, 5);
    auto caret = screen.ShowCursor(false);
    EXPECT_EQ(caret.x, 8 * 79);
    EXPECT_EQ(caret.y, 16 * 5);
    EXPECT_EQ(caret.width, 8);
    EXPECT_EQ(caret.height, 13);
    EXPECT_TRUE(caret.visible);
    EXPECT_EQ(screen.cursorColumn(), 79);
    EXPECT_EQ(screen.ShowCursor(true).height, 9);
    screen.setCursorSwitch(0);
    EXPECT_FALSE(screen.ShowCursor(false).visible);
}

TEST(TextScreen, FormFeedClearsTheWindowAndGoesHome)
{
    TextScreen screen;
    screen.Print("HELLO\r\nWORLD");
    screen.Print("\x0c");
    EXPECT_EQ(screen.row(0), "");
    EXPECT_EQ(screen.row(1), "");
    EXPECT_EQ(screen.cursorRow(), 0);
    EXPECT_EQ(screen.cursorColumn(), 0);
}

} // namespace
} // namespace tessaly::screen
