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

TEST(TextScreen, LongTextIsWrittenInRowPieces)
{
    TextScreen screen;
    Recorder recorder;
    screen.setListener(&recorder);
    std::string text = std::string(40, 'a') + std::string(40, 'b') + "cdefg";
    screen.Print(text);
    EXPECT_EQ(recorder.events, "[" + text.substr(0, 80) + "]/[cdefg]");
    EXPECT_EQ(screen.row(0), text.substr(0, 80));
    EXPECT_EQ(screen.row(1).substr(0, 6), "cdefg ");
    EXPECT_EQ(screen.highestRow(), 2);
}

TEST(TextScreen, ACursorAtColumn80WrapsBeforeTheNextByte)
{
    TextScreen screen;
    Recorder recorder;
    screen.setListener(&recorder);
    screen.setCursor(80, 5);
    screen.Print("X");
    EXPECT_EQ(recorder.events, "/[X]");
    EXPECT_EQ(screen.row(5), "");
    EXPECT_EQ(screen.row(6).substr(0, 1), "X");
    // The cursor-right bytes are stored one after another like any byte; Y is drawn at column 0.
    screen.setCursor(79, 8);
    screen.Print("\x1d\x1dY");
    EXPECT_EQ(screen.row(8).substr(79), "\x1d");
    EXPECT_EQ(screen.row(9).substr(0, 3), "\x1dY ");
    EXPECT_EQ(recorder.events, "/[X]/[Y]");
    EXPECT_EQ(screen.cursorColumn(), 1);
    EXPECT_EQ(screen.cursorRow(), 9);
}

TEST(TextScreen, StoringPadsOnlyWhenTheTextReachesPastTheRow)
{
    TextScreen screen;
    screen.setRow(2, "HELLO");
    screen.setCursor(0, 2);
    screen.Print("J");
    EXPECT_EQ(screen.row(2), "JELLO");
    screen.setCursor(3, 2);
    screen.Print("PER");
    EXPECT_EQ(screen.row(2), "JELPER" + std::string(74, ' '));
    screen.setRow(4, std::string(81, 'L'));
    screen.setCursor(78, 4);
    screen.Print("\x81\x40");
    EXPECT_EQ(screen.row(4), std::string(78, 'L') + "\x81\x40" + "L");
    EXPECT_EQ(screen.cursorRow(), 5);
}

TEST(TextScreen, StreamOfPiecesAndRows)
{
    TextScreen screen;
    Recorder recorder;
    screen.setListener(&recorder);
    screen.Print("ABC");
    screen.Print("AB\r\nC\x01" "D\x07");
    screen.NewLine();
    EXPECT_EQ(recorder.events, "[ABC][AB]/[C][D]!/");
    EXPECT_EQ(screen.row(0).substr(0, 12), "ABCAB\r\nC\x01" "D\x07 ");
    EXPECT_EQ(screen.row(1), "");
}

// Storing follows the bytes, drawing follows the cursor: every byte, control bytes included, is
// stored in the column after the one before it, wherever the control bytes move the cursor.
struct StoreCase {
    const char* name;
    const char* bytes;
    int startRow;
    const char* rowText; // the start row, trailing blanks removed
    const char* drawn;   // the pieces drawn, each with its cell
    int column;
    int row;
};

class ControlBytesStored : public ::testing::TestWithParam<StoreCase> {};

class CellRecorder final : public TextPlane {
public:
    void drawText(int column, int row, std::string_view bytes) override
    {
        drawn += std::to_string(column) + "," + std::to_string(row) + ":" + std::string(bytes) + " ";
    }
    void clearRows(int first, int last) override { cleared += std::to_string(first) + "-" + std::to_string(last); }
    std::string drawn;
    std::string cleared;
};

TEST_P(ControlBytesStored, OneAfterAnother)
{
    const auto& c = GetParam();
    TextScreen screen;
    CellRecorder plane;
    screen.setPlane(&plane);
    screen.setRow(c.startRow + 1, "NEXT");
    screen.setCursor(0, c.startRow);
    screen.Print(c.bytes);
    std::string row = screen.row(c.startRow);
    row.erase(row.find_last_not_of(' ') + 1);
    EXPECT_EQ(row, c.rowText) << c.name;
    EXPECT_EQ(plane.drawn, c.drawn) << c.name;
    EXPECT_EQ(screen.cursorColumn(), c.column) << c.name;
    EXPECT_EQ(screen.cursorRow(), c.row) << c.name;
    EXPECT_EQ(screen.row(c.startRow + 1), "NEXT") << c.name;
}

