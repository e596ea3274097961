// Preparation: statement entries, IF branch entries, labels, and the structure checks.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/preparation.h"
#include "support/test_host.h"

namespace tessaly::core {
namespace {

// The prepared entries behind the program as "text" or "text -> entry" when overridden.
std::vector<std::string> entries(Interpreter& in, int from)
{
    std::vector<std::string> result;
    for (int e = from; e <= in.prepared().lastAllocated; ++e) {
        std::string text = in.program().textAt(e);
        if (in.prepared().overrideAt(e) != 0)
            text += " -> " + std::to_string(in.prepared().overrideAt(e));
        result.push_back(text);
    }
    return result;
}

void load(Interpreter& in, std::vector<ProgramStore::Line> lines)
{
    in.program().replaceAll(std::move(lines));
}

TEST(Preparation, SplitsMultiStatementLinesIntoEntries)
{
    test::RecordingHost host;
    Interpreter in(host);
    load(in, {{10, "10 A=1: B=2  \r\n"}, {20, "20 END\r\n"}});
    ASSERT_EQ(prepareProgram(in), 0);
    EXPECT_EQ(entries(in, 1), (std::vector<std::string> {"10 A=1: B=2 -> 4", "20 END", "21 END ", "22 A=1",
                                  "23 B=2", "24 GOTO 20"}));
    EXPECT_EQ(in.run().endIndex, 3);
    EXPECT_EQ(in.prepared().sourceAt(5), 1);
}

TEST(Preparation, CompilesIfIntoFourBranchEntries)
{
    test::RecordingHost host;
    Interpreter in(host);
    load(in, {{10, "10 IF A THEN PRINT 1 ELSE PRINT 2\r\n"}, {20, "20 IF B THEN 100\r\n"}});
    ASSERT_EQ(prepareProgram(in), 0);
    EXPECT_EQ(entries(in, 3), (std::vector<std::string> {"21 END ", "22 PRINT 1 ", "23 GOTO 20", "24 PRINT 2",
                                  "25 GOTO 20", "26 GOTO 100", "27 GOTO 21", "", "29 GOTO 21"}));
    ASSERT_EQ(in.prepared().ifCount(), 2);
    EXPECT_EQ(in.prepared().ifAt(0).entry, 1);
    EXPECT_EQ(in.prepared().ifAt(0).branchBase, 4);
    EXPECT_EQ(in.prepared().ifAt(1).branchBase, 8);
}

TEST(Preparation, ElseLineNumbersAndLabelsBecomeJumps)
{
    test::RecordingHost host;
    Interpreter in(host);
    load(in, {{10, "10 IF A THEN PRINT 1 ELSE 200\r\n"}, {20, "20 IF B THEN *X ELSE  *Y\r\n"}});
    ASSERT_EQ(prepareProgram(in), 0);
    EXPECT_EQ(entries(in, 3), (std::vector<std::string> {"21 END ", "22 PRINT 1 ", "23 GOTO 20", "24 GOTO 200",
                                  "25 GOTO 20", "26 GOTO *X ", "27 GOTO 21", "28 GOTO  *Y", "29 GOTO 21"}));
    EXPECT_TRUE(in.prepared().labels.empty());
}

TEST(Preparation, ElseIfChainsBecomeIfStatementsOfTheirOwn)
{
    test::RecordingHost host;
    Interpreter in(host);
    load(in, {{10, "10 IF A THEN PRINT 1 ELSE IF B THEN PRINT 2 ELSE PRINT 3\r\n"}});
    ASSERT_EQ(prepareProgram(in), 0);
    ASSERT_EQ(in.prepared().ifCount(), 2);
    EXPECT_EQ(in.prepared().ifAt(1).entry, 5);
    EXPECT_EQ(in.program().textAt(5), "14 IF B THEN PRINT 2 ELSE PRINT 3");
    EXPECT_EQ(in.program().textAt(7), "16 PRINT 2 ");
    EXPECT_EQ(in.program().textAt(9), "18 PRINT 3");
}

TEST(Preparation, IfInASplitLineContinuesWithTheNextPiece)
{
    test::RecordingHost host;
    Interpreter in(host);
    load(in, {{10, "10 IF A THEN PRINT \"T\" ELSE PRINT \"F\":PRINT \"X\"\r\n"}});
    ASSERT_EQ(prepareProgram(in), 0);
    EXPECT_EQ(entries(in, 2), (std::vector<std::string> {"11 END ", "12 IF A THEN PRINT \"T\" ELSE PRINT \"F\"",
                                  "13 PRINT \"X\"", "14 GOTO 11", "15 PRINT \"T\" ", "16 GOTO 13",
                                  "17 PRINT \"F\"", "18 GOTO 13"}));
}

TEST(Preparation, LabelsAndNextLists)
{
    test::RecordingHost host;
    Interpreter in(host);
    load(in, {{10, "10 *LOOP PRINT 1\r\n"}, {20, "20 NEXT I,J\r\n"}, {30, "30 *END\r\n"}});
    ASSERT_EQ(prepareProgram(in), 0);
    EXPECT_EQ(entries(in, 4), (std::vector<std::string> {"31 END ", "32 *LOOP", "33 PRINT 1", "34 GOTO 20",
                                  "35 NEXT I ", "36 NEXT J", "37 GOTO 30"}));
    EXPECT_EQ(in.prepared().findLabel("*LOOP"), 5);
    EXPECT_EQ(in.prepared().findLabel("*END"), 3);
}

struct FailureCase {
    const char* line;
    const char* message;
};

class PreparationFailure : public ::testing::TestWithParam<FailureCase> {};

TEST_P(PreparationFailure, PreventsTheRunWithTheLineNumber)
{
    test::RecordingHost host;
    Interpreter in(host);
    load(in, {{5, "5 REM\r\n"}, {10, std::string(GetParam().line) + "\r\n"}, {20, "20 *A\r\n"}});
    EXPECT_EQ(prepareProgram(in), -1);
    EXPECT_EQ(in.run().outputText, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(Preparation, PreparationFailure,
    ::testing::Values(FailureCase {"10 IF A THEN IF B THEN PRINT 1", "Syntax error in 10"},
        FailureCase {"10 IF A THEN PRINT 1:IF B THEN PRINT 2", "Syntax error in 10"},
        FailureCase {"10 IF A THEN DIFF=1", "Syntax error in 10"}, FailureCase {"10 DIFF=3", "Syntax error in 10"},
        FailureCase {"10 PRINT \"open", "Syntax error in 10"}, FailureCase {"10 *A", "Duplicate label in 20"}));

struct StructureCase {
    const char* text;
    bool valid;
};

class IfStructure : public ::testing::TestWithParam<StructureCase> {};

TEST_P(IfStructure, AcceptsOneIfPerLine)
{
    EXPECT_EQ(checkIfStructure(GetParam().text), GetParam().valid) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Preparation, IfStructure,
    ::testing::Values(StructureCase {"10 IF A THEN 20", true}, StructureCase {"10 IF A THEN 20 ELSE 30", true},
        StructureCase {"10 IF A THEN 1 ELSE IF B THEN 2 ELSE 3", true},
        StructureCase {"10 PRINT 1:IF A THEN PRINT 2:PRINT 3", true},
        StructureCase {"10 IF A THEN PRINT \"IF\"", true}, StructureCase {"10 IF A THEN 20 'IF", true},
        StructureCase {"10 IF A:PRINT 1", false}, StructureCase {"10 THEN", false},
        StructureCase {"10 IF A THEN B ELSE C ELSE D", false}, StructureCase {"10 IF A GOTO 20", false}));

TEST(Preparation, NormalisingCutsCommentsAndExpandsNext)
{
    std::string text = "10 NEXT I,J:PRINT \"'\" 'note";
    ASSERT_TRUE(normaliseStatements(text));
    EXPECT_EQ(text, "10 NEXT I :NEXT J:PRINT \"'\" ");
    std::string open = "10 PRINT \"x";
    EXPECT_FALSE(normaliseStatements(open));
    std::string indexed = "10 NEXT A(1,2)";
    ASSERT_TRUE(normaliseStatements(indexed));
    EXPECT_EQ(indexed, "10 NEXT A(1,2)");
}

TEST(Preparation, AProgramThatFillsTheEntriesLeavesRoomForDirectCommands)
{
    // 16,382 lines of two statements take four entries each, and the END entry: 65,529 entries,
    // beyond the place of a direct command. The prepared form is then given up for the command.
    test::Session session;
    std::vector<ProgramStore::Line> lines;
    for (int n = 1; n < 16382; ++n)
        lines.push_back({n, std::to_string(n) + " A=1:B=2\r\n"});
    lines.push_back({16382, "16382 STOP:B=3\r\n"});
    session.interpreter().program().replaceAll(lines);
    EXPECT_EQ(session.type("RUN"), "RUN\nBREAK, OK in 16382 \n");
    EXPECT_GE(session.interpreter().prepared().preparedHighWater, kEntryLimit - 6);
    EXPECT_EQ(session.type("PRINT A+B"), "PRINT A+B\n 3 \nOK\n");
    EXPECT_EQ(session.type("CONT"), "CONT\nOK\nCan't continue \n");
    EXPECT_EQ(session.type("RUN"), "RUN\nBREAK, OK in 16382 \n");
}

} // namespace
} // namespace tessaly::core
