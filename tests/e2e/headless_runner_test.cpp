// The headless runner as a process: Ctrl+C while it waits for a line, timers while it waits for a
// key, and files it cannot read.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/wait.h>
#include <string>

#include "support/binary_process.h"

namespace tessaly::test {
namespace {

struct InterruptCase {
    const char* name;
    const char* typed;    // lines typed before Ctrl+C
    const char* waitFor;  // the output that shows the runner waits for the next line
    const char* shownAfter; // the output Ctrl+C leads to ("" when nothing is shown)
    const char* expected; // the whole output after PRINT 2 is typed and the input ends
};

// Ctrl+C while the runner waits for a line acts as the window's break keys and the runner goes on
// with the next line of its input.
class InterruptWhileWaiting : public ::testing::TestWithParam<InterruptCase> {};

TEST_P(InterruptWhileWaiting, BreaksAndReadsTheNextLine)
{
    const auto& c = GetParam();
    BinaryProcess process({"--headless"});
    process.write(c.typed);
    ASSERT_TRUE(process.waitForOutput(c.waitFor)) << process.output();
    size_t before = process.output().size();
    process.sendSignal(SIGINT);
    if (*c.shownAfter != '\0') {
        ASSERT_TRUE(process.waitForOutput(c.shownAfter, before)) << process.output();
    }
    process.write("PRINT 2\n");
    process.closeInput();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.output(), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Runner, InterruptWhileWaiting,
    ::testing::Values(
        InterruptCase {"Input", "10 INPUT A\n20 PRINT A*2\nRUN\n", "RUN\n? ", "BREAK",
            "10 INPUT A\n20 PRINT A*2\nRUN\n? BREAK, OK in 10 \nPRINT 2\n 2 \nOK\n"},
        InterruptCase {"DirectPrompt", "PRINT 1\n", " 1 \nOK\n", "", "PRINT 1\n 1 \nOK\nPRINT 2\n 2 \nOK\n"},
        InterruptCase {"Auto", "AUTO 100\n", "AUTO 100\n100 ", "BREAK", "AUTO 100\n100 \nBREAK, OK \nPRINT 2\n 2 \nOK\n"}),
    [](const auto& info) { return std::string(info.param.name); });

// An ON TIME$ alarm comes while the program waits for a key that standard input does not bring:
// the wait ends when the alarm is due.
TEST(RunnerTimers, AnAlarmComesWhileTheProgramWaitsForAKey)
{
    std::string path = ::testing::TempDir() + "tessaly_alarm_key.bas";
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    std::fputs("10 T$=TIME$\n"
               "20 S=(VAL(LEFT$(T$,2))*3600+VAL(MID$(T$,4,2))*60+VAL(RIGHT$(T$,2))+2) MOD 86400\n"
               "30 A$=RIGHT$(STR$(100+S\\3600),2)+\":\"+RIGHT$(STR$(100+(S\\60) MOD 60),2)+\":\"+RIGHT$(STR$(100+S MOD 60),2)\n"
               "40 ON TIME$=A$ GOSUB 100:TIME$ ON\n"
               "50 K$=INKEY$:IF K$=\"\" AND F=0 THEN 50\n"
               "60 PRINT \"KEY \";K$:END\n"
               "100 PRINT \"ALARM\":F=1:RETURN\n",
        file);
    std::fclose(file);
    BinaryProcess process({"--headless", path});
    // Standard input stays open and silent until the run has ended.
    EXPECT_TRUE(process.waitForOutput("OK\n")) << process.output();
    process.closeInput();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.output(), "ALARM\nKEY \nOK\n");
    std::remove(path.c_str());
}

// A file that cannot be read is reported on standard error with exit status 2, whatever the cause.
TEST(RunnerFiles, AFileThatCannotBeReadEndsWithStatusTwo)
{
    std::string folder = ::testing::TempDir() + "tessaly_folder_not_a_program";
    std::filesystem::create_directories(folder);
    for (const std::string& path : {folder, std::string("/proc/self/mem"), std::string("/dev/zero"),
             std::string("/nonexistent/program.bas")}) {
        auto run = runBinary({"--headless", path}, "");
        EXPECT_FALSE(run.timedOut) << path;
        EXPECT_EQ(run.status, 2) << path;
        EXPECT_EQ(run.errors, "tessaly: cannot read " + path + "\n");
        EXPECT_EQ(run.output, "") << path;
    }
    std::filesystem::remove(folder);
}

// Without --headless the command hands over to tessaly-window beside it; a command that finds
// none says so, points to --headless, and ends with status 2.
TEST(WindowLauncher, WithoutTheWindowProgramItSaysSoAndEndsWithStatusTwo)
{
    namespace fs = std::filesystem;
    char pattern[] = "/tmp/tessaly-launcher-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::path folder = pattern;
    fs::copy_file(TESSALY_BINARY, folder / "tessaly");
    // A display is named, so that the command goes as far as looking for the window program.
    std::string command = "cd " + folder.string() + " && DISPLAY=:0 ./tessaly x.bas 2>errors.txt";
    int status = std::system(command.c_str());
    std::ifstream file(folder / "errors.txt");
    std::string errors((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    fs::remove_all(folder);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 2);
    EXPECT_EQ(errors, "tessaly: cannot start the window (tessaly-window: No such file or directory); tessaly "
                      "--headless runs programs without one\n");
}

} // namespace
} // namespace tessaly::test