INSTANTIATE_TEST_SUITE_P(TextScreen, ControlBytesStored,
    ::testing::Values(StoreCase {"return", "AB\rC", 3, "AB\rC", "0,3:AB 0,3:C ", 1, 3},
        StoreCase {"backspace", "AB\bC", 3, "AB\bC", "0,3:AB 1,3:C ", 2, 3},
        StoreCase {"line feed", "A\nB", 3, "A\nB", "0,3:A 0,4:B ", 1, 4},
        StoreCase {"cursor down keeps the column", "AB\x1f" "C", 3, "AB\x1f" "C", "0,3:AB 2,4:C ", 3, 4},
        StoreCase {"cursor up", "AB\x1e" "C", 3, "AB\x1e" "C", "0,3:AB 2,2:C ", 3, 2},
        StoreCase {"home", "AB\x0b" "C", 3, "AB\x0b" "C", "0,3:AB 0,0:C ", 1, 0},
        StoreCase {"tab", "A\tB", 3, "A\tB", "0,3:A 8,3:B ", 9, 3},
        StoreCase {"other control", "A\x01" "B", 3, "A\x01" "B", "0,3:A 1,3:B ", 2, 3}));

TEST(TextScreen, CursorDownOnTheLastTextRowScrollsAndKeepsTheColumn)
{
    TextScreen screen;
    screen.setRow(10, "TEN");
    screen.setCursor(6, 23);
    screen.Print("\x1f");
    EXPECT_EQ(screen.cursorColumn(), 6);
    EXPECT_EQ(screen.cursorRow(), 23);
    EXPECT_EQ(screen.row(9), "TEN");
}

// Text without control bytes is stored where it is drawn, also when it runs past the bottom of the
// window and the window scrolls under it more than once.
TEST(TextScreen, LongTextAtTheBottomIsStoredWhereItIsDrawn)
{
    TextScreen screen;
    screen.setRow(24, "KEYS");
    screen.setCursor(0, 23);
    std::string text = std::string(80, 'a') + std::string(80, 'b') + "ccc";
    screen.Print(text);
    EXPECT_EQ(screen.row(21), std::string(80, 'a'));
    EXPECT_EQ(screen.row(22), std::string(80, 'b'));
    EXPECT_EQ(screen.row(23), "ccc" + std::string(77, ' '));
    EXPECT_EQ(screen.row(24), "");
    EXPECT_EQ(screen.cursorColumn(), 3);
    EXPECT_EQ(screen.cursorRow(), 23);
    // A line feed in the text leaves the rest on the row of the bytes before it, which the
    // scroll then carries up with the others.
    screen.setCursor(0, 23);
    screen.Print(std::string(80, 'd') + "e\nf");
    EXPECT_EQ(screen.row(21), std::string(80, 'd'));
    EXPECT_EQ(screen.row(22), "e\nf" + std::string(77, ' '));
    EXPECT_EQ(screen.row(23), "");
    EXPECT_EQ(screen.cursorRow(), 23);
    EXPECT_EQ(screen.cursorColumn(), 1);
}

// The cell where an INPUT reply starts moves with the rows and is lost when they leave the window.
TEST(TextScreen, TheAnchorMovesWithTheRows)
{
    TextScreen screen;
    screen.setAnchor({5, 12});
    screen.setCursor(0, 23);
    screen.NewLine();
    EXPECT_EQ(screen.anchor().row, 11);
    EXPECT_EQ(screen.anchor().column, 5);
    screen.setScrollWindow(11, 5); // rows 11..15
    screen.ScrollUp();
    EXPECT_EQ(screen.anchor().row, -1);
    screen.setAnchor({5, 9});
    screen.ScrollUp();
    EXPECT_EQ(screen.anchor().row, 9);
    screen.setAnchor({0, 13});
    screen.ClearRows();
    EXPECT_EQ(screen.anchor().row, -1);
}

struct ControlCase {
    const char* name;
    int startColumn;
    int startRow;
    char control;
    int column;
    int row;
    const char* events; // only a move on to a following row is a row of the stream
};

class ControlBytes : public ::testing::TestWithParam<ControlCase> {};

TEST_P(ControlBytes, MoveTheCursor)
{
    const auto& c = GetParam();
    TextScreen screen;
    Recorder recorder;
    screen.setListener(&recorder);
    screen.setCursor(c.startColumn, c.startRow);
    screen.Print(std::string(1, c.control));
    EXPECT_EQ(screen.cursorColumn(), c.column) << c.name;
    EXPECT_EQ(screen.cursorRow(), c.row) << c.name;
    EXPECT_EQ(recorder.events, c.events) << c.name;
}

