// The program as one text, and text taken in as program lines by paste and the list-edit dialog.
#include <gtest/gtest.h>

#include "core/program_store.h"
#include "io/program_text.h"
#include "support/test_host.h"

namespace tessaly::io {
namespace {

std::string listing(test::Session& session)
{
    return ProgramText(session.interpreter().program());
}

TEST(ProgramText, HoldsEveryLineWithItsLineEnd)
{
    test::Session session;
    EXPECT_EQ(listing(session), "");
    session.type({"20 B=2", "10 A=1"});
    EXPECT_EQ(listing(session), "10 A=1\r\n20 B=2\r\n");
    core::ProgramStore store;
    store.replaceAll({{10, "10 X"}, {20, "20 Y\r\n"}});
    EXPECT_EQ(ProgramText(store), "10 X\r\n20 Y\r\n");
    EXPECT_EQ(store.textAt(1), "10 X\r\n"); // the store gets the line end too
}

TEST(ProgramText, ARangeStopsAtTheFirstNumberAboveItsEnd)
{
    test::Session session;
    session.type({"10 A", "20 B", "25 C", "30 D"});
    EXPECT_EQ(LinesInRange(session.interpreter().program(), 20, 25), "20 B\r\n25 C\r\n");
    EXPECT_EQ(LinesInRange(session.interpreter().program(), 11, 19), "");
    EXPECT_EQ(LinesInRange(session.interpreter().program(), 1, 65536), "10 A\r\n20 B\r\n25 C\r\n30 D\r\n");
}

TEST(TextLines, AnyLineEndEndsALineAndLongLinesAreCut)
{
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"10 A\r\n20 B\r\n", {"10 A", "20 B"}},
        {"10 A\r20 B\n30 C", {"10 A", "20 B", "30 C"}},
        {"10 A\n\n20 B\r\r", {"10 A", "", "20 B", ""}},
        {"", {}},
        {std::string(1500, 'X') + "\r\n1", {std::string(1024, 'X'), "1"}},
    };
    for (const auto& [text, lines] : cases)
        EXPECT_EQ(TextLines(text), lines) << text;
}

TEST(EnterProgramLines, PastedLinesAreStoredAsTypedLinesWithoutRewritingQuestionMarks)
{
    test::Session session;
    session.type({"10 A=1", "30 C=3"});
    EXPECT_TRUE(EnterProgramLines(session.interpreter(), {"20 b=2"}, LineSource::Paste));
    EXPECT_EQ(listing(session), "10 A=1\r\n20 B=2\r\n30 C=3\r\n");
    EXPECT_TRUE(EnterProgramLines(session.interpreter(),
        {"10 a=5", "  40 ?\"x\" ' note", "no number", "0 X", "65537 X", "50 rem Keep"}, LineSource::Paste));
    EXPECT_EQ(listing(session), "10 A=5\r\n20 B=2\r\n30 C=3\r\n40 ?\"x\" ' note\r\n50 REM Keep\r\n");
    EXPECT_TRUE(session.host().modified);
}

TEST(EnterProgramLines, DialogLinesAreTrimmedAndTheirQuestionMarksWrittenOut)
{
    test::Session session;
    session.type("10 A=1");
    EXPECT_TRUE(EnterProgramLines(session.interpreter(), {"  20 ? 1  ", "PRINT 2", "-5 X", "30 ?\"?\""},
        LineSource::ListDialog));
    EXPECT_EQ(listing(session), "10 A=1\r\n20 PRINT  1\r\n30 PRINT \"?\"\r\n");
}

TEST(EnterProgramLines, ADialogLineAbove65536EndsTheLinesWithItsError)
{
    test::Session session;
    session.start("");
    EXPECT_FALSE(EnterProgramLines(session.interpreter(), {"10 A", "70000 B", "20 C"}, LineSource::ListDialog));
    EXPECT_EQ(listing(session), "10 A\r\n");
    EXPECT_NE(session.collected().find("Out of memory in 0"), std::string::npos) << session.collected();
}

} // namespace
} // namespace tessaly::io
