// The screen editor: typing, links of long lines, Enter, the cursor keys, function keys and clicks.
#include <gtest/gtest.h>

#include <string>

#include "core/interpreter.h"
#include "expr/variables.h"
#include "screen/keyboard.h"
#include "screen/screen_editor.h"
#include "screen/text_screen.h"
#include "support/test_host.h"

namespace tessaly::screen {
namespace {

void typeText(core::Interpreter& in, const std::string& text)
{
    for (char c : text)
        in.onChar(static_cast<unsigned char>(c));
}

TEST(ScreenEditor, EightyOneCharactersLinkTwoRows)
{
    test::Session session;
    auto& in = session.interpreter();
    typeText(in, "10 REM " + std::string(74, 'A'));
    auto& screen = in.screen();
    EXPECT_EQ(screen.cursorRow(), 1);
    EXPECT_EQ(screen.cursorColumn(), 1);
    EXPECT_EQ(screen.link(0).firstRow, 0);
    EXPECT_EQ(screen.link(0).lastRow, 1);
    EXPECT_EQ(screen.link(1).firstRow, 0);
    in.onChar(vk::kEnter);
    EXPECT_EQ(in.program().textAt(1), "10 REM " + std::string(74, 'A') + "\r\n");
}

TEST(ScreenEditor, EnterOnTheFirstRowCutsTheLine)
{
    test::Session session;
    auto& in = session.interpreter();
    typeText(in, "10 REM " + std::string(74, 'A'));
    in.onKeyDown(vk::kUp);
    in.onChar(vk::kEnter);
    EXPECT_EQ(in.program().textAt(1), "10 REM " + std::string(73, 'A') + "\r\n");
    EXPECT_EQ(in.screen().link(1).firstRow, -1);
}

TEST(ScreenEditor, ExactlyEightyCharactersAreEntered)
{
    test::Session session;
    auto& in = session.interpreter();
    typeText(in, "10 REM " + std::string(73, 'B'));
    in.onChar(vk::kEnter);
    EXPECT_EQ(in.program().count(), 1);
}

TEST(ScreenEditor, EnterOnAnEmptyRowOnlyMovesDown)
{
    test::Session session;
    auto& in = session.interpreter();
    in.onChar(vk::kEnter);
    EXPECT_EQ(in.screen().cursorRow(), 1);
    EXPECT_EQ(in.program().count(), 0);
}

// Enter reads the row texts, which hold what PRINT stored there, control bytes included, and also
// what a form feed took off the screen.
TEST(ScreenEditor, EnterReadsWhatPrintStored)
{
    test::Session session;
    auto& in = session.interpreter();
    auto& screen = in.screen();
    session.type("PRINT \"20 PRINT 5\";CHR$(13);\"Z\"");
    EXPECT_EQ(screen.row(1).substr(0, 13), "20 PRINT 5\rZ ");
    screen.setCursor(0, 1);
    in.onChar(vk::kEnter);
    EXPECT_EQ(in.program().textAt(1), "20 PRINT 5\r\n");
    // Enter on the top row, which the form feed emptied on the screen only, runs the command again.
    session.type("PRINT CHR$(12);");
    screen.setCursor(0, 0);
    EXPECT_EQ(session.type(""), "\n20 PRINT 5Z\nOK\n");
}

TEST(ScreenEditor, InsertModeEndsWithACursorKey)
{
    test::Session session;
    auto& in = session.interpreter();
    typeText(in, "ACD");
    in.onKeyDown(vk::kLeft);
    in.onKeyDown(vk::kLeft);
    in.onKeyDown(vk::kInsert);
    typeText(in, "B");
    EXPECT_EQ(in.screen().row(0), "ABCD");
    in.onKeyDown(vk::kLeft);
    EXPECT_EQ(in.editor().editMode, 1);
    typeText(in, "X");
    EXPECT_EQ(in.screen().row(0), "AXCD");
}

TEST(ScreenEditor, BackspaceAndDelete)
{
    test::Session session;
    auto& in = session.interpreter();
    typeText(in, "ABC");
    in.onChar(vk::kBackspace);
    EXPECT_EQ(in.screen().row(0), "AB");
    in.onKeyDown(vk::kHome);
    in.onChar(vk::kBackspace);
    EXPECT_EQ(in.screen().row(0), "B");
    typeText(in, "XYZ");
    in.onKeyDown(vk::kHome);
    in.onKeyDown(vk::kDelete);
    EXPECT_EQ(in.screen().row(0), "YZ ");
}

TEST(ScreenEditor, FunctionKeysTypeTheirTexts)
{
    test::Session session;
    auto& in = session.interpreter();
    in.onKeyDown(vk::kF1);
    EXPECT_EQ(in.screen().row(0), "load  ");
    in.onChar(vk::kEnter);
    session.type({"10 PRINT 1", "KEY 1,\"LIST\"+CHR$(13)"});
    int row = in.screen().cursorRow();
    in.onKeyDown(vk::kF1);
    while (in.isRunning())
        in.idle();
    EXPECT_EQ(in.screen().row(row), "LIST");
    EXPECT_EQ(in.screen().row(row + 1), "10 PRINT 1");
}

TEST(ScreenEditor, InkeyReadsTheLastKey)
{
    test::Session session;
    auto& in = session.interpreter();
    session.type({"10 A$=INKEY$:IF A$=\"\" THEN 10", "20 B$=INKEY$"});
    in.lineEntered("RUN");
    for (int i = 0; i < 20; ++i)
        in.idle();
    ASSERT_TRUE(in.isRunning());
    // A key pressed while the program runs is not typed, but INKEY$ sees it.
    in.onKeyDown(vk::kLeft);
    while (in.isRunning())
        in.idle();
    expr::Value value;
    in.variables().read("A$", expr::ValueType::String, value);
    EXPECT_EQ(value.text, std::string(1, '\x25'));
    in.variables().read("B$", expr::ValueType::String, value);
    EXPECT_EQ(value.text, "");
    EXPECT_EQ(in.screen().row(0), "10 A$=INKEY$:IF A$=\"\" THEN 10");
}

TEST(ScreenEditor, ClicksMoveTheCursorOrTypeAFunctionKey)
{
    test::Session session;
    auto& in = session.interpreter();
    in.onLeftButtonDown(8 * 12 + 3, 16 * 5 + 2);
    EXPECT_EQ(in.screen().cursorColumn(), 12);
    EXPECT_EQ(in.screen().cursorRow(), 5);
    EXPECT_EQ(in.screen().row(5).size(), 12U);
    in.onLeftButtonDown(30, 16 * 24 + 4);
    EXPECT_EQ(in.screen().row(5).substr(12), "load  ");
    // Between two labels the click only moves the cursor.
    in.onLeftButtonDown(58, 16 * 24 + 4);
    EXPECT_EQ(in.screen().cursorRow(), 24);
    EXPECT_EQ(in.screen().cursorColumn(), 7);
}

TEST(ScreenEditor, FourthRowOfALineHoldsSixteenBytes)
{
    test::Session session;
    auto& in = session.interpreter();
    typeText(in, "10 REM " + std::string(3 * 80 + 16 - 7, 'C'));
    EXPECT_FALSE(in.error().isPending());
    typeText(in, "D");
    EXPECT_EQ(in.screen().row(in.screen().cursorRow() - 1).substr(0, 26), "Line buffer overflow in 10");
}

TEST(ScreenEditor, KeysGoToTheKeyBufferWhileInputWaits)
{
    test::Session session;
    auto& in = session.interpreter();
    session.type("INPUT A$");
    typeText(in, "hi");
    EXPECT_EQ(in.keyboard().keyBuffer, "hi");
    in.onChar(vk::kEnter);
    expr::Value value;
    in.variables().read("A$", expr::ValueType::String, value);
    EXPECT_EQ(value.text, "hi");
}

} // namespace
} // namespace tessaly::screen