INSTANTIATE_TEST_SUITE_P(TextScreen, ControlBytes,
    ::testing::Values(ControlCase {"backspace", 5, 3, 8, 4, 3, ""}, ControlCase {"left at column 0", 0, 3, 28, 0, 3, ""},
        ControlCase {"tab from 0", 0, 3, 9, 8, 3, ""}, ControlCase {"tab from 3", 3, 3, 9, 8, 3, ""},
        ControlCase {"tab from 8", 8, 3, 9, 16, 3, ""}, ControlCase {"tab from 79", 79, 3, 9, 0, 4, "/"},
        ControlCase {"line feed", 5, 3, 10, 0, 4, "/"}, ControlCase {"home", 5, 3, 11, 0, 0, ""},
        ControlCase {"carriage return", 5, 3, 13, 0, 3, ""}, ControlCase {"right", 5, 3, 29, 6, 3, ""},
        ControlCase {"right stops at 80", 80, 3, 29, 80, 3, ""}, ControlCase {"up", 5, 3, 30, 5, 2, ""},
        ControlCase {"up at row 0", 5, 0, 30, 5, 0, ""}, ControlCase {"down", 5, 3, 31, 5, 4, "/"},
        ControlCase {"bell", 5, 3, 7, 5, 3, "!"}, ControlCase {"other control", 5, 3, 1, 5, 3, ""},
        ControlCase {"line feed into the last text row scrolls", 5, 22, 10, 0, 23, "/"},
        ControlCase {"line feed on the last text row", 5, 23, 10, 0, 23, "/"},
        ControlCase {"carriage return on the last text row", 5, 23, 13, 0, 23, ""}));

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
    Recorder recorder;
    screen.setListener(&recorder);
    screen.Print("\a");
    EXPECT_EQ(screen.row(2), "FIVE");
    EXPECT_EQ(recorder.events, "!");
    screen.setCursor(7, 20);
    screen.Print("\r");
    EXPECT_EQ(screen.row(2), "FIVE");
    EXPECT_EQ(screen.cursorRow(), 20);
}

TEST(TextScreen, LineFeedsStayInsideASmallWindow)
{
    TextScreen screen;
    ScrollCounter plane;
    screen.setPlane(&plane);
    screen.setRow(4, "ABOVE");
    screen.setRow(8, "BELOW");
    screen.setScrollWindow(5, 3); // rows 5..7
    screen.setCursor(0, 5);
    // Landing on the window's last row scrolls at once. The bytes are stored on the first row,
    // which the scroll takes out of the window.
    screen.Print("TOP\nEND\n");
    EXPECT_EQ(screen.row(5), "");
    EXPECT_EQ(screen.row(6), "");
    EXPECT_EQ(screen.row(7), "");
    EXPECT_EQ(screen.cursorRow(), 7);
    EXPECT_EQ(plane.scrolls, "5-8 ");
    for (int i = 0; i < 100; ++i)
        screen.Print("\n");
    EXPECT_EQ(screen.cursorRow(), 7);
    EXPECT_EQ(screen.row(4), "ABOVE");
    EXPECT_EQ(screen.row(8), "BELOW");
}

TEST(TextScreen, NoScrollingWhileTheIdleCursorIsBelowTheWindow)
{
    TextScreen screen;
    ScrollCounter plane;
    screen.setPlane(&plane);
    screen.setRow(10, "TEN");
    screen.setIdleCursorRow(24);
    screen.setCursor(0, 23);
    screen.NewLine();
    screen.NewLine();
    screen.ScrollUp();
    screen.Print(std::string(90, 'x'));
    EXPECT_EQ(screen.cursorRow(), 24);
    EXPECT_EQ(screen.row(10), "TEN");
    EXPECT_EQ(plane.scrolls, "");
    screen.setIdleCursorRow(23);
    screen.NewLine();
    EXPECT_EQ(screen.row(9), "TEN");
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
    screen.Print(std::string(85, 'W'));
    EXPECT_EQ(screen.row(4), "ABOVE");
    EXPECT_EQ(screen.row(13), std::string(80, 'W'));
    EXPECT_EQ(screen.row(14), std::string(5, 'W') + std::string(75, ' '));
    EXPECT_EQ(screen.row(15), "BELOW");
    EXPECT_EQ(screen.cursorRow(), 14);
    EXPECT_EQ(screen.cursorColumn(), 5);
}

