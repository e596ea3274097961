// INPUT and LINE INPUT: prompts, fields, and assignment of the typed line.
#include <gtest/gtest.h>

#include <string>

#include "core/interpreter.h"
#include "expr/evaluator.h"
#include "expr/number_text.h"
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
        InputCase {"INPUT B(2)", "9", "? ", "B(2)", " 9 "}));

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
