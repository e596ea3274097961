// The failures of control flow, DATA and the editing commands, each with its message and line.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screen/text_screen.h"
#include "support/test_host.h"

namespace tessaly::core {
namespace {

struct FailureCase {
    const char* name;
    std::vector<std::string> program;
    const char* message; // what RUN shows last
};

class FlowFailures : public ::testing::TestWithParam<FailureCase> {};

TEST_P(FlowFailures, ShowTheirMessage)
{
    test::Session session(20000);
    for (const auto& line : GetParam().program)
        session.type(line);
    std::string out = session.type("RUN");
    auto last = out.rfind('\n', out.size() - 2);
    EXPECT_EQ(out.substr(last + 1), std::string(GetParam().message) + "\n") << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(ControlFlow, FlowFailures,
    ::testing::Values(FailureCase {"double loop variable", {"10 FOR I#=1 TO 3", "20 NEXT"}, "Type mismatch in 10"},
        FailureCase {"string loop variable", {"10 FOR I$=1 TO 3", "20 NEXT"}, "Type mismatch in 10"},
        FailureCase {"next without for", {"10 REM", "20 NEXT"}, "NEXT without FOR in 20"},
        FailureCase {"next of another variable", {"10 FOR I=1 TO 2", "20 NEXT J"}, "NEXT without FOR in 20"},
        FailureCase {"next glued", {"10 FOR I=1 TO 2", "20 NEXTI"}, "Syntax error in 20"},
        FailureCase {"zero trip without next", {"10 FOR I=2 TO 1", "20 PRINT I"}, "FOR without NEXT in 10"},
        FailureCase {"return without gosub", {"10 RETURN"}, "RETURN without gosub in 10"},
        FailureCase {"gosub too deep", {"10 GOSUB 10"}, "Out of memory in 10"},
        FailureCase {"for too deep", {"10 FOR I=1 TO 2:GOSUB 20", "20 FOR J=1 TO 2:GOTO 30", "30 A=A+1:IF A<40 THEN 20",
                                         "40 END"},
            "OK"},
        FailureCase {"while without wend", {"10 WHILE 0", "20 PRINT 1"}, "WHILE without WEND in 10"},
        FailureCase {"wend without while", {"10 WEND"}, "WHILE without WEND in 10"},
        FailureCase {"undefined line", {"10 GOTO 99"}, "Undefined line number in 10"},
        FailureCase {"undefined label", {"10 GOSUB *NONE"}, "Undefined label in 10"},
        FailureCase {"on negative", {"10 ON -1 GOTO 10"}, "Syntax error in 10"},
        FailureCase {"on with key", {"10 ON X KEY GOTO 10"}, "Syntax error in 10"},
        FailureCase {"out of data", {"10 READ A,B", "20 DATA 1"}, "Out of DATA in 10"},
        FailureCase {"no data", {"10 READ A"}, "Out of DATA in 10"},
        FailureCase {"data out of range", {"10 READ A%", "20 DATA 40000"}, "Overflow in 10"},
        FailureCase {"restore unknown label", {"10 RESTORE *NONE"}, "Syntax error in 10"},
        FailureCase {"if type mismatch", {"10 IF A$=1 THEN 10"}, "Type mismatch in 10"},
        FailureCase {"integer loop past 32767", {"10 FOR I%=32760 TO 32767 STEP 5", "20 NEXT"}, "Overflow in 20"},
        FailureCase {"list glued", {"10 LIST10"}, "Syntax error in 10"},
        FailureCase {"for stack of 31", {"10 FOR A=1 TO 2:FOR B=1 TO 2:FOR C=1 TO 2:FOR D=1 TO 2:FOR E=1 TO 2:FOR F=1 TO 2",
                                            "20 FOR G=1 TO 2:FOR H=1 TO 2:FOR I=1 TO 2:FOR J=1 TO 2:FOR K=1 TO 2:FOR L=1 TO 2",
                                            "30 FOR M=1 TO 2:FOR N=1 TO 2:FOR O=1 TO 2:FOR P=1 TO 2:FOR Q=1 TO 2:FOR R=1 TO 2",
                                            "40 FOR S=1 TO 2:FOR T=1 TO 2:FOR U=1 TO 2:FOR V=1 TO 2:FOR W=1 TO 2:FOR X=1 TO 2",
                                            "50 FOR Y=1 TO 2:FOR Z=1 TO 2:FOR A1=1 TO 2:FOR B1=1 TO 2:FOR C1=1 TO 2:FOR D1=1 TO 2:FOR E1=1 TO 2:FOR F1=1 TO 2"},
            "Out of memory in 50"}));

TEST(ControlFlow, GosubsNestTo255LevelsAndNotOneMore)
{
    test::Session session;
    session.type({"10 GOSUB 100:PRINT D:END", "100 D=D+1:IF D<255 THEN GOSUB 100", "110 RETURN"});
    EXPECT_EQ(session.type("RUN"), "RUN\n 255 \nOK\n");
    session.type("100 D=D+1:IF D<256 THEN GOSUB 100");
    EXPECT_EQ(session.type("RUN"), "RUN\nOut of memory in 100\n");
    EXPECT_EQ(session.valueOf("D"), " 255 ");
}

struct LoopCase {
    const char* program; // one direct line
    const char* shown;
};

class Loops : public ::testing::TestWithParam<LoopCase> {};

TEST_P(Loops, StepTheirVariableByItsType)
{
    test::Session session;
    std::string line = GetParam().program;
    EXPECT_EQ(session.type(line), line + "\n" + GetParam().shown + "\nOK\n");
}

// A single loop variable steps in single precision from the value its cell holds (0.1 added ten
// times is just above 1); an integer one by the step truncated; a double one is refused.
INSTANTIATE_TEST_SUITE_P(ControlFlow, Loops,
    ::testing::Values(LoopCase {"FOR X=0 TO 1 STEP 0.1:N=N+1:NEXT:PRINT N;X", " 10  1 "},
        LoopCase {"FOR X!=1 TO 0 STEP -0.1:N=N+1:NEXT:PRINT N;X!", " 10 -7.45058e-008 "},
        LoopCase {"DIM A(2):FOR A(1)=0 TO 1 STEP 0.1:N=N+1:NEXT:PRINT N;A(1)", " 10  1 "},
        LoopCase {"FOR X=0 TO 0.3 STEP 0.1:PRINT X;:NEXT", " 0  0.1  0.2  0.3 "},
        LoopCase {"FOR X=0 TO 1 STEP 0.5:X=X+0.25:PRINT X;:NEXT", " 0.25  1 "},
        LoopCase {"FOR I%=1 TO 5 STEP 2.7:PRINT I%;:NEXT:PRINT I%", " 1  3  5  7 "},
        LoopCase {"FOR I%=10 TO 1 STEP -3:PRINT I%;:NEXT:PRINT I%", " 10  7  4  1 -2 "},
        LoopCase {"FOR I=1 TO 3 STEP 0:PRINT I;:NEXT", " 1  2  3 "}));

// The lines every ELSE case jumps between; each case puts its IF in front as line 10.
const std::vector<std::string> kElseTargets {"20 PRINT \"20\":END", "100 PRINT \"100\":END",
    "200 PRINT \"200\":END", "300 *B PRINT \"B\""};

struct ElseCase {
    const char* line10;
    const char* shown; // what RUN shows after its echo
};

class ElseBranches : public ::testing::TestWithParam<ElseCase> {};

TEST_P(ElseBranches, ALineNumberOrLabelAfterElseIsAJump)
{
    test::Session session(20000);
    for (const auto& line : kElseTargets)
        session.type(line);
    session.type(GetParam().line10);
    EXPECT_EQ(session.type("RUN"), std::string("RUN\n") + GetParam().shown) << GetParam().line10;
}

INSTANTIATE_TEST_SUITE_P(ControlFlow, ElseBranches,
    ::testing::Values(ElseCase {"10 IF 0 THEN 100 ELSE 200", "200\nOK\n"},
        ElseCase {"10 IF 1 THEN 100 ELSE 200", "100\nOK\n"},
        ElseCase {"10 IF 0 THEN PRINT \"T\" ELSE 200", "200\nOK\n"},
        ElseCase {"10 IF 0 THEN 100 ELSE *B", "B\nOK\n"},
        ElseCase {"10 IF 0 THEN PRINT \"T\" ELSE *B", "B\nOK\n"},
        ElseCase {"10 IF 0 THEN GOTO 100 ELSE 200", "200\nOK\n"},
        ElseCase {"10 IF 0 THEN 100 ELSE  200 ", "200\nOK\n"},
        ElseCase {"10 IF 0 THEN 100 ELSE IF 1 THEN 200 ELSE 100", "200\nOK\n"},
        ElseCase {"10 IF 0 THEN 100 ELSE IF 0 THEN 100 ELSE 200", "200\nOK\n"},
        ElseCase {"10 PRINT \"A\":IF 0 THEN 100 ELSE 200:PRINT \"X\"", "A\n200\nOK\n"},
        ElseCase {"10 IF 0 THEN 100 ELSE PRINT 200:PRINT \"X\"", " 200 \nX\n20\nOK\n"},
        ElseCase {"10 IF 0 THEN 100 ELSE 250", "Undefined line number in 10\n"},
        ElseCase {"10 IF 0 THEN PRINT \"T\" ELSE *NONE", "Undefined label in 10\n"}));

TEST(ControlFlow, ElseTargetsInADirectCommand)
{
    test::Session session(20000);
    for (const auto& line : kElseTargets)
        session.type(line);
    // A direct command jumps into the program as RUN prepared it.
    EXPECT_EQ(session.type("RUN"), "RUN\n20\nOK\n");
    EXPECT_EQ(session.type("IF 0 THEN 100 ELSE 200"), "IF 0 THEN 100 ELSE 200\n200\nOK\n");
    EXPECT_EQ(session.type("IF 0 THEN PRINT \"T\" ELSE *B"), "IF 0 THEN PRINT \"T\" ELSE *B\nB\nOK\n");
    EXPECT_EQ(session.type("IF 0 THEN 100 ELSE IF 0 THEN 100 ELSE 200"),
        "IF 0 THEN 100 ELSE IF 0 THEN 100 ELSE 200\n200\nOK\n");
    EXPECT_EQ(session.type("IF 0 THEN 100 ELSE 250"), "IF 0 THEN 100 ELSE 250\nUndefined line number in \n");
}

TEST(ControlFlow, AForRunAgainByGotoKeepsItsLevel)
{
    test::Session session;
    session.type({"10 N=N+1:FOR I=1 TO 2", "20 IF N<50 THEN 10", "30 PRINT N"});
    EXPECT_EQ(session.type("RUN"), "RUN\n 50 \nOK\n");
    EXPECT_EQ(session.interpreter().stacks().forDepth, 1);
}

TEST(ControlFlow, DeleteRangesAndErrors)
{
    test::Session session;
    session.type({"10 A", "20 B", "30 C", "40 D", "50 E"});
    session.type("DELETE 20-40");
    EXPECT_EQ(session.type("LIST"), "LIST\n10 A\n50 E\nOK\n");
    session.type("DELETE 25");
    EXPECT_EQ(session.interpreter().program().count(), 2);
    EXPECT_EQ(session.type("DELETE"), "DELETE\nSyntax error in \n");
    EXPECT_EQ(session.type("DELETE 50-10"), "DELETE 50-10\nIllegal function call in \n");
    EXPECT_EQ(session.interpreter().program().count(), 2);
    session.type("DEL -10");
    EXPECT_EQ(session.type("LIST"), "LIST\n50 E\nOK\n");
}

TEST(ControlFlow, AutoOffersNumbersAndEndsOnAnEmptyLine)
{
    test::Session session;
    EXPECT_EQ(session.type("AUTO 100,5"), "AUTO 100,5\n100 ");
    // Each following number is written to the stream and stands at the start of the cursor row.
    EXPECT_EQ(session.type("PRINT 1"), "PRINT 1\n105 ");
    EXPECT_EQ(session.type("PRINT 2"), "PRINT 2\n110 ");
    auto& screen = session.interpreter().screen();
    EXPECT_EQ(screen.row(screen.cursorRow()), "110 ");
    EXPECT_EQ(screen.cursorColumn(), 4);
    EXPECT_EQ(session.interpreter().run().autoLine, 110);
    std::string out = session.type("");
    EXPECT_EQ(out, "\nBREAK, OK \n");
    EXPECT_EQ(session.interpreter().run().autoLine, 0);
    EXPECT_EQ(session.type("LIST"), "LIST\n100 PRINT 1\n105 PRINT 2\nOK\n");
}

TEST(ControlFlow, EditOffersTheLineWithoutOk)
{
    test::Session session;
    session.type({"10 PRINT 1", "30 PRINT 3"});
    EXPECT_EQ(session.type("EDIT 30"), "EDIT 30\n30 PRINT 3");
    EXPECT_EQ(session.type("EDIT 99"), "EDIT 99\n");
    EXPECT_EQ(session.type("PRINT 5"), "PRINT 5\n 5 \nOK\n");
}

TEST(ControlFlow, NewEmptiesTheProgramAndKeepsTheTrap)
{
    test::Session session;
    session.type({"10 ON ERROR GOTO 20", "20 END", "RUN"});
    EXPECT_EQ(session.type("NEW"), "NEW\nOK\n");
    EXPECT_EQ(session.interpreter().program().count(), 0);
    EXPECT_GT(session.interpreter().trap().trapTarget, 0);
}

TEST(ControlFlow, RenumRefusesNumbersThatWouldCollide)
{
    test::Session session;
    session.type({"10 A=1", "20 GOTO 10", "30 GOTO 20"});
    EXPECT_EQ(session.type("RENUM 5,20"), "RENUM 5,20\nIllegal function call in \n");
    EXPECT_EQ(session.type("RENUM 65530"), "RENUM 65530\nSyntax error \n");
    EXPECT_EQ(session.type("RENUM 65520,,5"), "RENUM 65520,,5\nSyntax error \n");
    EXPECT_EQ(session.type("LIST"), "LIST\n10 A=1\n20 GOTO 10\n30 GOTO 20\nOK\n");
    session.type("RENUM 100,20,50");
    EXPECT_EQ(session.type("LIST"), "LIST\n10 A=1\n100 GOTO 10\n150 GOTO 100\nOK\n");
}

TEST(ControlFlow, ListMenuCommandClearsAndListsEverything)
{
    test::Session session;
    session.type({"20 B", "10 A"});
    auto& in = session.interpreter();
    in.listMenuCommand();
    EXPECT_EQ(in.screen().row(0), "10 A");
    EXPECT_EQ(in.screen().row(1), "20 B");
    EXPECT_EQ(in.screen().row(2), "");
    EXPECT_EQ(in.screen().cursorRow(), 2);
}

TEST(ControlFlow, GotoIntoASplitLineRunsItsStatements)
{
    test::Session session;
    session.type({"10 A=A+1:IF A<3 THEN 10 ELSE PRINT A:PRINT \"X\"", "20 PRINT \"END\""});
    EXPECT_EQ(session.type("RUN"), "RUN\n 3 \nX\nEND\nOK\n");
}

} // namespace
} // namespace tessaly::core