TEST(TextScreen, TheRowsOfOneLongLineAreLinkedThroughScrolling)
{
    TextScreen screen;
    screen.setCursor(0, 2);
    screen.WriteLinkedRows({"10 A"});
    EXPECT_EQ(screen.link(2).firstRow, -1);
    EXPECT_EQ(screen.link(2).lastRow, -1);
    EXPECT_EQ(screen.cursorRow(), 3);

    // Three rows from row 22: the last two scroll the window, and the links follow the rows up.
    screen.setCursor(0, 22);
    screen.WriteLinkedRows({"AAA", "BBB", "CCC"});
    EXPECT_EQ(screen.row(20).substr(0, 3), "AAA");
    EXPECT_EQ(screen.row(22).substr(0, 3), "CCC");
    for (int r = 20; r <= 22; ++r)
        EXPECT_EQ(screen.link(r).firstRow, 20) << r;
    EXPECT_EQ(screen.link(20).lastRow, 22);
    EXPECT_EQ(screen.link(21).lastRow, -1);
    EXPECT_EQ(screen.link(22).lastRow, -1);
    EXPECT_EQ(screen.row(0).substr(0, 4), "10 A");
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

    // Inside a window only the window's links move; a link to row 0 falls to -1.
    screen.setScrollWindow(10, 5);
    screen.setLink(9, {8, -1});
    screen.setLink(10, {0, 0});
    screen.setLink(11, {11, 12});
    screen.setLink(12, {11, -1});
    screen.ScrollUp();
    EXPECT_EQ(screen.link(9).firstRow, 8);
    EXPECT_EQ(screen.link(10).firstRow, 10);
    EXPECT_EQ(screen.link(10).lastRow, 11);
    EXPECT_EQ(screen.link(11).firstRow, 10);
    EXPECT_EQ(screen.link(14).lastRow, -1);
    screen.setLink(11, {0, 0});
    screen.ScrollUp();
    EXPECT_EQ(screen.link(10).firstRow, -1);
    EXPECT_EQ(screen.link(10).lastRow, -1);
}

TEST(TextScreen, ClearingEmptiesOnlyTheWindow)
{
    TextScreen screen;
    screen.setRow(2, "OUT");
    screen.setRow(6, "IN");
    screen.setLink(6, {6, 7});
    screen.setScrollWindow(5, 10);
    screen.setCursor(9, 9);
    screen.ClearRows();
    EXPECT_EQ(screen.row(2), "OUT");
    EXPECT_EQ(screen.row(6), "");
    EXPECT_EQ(screen.link(6).lastRow, 7);
    EXPECT_EQ(screen.cursorColumn(), 0);
    EXPECT_EQ(screen.highestRow(), -1);
}

TEST(TextScreen, RowsOutsideTheScreenReadEmpty)
{
    TextScreen screen;
    screen.setRow(-1, "X");
    screen.setRow(25, "X");
    screen.setLink(-3, {1, 2});
    screen.setLink(25, {1, 2});
    EXPECT_EQ(screen.row(-1), "");
    EXPECT_EQ(screen.row(39), "");
    EXPECT_EQ(screen.link(-3).firstRow, -1);
    EXPECT_EQ(screen.link(25).lastRow, -1);
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
    screen.setCursor(0, 0);
    screen.Print(std::string(100, '\x1e') + std::string(100, '\b') + "Q");
    EXPECT_EQ(screen.row(2).substr(40, 1), "Q");
    EXPECT_EQ(screen.cursorColumn(), 1);
    EXPECT_EQ(screen.cursorRow(), 0);
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

// The form feed clears the pixels of the whole text plane and goes home; the row texts and links
// stay (and the form feed itself is stored like any byte).
TEST(TextScreen, FormFeedClearsThePlaneAndGoesHome)
{
    TextScreen screen;
    CellRecorder plane;
    screen.setPlane(&plane);
    screen.Print("HELLO\r\nWORLD");
    screen.setRow(24, "KEYS");
    screen.setLink(0, {0, 1});
    screen.setCursor(2, 1);
    screen.Print("\x0c");
    EXPECT_EQ(plane.cleared, "0-24");
    EXPECT_EQ(screen.row(0).substr(0, 13), "HELLO\r\nWORLD ");
    EXPECT_EQ(screen.row(1).substr(0, 4), "  \x0c ");
    EXPECT_EQ(screen.row(24), "KEYS");
    EXPECT_EQ(screen.link(0).lastRow, 1);
    EXPECT_EQ(screen.cursorRow(), 0);
    EXPECT_EQ(screen.cursorColumn(), 0);
}

} // namespace
} // namespace tessaly::screen
