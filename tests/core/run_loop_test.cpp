// Line entry, direct commands, the run loop, prompts, BREAK, STOP, CONT and error trapping,
// seen through the text screen's stream.
#include <gtest/gtest.h>

#include <string_view>
#include <tuple>
#include <vector>

#include "screen/keyboard.h"
#include "screen/text_screen.h"
#include "support/test_host.h"

namespace tessaly::core {
namespace {

using test::Session;

TEST(RunLoop, StoredLinesShowNothingAndRunEndsWithOk)
{
    Session session;
    EXPECT_EQ(session.type({"10 END", "RUN"}), "10 END\nRUN\nOK\n");
    EXPECT_TRUE(session.host().modified);
}

TEST(RunLoop, EmptyProgramRunsToOk)
{
    Session session;
    EXPECT_EQ(session.type("RUN"), "RUN\nOK\n");
    EXPECT_EQ(session.type(""), "\n");
}

TEST(RunLoop, LineEntryErrorsHaveNoLineNumberOrOk)
{
    Session session;
    EXPECT_EQ(session.type("10PRINT"), "10PRINT\nSyntax error \n");
    EXPECT_EQ(session.type("70000 END"), "70000 END\nOut of memory in 0\n");
    // A stored line is cut at 255 characters (a typed line cannot grow that long; a merged one can).
    session.interpreter().lineEntered("10 REM " + std::string(300, 'X'));
    EXPECT_EQ(session.interpreter().screen().row(session.interpreter().screen().cursorRow() - 1).substr(0, 26),
        "Line buffer overflow in 10");
    // The cut line stays the last entry, behind the line whose number was out of range.
    EXPECT_EQ(session.interpreter().program().textAt(2).size(), 255U);
}

TEST(RunLoop, AFullProgramRefusesANewLineAndKeepsEveryCommandWorking)
{
    Session session;
    auto& store = session.interpreter().program();
    std::vector<ProgramStore::Line> lines;
    for (int n = 1; n <= kMaxProgramLines; ++n)
        lines.push_back({n, std::to_string(n) + " A=A+1\r\n"});
    store.replaceAll(lines);
    EXPECT_EQ(session.type("65530 PRINT A"), "65530 PRINT A\nOut of memory in 0\n");
    EXPECT_EQ(store.count(), kMaxProgramLines);
    EXPECT_EQ(session.type("PRINT 5"), "PRINT 5\n 5 \nOK\n");
    EXPECT_EQ(session.type("LIST 65526"), "LIST 65526\n65526 A=A+1\nOK\n");
    EXPECT_EQ(session.type({"RUN", "PRINT A"}), "RUN\nOK\nPRINT A\n 65526 \nOK\n");
    // Typing a number alone still deletes its line.
    EXPECT_EQ(session.type("65526"), "65526\n");
    EXPECT_EQ(store.count(), kMaxProgramLines - 1);
    EXPECT_EQ(session.type("DELETE 1-100"), "DELETE 1-100\nOK\n");
    EXPECT_EQ(store.count(), kMaxProgramLines - 101);
    EXPECT_EQ(session.type("NEW"), "NEW\nOK\n");
    EXPECT_EQ(store.count(), 0);
}

TEST(RunLoop, ErrorsInAProgramShowTheirLine)
{
    Session session;
    EXPECT_EQ(session.type({"10 REM start", "20 ERROR 200", "RUN"}).substr(26), "RUN\nerror in 20\n");
    EXPECT_EQ(session.interpreter().error().code, 200);
    EXPECT_EQ(session.interpreter().error().line, 20);
    EXPECT_EQ(session.type("20 ERROR 256"), "20 ERROR 256\n");
    EXPECT_EQ(session.type("RUN"), "RUN\nIllegal function call in 20\n");
    EXPECT_EQ(session.type("20 FOO"), "20 FOO\n");
    EXPECT_EQ(session.type("RUN"), "RUN\nSyntax error in 20\n");
}

TEST(RunLoop, DirectCommandErrorsShowNoLine)
{
    Session session;
    EXPECT_EQ(session.type("ERROR 7"), "ERROR 7\nerror in \n");
    EXPECT_EQ(session.interpreter().error().line, 0);
    EXPECT_EQ(session.type("GOTO100"), "GOTO100\nSyntax error in \n");
    EXPECT_EQ(session.type("GOTO 100"), "GOTO 100\nUndefined line number in \n");
}

TEST(RunLoop, CommentsAreCutBeforeExecution)
{
    Session session;
    EXPECT_EQ(session.type({"10 PREM=1", "RUN"}).substr(10), "RUN\nSyntax error in 10\n");
    EXPECT_EQ(session.type({"10 END 'the end", "RUN"}).substr(16), "RUN\nOK\n");
    EXPECT_EQ(session.type({"10 REM", "20 ' note", "RUN"}).substr(17), "RUN\nOK\n");
}

TEST(RunLoop, StopAndCont)
{
    Session session;
    session.type({"10 REM", "20 STOP", "30 END"});
    EXPECT_EQ(session.type("RUN"), "RUN\nBREAK, OK in 20 \n");
    EXPECT_EQ(session.type("CONT"), "CONT\nOK\n\nOK\n");
    EXPECT_EQ(session.type("CONT"), "CONT\nOK\nCan't continue \n");
}

TEST(RunLoop, EndThenContCannotContinue)
{
    Session session;
    session.type({"10 END", "20 STOP"});
    session.type("RUN");
    EXPECT_EQ(session.type("CONT"), "CONT\nOK\nCan't continue \n");
}

TEST(RunLoop, BreakStopsAnEndlessLoopBetweenEntries)
{
    Session session;
    session.type({"10 GOTO 10"});
    EXPECT_EQ(session.typeThenBreak("RUN", 500), "RUN\nBREAK, OK in 10 \n");
    EXPECT_FALSE(session.interpreter().isBusy());
}

TEST(RunLoop, EscapeBreaksAtTheNextIdleCall)
{
    Session session(50);
    auto& in = session.interpreter();
    session.type({"10 GOTO 20", "20 GOTO 10"});
    in.lineEntered("RUN");
    for (int i = 0; i < 10; ++i)
        in.idle();
    ASSERT_TRUE(in.isRunning());
    in.keyboard().lastKey = screen::vk::kEscape;
    in.idle();
    EXPECT_FALSE(in.isBusy());
    EXPECT_TRUE(in.run().canContinue);
    EXPECT_EQ(in.screen().row(in.screen().cursorRow() - 1).substr(0, 16), "BREAK, OK in 10 ");
}

TEST(RunLoop, RunMenuCommandTypesRunUnlessRunning)
{
    Session session;
    auto& in = session.interpreter();
    session.type({"10 ERROR 9"});
    in.runMenuCommand();
    EXPECT_EQ(in.error().code, 9);
    EXPECT_EQ(in.screen().row(1).substr(0, 3), "RUN");
}

TEST(RunLoop, BreakInADirectCommandShowsNoLine)
{
    Session session;
    session.type({"10 GOTO 10"});
    EXPECT_EQ(session.typeThenBreak("GOTO 10", 100), "GOTO 10\nBREAK, OK \n");
}

TEST(RunLoop, RunFromALineOrLabel)
{
    Session session;
    session.type({"10 ERROR 1", "20 *HERE ERROR 2", "30 ERROR 3"});
    EXPECT_EQ(session.type("RUN 30"), "RUN 30\nerror in 30\n");
    EXPECT_EQ(session.type("RUN *HERE"), "RUN *HERE\nerror in 20\n");
    EXPECT_EQ(session.type("RUN 25"), "RUN 25\nUndefined line number in 30\n");
    EXPECT_EQ(session.type("RUN *NONE"), "RUN *NONE\nUndefined line number in 30\n");
}

TEST(RunLoop, OnErrorGotoCatchesAndResumeNextGoesOn)
{
    Session session;
    session.type({"10 ON ERROR GOTO 100", "20 ERROR 5", "30 STOP", "100 RESUME NEXT"});
    EXPECT_EQ(session.type("RUN"), "RUN\nBREAK, OK in 30 \n");
    EXPECT_EQ(session.interpreter().error().code, 0);
}

TEST(RunLoop, ErrorInsideTheHandlerEndsTheRun)
{
    Session session;
    session.type({"10 ON ERROR GOTO 100", "20 ERROR 5", "30 END", "100 ERROR 6"});
    EXPECT_EQ(session.type("RUN"), "RUN\nerror in 100\n");
    EXPECT_EQ(session.interpreter().error().code, 6);
}

TEST(RunLoop, ResumeToALineAndOnErrorGotoZeroDisarms)
{
    Session session;
    session.type({"10 ON ERROR GOTO 100", "20 ERROR 5", "30 END", "100 RESUME 30"});
    EXPECT_EQ(session.type("RUN"), "RUN\nOK\n");
    session.type({"10 ON ERROR GOTO 0"});
    EXPECT_EQ(session.type("RUN"), "RUN\nerror in 20\n");
    session.type({"10 ON ERROR GOTO 999"});
    EXPECT_EQ(session.type("RUN"), "RUN\nUndefined line number in 10\n");
}

TEST(RunLoop, BeepSoundsOnceOrStartsAndStopsTheTimer)
{
    Session session;
    session.type("BEEP");
    EXPECT_EQ(session.host().beeps, 1);
    session.type("BEEP 1");
    session.type("BEEP 0");
    ASSERT_EQ(session.host().timers.size(), 3U);
    EXPECT_EQ(session.host().timers[1].periodMs, 50);
    EXPECT_EQ(session.host().timers[2].periodMs, 0);
    EXPECT_EQ(session.type("BEEP 2"), "BEEP 2\nSyntax error in \n");
}

TEST(RunLoop, DefUsrStoresTheAddress)
{
    Session session;
    session.type("DEF USR3=1234");
    EXPECT_EQ(session.interpreter().usrAddresses()[3], 1234);
    session.type("DEF USR=99");
    EXPECT_EQ(session.interpreter().usrAddresses()[0], 99);
    EXPECT_EQ(session.interpreter().usrAddresses()[1], 1);
    EXPECT_EQ(session.type("DEF USRX=1"), "DEF USRX=1\nSyntax error in \n");
}

TEST(RunLoop, QuestionMarkInALoadedProgramIsRewrittenWhenRun)
{
    Session session;
    auto& in = session.interpreter();
    in.program().replaceAll({{10, "10 ?\r\n"}});
    session.runProgram();
    EXPECT_EQ(in.program().textAt(1), "10 PRINT ");
}

TEST(RunLoop, MultiStatementDirectCommandsRunInOrder)
{
    Session session;
    EXPECT_EQ(session.type("ERROR 1:ERROR 2"), "ERROR 1:ERROR 2\nerror in \n");
    EXPECT_EQ(session.interpreter().error().code, 1);
    EXPECT_EQ(session.type("ON ERROR GOTO 0:ERROR 3"), "ON ERROR GOTO 0:ERROR 3\nerror in \n");
    EXPECT_EQ(session.interpreter().error().code, 3);
}

// Loops whose statements never return to the idle driver by themselves (WHILE, WEND, IF) and
// loops that do (GOTO, NEXT, RETURN, ON ... GOTO): every one gives the idle driver back after a
// bounded number of entries, so that each way of breaking stops it between two entries.
struct TightLoop {
    const char* name;
    std::vector<std::string_view> program;
    const char* command;
    const char* shown; // the stream from the command to the BREAK prompt
};

enum class BreakWay { Command, EscapeKey, StopKey };

class TightLoops : public ::testing::TestWithParam<std::tuple<TightLoop, BreakWay>> {};

TEST_P(TightLoops, AreBrokenBetweenTwoEntries)
{
    const auto& [loop, way] = GetParam();
    Session session(0);
    auto& in = session.interpreter();
    for (auto line : loop.program)
        session.type(line);
    // Entering the command returns: the loop gave the driver back.
    session.start(loop.command);
    for (int step = 0; step < 20; ++step) {
        ASSERT_TRUE(in.isRunning()) << loop.name;
        in.idle();
    }
    switch (way) {
    case BreakWay::Command:
        in.breakProgram();
        break;
    case BreakWay::EscapeKey:
        // A running program does not type ESC: the idle driver sees it at its next call.
        in.onKeyDown(screen::vk::kEscape);
        in.idle();
        break;
    case BreakWay::StopKey:
        in.onKeyDown(screen::vk::kPause);
        break;
    }
    EXPECT_FALSE(in.isBusy()) << loop.name;
    EXPECT_EQ(session.collected(), loop.shown) << loop.name;
    EXPECT_TRUE(in.run().canContinue) << loop.name;
}

INSTANTIATE_TEST_SUITE_P(RunLoop, TightLoops,
    ::testing::Combine(::testing::Values(
                           TightLoop {"while wend", {"10 WHILE 1:WEND"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"while inkey", {"10 WHILE INKEY$=\"\":WEND"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"while on two lines", {"10 WHILE 1:A=A+1", "20 WEND"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"direct while", {}, "WHILE 1:WEND", "WHILE 1:WEND\nBREAK, OK \n"},
                           TightLoop {"if inside while", {"10 WHILE 1:IF 1 THEN WEND"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"goto itself", {"10 GOTO 10"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"if then itself", {"10 IF 1 THEN 10"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"for with an empty body", {"10 FOR I=1 TO 1E+30:NEXT"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"next", {"10 FOR I=1 TO 1E+30", "20 NEXT"}, "RUN", "RUN\nBREAK, OK in 20 \n"},
                           TightLoop {"return", {"10 GOSUB 20", "20 RETURN 10"}, "RUN", "RUN\nBREAK, OK in 10 \n"},
                           TightLoop {"on goto", {"10 ON 1 GOTO 10"}, "RUN", "RUN\nBREAK, OK in 10 \n"}),
        ::testing::Values(BreakWay::Command, BreakWay::EscapeKey, BreakWay::StopKey)));

TEST(RunLoop, AKeyTrapFiresInsideAWhileLoop)
{
    Session session;
    session.type({"10 ON KEY GOSUB 100:KEY(1) ON", "20 WHILE 1:WEND", "100 PRINT \"F1\":RETURN"});
    session.start("RUN");
    session.step(10);
    session.interpreter().onKeyDown(screen::vk::kF1);
    session.step(10);
    EXPECT_EQ(session.breakAndCollect(), "RUN\nF1\nBREAK, OK in 20 \n");
}

TEST(RunLoop, ATrapWithAFullGosubStackEndsTheRun)
{
    Session session;
    session.type({"10 ON KEY GOSUB 200:KEY(1) ON:GOSUB 100", "100 D=D+1:IF D<255 THEN GOSUB 100", "110 GOTO 110",
        "200 RETURN"});
    session.start("RUN");
    session.step(2000);
    ASSERT_TRUE(session.interpreter().isRunning());
    session.interpreter().onKeyDown(screen::vk::kF1);
    session.step(10);
    EXPECT_FALSE(session.interpreter().isBusy());
    EXPECT_EQ(session.collected(), "RUN\nOut of memory in 110\n");
}

} // namespace
} // namespace tessaly::core
