// INPUT and LINE INPUT: prompts, fields, and assignment of the typed line.
#include <gtest/gtest.h>

#include <string>

#include "core/interpreter.h"
#include "expr/evaluator.h"
#include "expr/number_text.h"
#include "screen/keyboard.h"
#include "screen/text_screen.h"
#include "support/test_host.h"

namespace tessaly::expr {
namespace {

struct InputCase {
    const char* statement;
    const char* reply;
    const char* prompt;   // what the screen shows before the reply
    const char* variable;
    const char* value;
};

class InputReplies : public ::testing::TestWithParam<InputCase> {};

TEST_P(InputReplies, AreAssigned)
{
    const auto& c = GetParam();
    test::Session session;
    EXPECT_EQ(session.type(c.statement), std::string(c.statement) + "\n" + c.prompt);
    ASSERT_TRUE(session.interpreter().isWaitingForInput());
    session.type(c.reply);
    EXPECT_FALSE(session.interpreter().isBusy());
    EXPECT_EQ(session.valueOf(c.variable), c.value) << c.statement << " <- " << c.reply;
}

INSTANTIATE_TEST_SUITE_P(Input, InputReplies,
    ::testing::Values(InputCase {"INPUT A", "5", "? ", "A", " 5 "}, InputCase {"INPUT A", "2*3", "? ", "A", " 6 "},
        InputCase {"INPUT A", "", "? ", "A", " 0 "}, InputCase {"INPUT A$,B", "HELLO,7", "? ", "A$", "HELLO"},
        InputCase {"INPUT A$,B", "HELLO,7", "? ", "B", " 7 "}, InputCase {"INPUT A$,B", "HELLO", "? ", "B", " 0 "},
        InputCase {"INPUT A$", "\"X,Y\"", "? ", "A$", "X,Y"}, InputCase {"LINE INPUT A$", "X,Y", "? ", "A$", "X,Y"},
        InputCase {"INPUT \"Name\";N$", "taro", "Name? ", "N$", "taro"},
        InputCase {"INPUT \"Name\",N$", "taro", "Name", "N$", "taro"},
        InputCase {"INPUT A,B", "1,2,3", "? ", "B", " 2 "}, InputCase {"INPUT A$", "  padded  ", "? ", "A$", "padded"},
        InputCase {"INPUT B(2)", "9", "? ", "B(2)", " 9 "},
        // Empty and blank replies: 0 for a number, the empty string for a string.
        InputCase {"A=7:INPUT A", "", "? ", "A", " 0 "}, InputCase {"A=7:INPUT A", "   ", "? ", "A", " 0 "},
        InputCase {"A$=\"old\":INPUT A$", "", "? ", "A$", ""},
        InputCase {"A$=\"old\":LINE INPUT A$", "", "? ", "A$", ""},
        InputCase {"A$=\"old\":INPUT \"N \",A$", "", "N ", "A$", ""},
        InputCase {"A$=\"old\":INPUT \"N \",A$", "  ", "N ", "A$", ""},
        // The reply starts where the prompt ended, whatever it holds.
        InputCase {"INPUT \"Y\",A$", "YES", "Y", "A$", "YES"},
        InputCase {"INPUT \"  N\";A$", "x", "  N? ", "A$", "x"},
        InputCase {"INPUT \"?\",A$", "? ?", "?", "A$", "? ?"},
        InputCase {"PRINT \"AB\";:INPUT X", "5", "AB? ", "X", " 5 "},
        InputCase {"PRINT \"AB\";:INPUT \"N\";X$", "hello", "ABN? ", "X$", "hello"},
        InputCase {"PRINT \"AB\";:LINE INPUT X$", " a, b ", "AB? ", "X$", "a, b"},
        InputCase {"PRINT \"AB\";:INPUT X,Y$", "1, two", "AB? ", "Y$", "two"}));

// Each reply is cut from its own row and leaves nothing behind: the run ends with OK.
TEST(Input, RepliesAfterPrintedTextEndTheRunCleanly)
{
    test::Session session;
    session.type({"10 PRINT \"AB\";", "20 INPUT X", "30 PRINT X,X", "40 INPUT \"  N\";A$", "50 PRINT \"[\";A$;\"]\""});
    EXPECT_EQ(session.type("RUN"), "RUN\nAB? ");
    // The zones of PRINT count from the start of the row below the reply.
    EXPECT_EQ(session.type("5"), "5\n 5" + std::string(13, ' ') + "5 \n  N? ");
    EXPECT_EQ(session.type(""), "\n[]\nOK\n");
}

// A prompt that wraps past column 80, and a reply that wraps and scrolls the window: the reply is
// the text from the cell where the prompt ended to the end of the logical line.
TEST(Input, WrappedPromptsAndRepliesAtTheBottomOfTheScreen)
{
    test::Session session;
    auto& in = session.interpreter();
    std::string longReply = std::string(79, 'r') + "ST";
    session.type({"10 LOCATE 0,23:PRINT STRING$(75,\"p\");", "20 INPUT \"QUESTION\";A$", "30 INPUT B$"});
    session.type("RUN");
    ASSERT_TRUE(in.isWaitingForInput());
    EXPECT_EQ(in.screen().row(in.screen().cursorRow()).substr(0, 5), "ION? ");
    session.type(longReply);
    EXPECT_EQ(session.valueOf("A$"), longReply);
    // B's prompt stands on the last text row; the reply fills three rows and scrolls twice.
    std::string threeRows = std::string(200, 'b');
    session.type(threeRows);
    EXPECT_EQ(session.valueOf("B$"), threeRows);
}

// Keys between the prompt and Enter: the cursor moved inside the reply, or onto another line.
TEST(Input, RepliesEditedWithTheCursorKeys)
{
    test::Session session;
    auto& in = session.interpreter();
    session.type({"10 INPUT \"N\";A", "20 INPUT \"N\";B", "30 INPUT C$"});
    session.type("RUN");
    // The last digit typed over, then Enter with the cursor in the middle of the reply.
    for (char c : std::string("1235"))
        in.onChar(c);
    in.onKeyDown(screen::vk::kLeft);
    in.onChar('4');
    in.onKeyDown(screen::vk::kLeft);
    in.onKeyDown(screen::vk::kLeft);
    in.onChar(screen::vk::kEnter);
    session.step(100);
    EXPECT_EQ(session.valueOf("A"), " 1234 ");
    // Enter on the row above, the earlier prompt and answer, enters that answer again.
    in.onKeyDown(screen::vk::kUp);
    in.onChar(screen::vk::kEnter);
    session.step(100);
    EXPECT_EQ(session.valueOf("B"), " 1234 ");
    // A reply typed on a fresh row below the prompt is that row.
    in.onKeyDown(screen::vk::kDown);
    for (char c : std::string("below"))
        in.onChar(c);
    in.onChar(screen::vk::kEnter);
    session.step(100);
    EXPECT_EQ(session.valueOf("C$"), "below");
    EXPECT_FALSE(in.isBusy());
}

TEST(Input, ErrorsOfTheStatementAndOfTheAssignment)
{
    test::Session session;
    EXPECT_EQ(session.type("INPUT \"X\" A"), "INPUT \"X\" A\nSyntax error in \n");
    session.type("INPUT A%");
    EXPECT_EQ(session.type("99999"), "99999\nOverflow in \n");
    session.type("INPUT A");
    EXPECT_EQ(session.type("\"text\""), "\"text\"\nType mismatch in \n");
    EXPECT_EQ(session.type("INPUTX"), "INPUTX\nSyntax error in \n");
}

TEST(Input, RandomizeAsksForTheSeedUntilItFits)
{
    test::Session session;
    EXPECT_EQ(session.type("RANDOMIZE"), "RANDOMIZE\nRandom number seed (-32768 to 32768)? ");
    EXPECT_EQ(session.type("40000"), "40000\nRandom number seed (-32768 to 32768)? ");
    session.type("5");
    EXPECT_FALSE(session.interpreter().isBusy());
    std::string seeded = session.valueOf("RND(-1)");
    session.type("RANDOMIZE 5");
    EXPECT_EQ(session.valueOf("RND(-1)"), seeded);
}

TEST(Input, BreakWhileWaiting)
{
    test::Session session;
    session.type({"10 INPUT A", "RUN"});
    ASSERT_TRUE(session.interpreter().isWaitingForInput());
    session.interpreter().breakProgram();
    EXPECT_FALSE(session.interpreter().isBusy());
    EXPECT_EQ(session.interpreter().screen().row(session.interpreter().screen().cursorRow() - 1).substr(0, 15),
        "BREAK, OK in 10");
}

} // namespace
} // namespace tessaly::expr
