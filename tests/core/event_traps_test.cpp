// Event traps as a program meets them: keys, the STOP key, the mouse and the TIME$ alarm calling
// their subroutines between two statements.
#include <gtest/gtest.h>

#include "screen/keyboard.h"
#include "support/test_host.h"

namespace tessaly::core {
namespace {

using screen::vk::kF1;

// A program that waits in a loop; its subroutines print which event came.
void enterWaitingProgram(test::Session& session, std::string_view setup)
{
    session.type({"10 ON KEY GOSUB 100,200:ON STOP GOSUB 300:ON PEN GOSUB 400", setup, "30 GOTO 30",
        "100 PRINT \"F1\":RETURN", "200 PRINT \"F2\":RETURN", "300 PRINT \"STOP\":RETURN", "400 PRINT \"PEN\":RETURN"});
}

TEST(EventTraps, AKeyWithItsTrapOnCallsTheSubroutineAndReturns)
{
    test::Session session;
    enterWaitingProgram(session, "20 KEY(2) ON");
    session.start("RUN");
    session.step(10);
    session.interpreter().onKeyDown(kF1 + 1);
    session.step(10);
    session.interpreter().onKeyDown(kF1 + 1);
    session.step(10);
    // F1 has no trap on: it types its text, which a running program does not show.
    session.interpreter().onKeyDown(kF1);
    session.step(10);
    EXPECT_EQ(session.breakAndCollect(), "RUN\nF2\nF2\nBREAK, OK in 30 \n");
}

TEST(EventTraps, AStoppedTrapRemembersItsEventUntilItIsOn)
{
    test::Session session;
    enterWaitingProgram(session, "20 KEY(1) STOP:FOR I=1 TO 30:NEXT:KEY(1) ON");
    session.start("RUN");
    session.step(5);
    session.interpreter().onKeyDown(kF1);
    session.step(200);
    EXPECT_EQ(session.breakAndCollect(), "RUN\nF1\nBREAK, OK in 30 \n");
}

TEST(EventTraps, TheStopKeyAndThePenWithTheirTraps)
{
    test::Session session;
    enterWaitingProgram(session, "20 STOP ON:PEN ON");
    session.start("RUN");
    session.step(10);
    session.interpreter().onKeyDown(screen::vk::kPause);
    session.step(10);
    session.interpreter().onLeftButtonDown(8 * 3, 16 * 5);
    session.step(10);
    EXPECT_EQ(session.interpreter().eventTraps().penColumn, 3);
    EXPECT_EQ(session.interpreter().eventTraps().penRow, 5);
    EXPECT_EQ(session.breakAndCollect(), "RUN\nSTOP\nPEN\nBREAK, OK in 30 \n");
    // With STOP OFF the STOP key breaks the program.
    session.type("20 STOP OFF");
    session.start("RUN");
    session.step(10);
    session.interpreter().onKeyDown(screen::vk::kPause);
    session.step(10);
    EXPECT_FALSE(session.interpreter().isRunning());
}

TEST(EventTraps, TheTimeAlarmStartsTheTimerAndFiresOnce)
{
    test::Session session;
    // The recording host's clock stands at 00:00:00.
    session.type({"10 ON TIME$=\"00:00:05\" GOSUB 100:TIME$ ON", "30 GOTO 30", "100 PRINT \"ALARM\":RETURN"});
    session.start("RUN");
    session.step(10);
    ASSERT_FALSE(session.host().timers.empty());
    EXPECT_EQ(session.host().timers.front().id, 1);
    EXPECT_EQ(session.host().timers.front().periodMs, 5000);
    session.interpreter().onTimer(TimerId::TimeAlarm);
    session.step(10);
    EXPECT_EQ(session.host().timers.back().periodMs, 0); // stopped after sounding
    EXPECT_EQ(session.breakAndCollect(), "RUN\nALARM\nBREAK, OK in 30 \n");
}

struct TrapFailure {
    const char* command;
    const char* message;
};

class TrapFailures : public ::testing::TestWithParam<TrapFailure> {};

TEST_P(TrapFailures, ShowTheirMessage)
{
    test::Session session;
    session.type({"100 RETURN", "110 RETURN"});
    EXPECT_EQ(session.messageOf(GetParam().command), GetParam().message) << GetParam().command;
}

INSTANTIATE_TEST_SUITE_P(Statements, TrapFailures,
    ::testing::Values(TrapFailure {"STOP ON", "Illegal function call in "}, TrapFailure {"TIME$ ON", "Illegal function call in "},
        TrapFailure {"PEN ON", "Illegal function call in "}, TrapFailure {"KEY(11) ON", "Syntax error in "},
        TrapFailure {"KEY(3) ON", ""}, TrapFailure {"KEY ON", ""}, TrapFailure {"ON KEY GOSUB 100,,110", ""},
        TrapFailure {"ON KEY GOSUB 100,*NONE", "Undefined label in "},
        TrapFailure {"ON KEY GOSUB 120", "Undefined line number in "},
        TrapFailure {"ON TIME$ \"10:00:00\" GOSUB 100", "Syntax error in "},
        TrapFailure {"ON TIME$=\"24:00:00\" GOSUB 100", "Illegal function call in "},
        TrapFailure {"ON TIME$=\"10:60:00\" GOSUB 100", "Illegal function call in "},
        TrapFailure {"COM(1) ON", "Illegal function call in "}, TrapFailure {"COM ON", "Syntax error in "},
        TrapFailure {"PENX=3", ""}, TrapFailure {"PEN 5", "Syntax error in "}));

TEST(EventTraps, RunForgetsTheKeyTraps)
{
    test::Session session;
    session.type({"10 ON KEY GOSUB 100:KEY(1) ON", "20 END", "100 RETURN"});
    session.type("RUN");
    EXPECT_TRUE(session.interpreter().eventTraps().keyTrapsActive);
    session.type("NEW");
    EXPECT_FALSE(session.interpreter().eventTraps().keyTrapsActive);
    EXPECT_EQ(session.interpreter().eventTraps().sources[1].target, 0);
}

} // namespace
} // namespace tessaly::core
