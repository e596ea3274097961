// LOAD, SAVE, MERGE, KILL and NAME typed as a user types them, in a folder of the test's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "io/basic_path.h"
#include "support/temp_folder.h"
#include "support/test_host.h"

namespace tessaly::io {
namespace {

namespace fs = std::filesystem;

class InFolder : public test::InFolder {
protected:
    // The lines of the program as LIST shows them.
    static std::string listing(test::Session& session)
    {
        std::string out = session.type("LIST");
        return out.substr(5);
    }
};

TEST_F(InFolder, SaveWritesRecordsOrTextAndLoadReadsThemBack)
{
    test::Session session;
    session.type("100 PRINT 1");
    EXPECT_EQ(session.messageOf("SAVE \"prog\""), "");
    EXPECT_EQ(fileBytes("PROG.BAS"), std::string("\xFE\x0C\x00\x64\x00 PRINT 1", 13));
    EXPECT_EQ(session.messageOf("SAVE \"prog.txt\",A"), "");
    EXPECT_EQ(fileBytes("PROG.TXT"), "100 PRINT 1\r\n");
    session.type("NEW");
    // Names are blind to case, here as on the system they come from.
    EXPECT_EQ(session.messageOf("LOAD \"Prog\""), "");
    EXPECT_EQ(listing(session), "100 PRINT 1\nOK\n");
    EXPECT_EQ(session.host().loadedPath, (m_folder / "PROG.BAS").string());
    writeFile("mixed.bas", "10 REM lower\r\n");
    EXPECT_EQ(session.messageOf("LOAD \"MIXED\""), "");
    EXPECT_EQ(listing(session), "10 REM lower\nOK\n");
    // Saving again keeps the format that was loaded only when SAVE chooses none: SAVE always does.
    EXPECT_EQ(session.messageOf("SAVE \"MIXED\",A"), "");
    EXPECT_EQ(fileBytes("mixed.bas"), "10 REM lower\r\n");
}

struct FailureCase {
    const char* command;
    const char* message;
};

class FileStatementFailures : public InFolder, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(FileStatementFailures, ShowTheirMessage)
{
    test::Session session;
    session.type("10 END");
    writeFile("THERE.BAS", "10 END\r\n");
    EXPECT_EQ(session.messageOf(GetParam().command), GetParam().message) << GetParam().command;
}

INSTANTIATE_TEST_SUITE_P(Statements, FileStatementFailures,
    ::testing::Values(FailureCase {"LOAD \"NONE\"", "File not open in "}, FailureCase {"LOAD \"\"", "Syntax error in "},
        FailureCase {"LOAD 5", "Type mismatch in "}, FailureCase {"SAVE \"X\",Q", "Syntax error in "},
        FailureCase {"SAVE \"  \"", "Syntax error in "}, FailureCase {"LOAD \"COM1:\"", "Syntax error in "},
        FailureCase {"MERGE", "Missing operand in "}, FailureCase {"MERGE \"NONE.BAS\"", "File not found in "},
        FailureCase {"KILL \"NONE.BAS\"", "File not found in "},
        FailureCase {"NAME \"NONE.BAS\" AS \"B.BAS\"", "File not found in "},
        FailureCase {"NAME \"THERE.BAS\" AS \"THERE.BAS\"", "File already exist in "}));

TEST_F(InFolder, AFailureInAProgramCarriesItsLineNumber)
{
    test::Session session;
    session.type("10 LOAD \"NONE\"");
    EXPECT_EQ(session.type("RUN"), "RUN\nFile not open in 10\n");
}

TEST_F(InFolder, LoadWithRAndRunFileRunTheProgram)
{
    writeFile("HELLO.BAS", "10 PRINT \"HELLO\"\r\n");
    test::Session session;
    EXPECT_EQ(session.type("LOAD \"HELLO\",R"), "LOAD \"HELLO\",R\nHELLO\nOK\n");
    session.type("NEW");
    EXPECT_EQ(session.type("RUN \"HELLO\""), "RUN \"HELLO\"\nHELLO\nOK\n");
    // A load leaves nothing to continue.
    session.type("20 STOP");
    session.type("30 END");
    session.type("RUN");
    session.type("LOAD \"HELLO\"");
    EXPECT_EQ(session.messageOf("CONT"), "OK\nCan't continue ");
}

TEST_F(InFolder, MergeReplacesAndInsertsLinesAndEndsTheRun)
{
    writeFile("PART.BAS", "  20 PRINT \"NEW 20\"\r\n15 ?1\r\nnot a line\r\n\r\n40 END");
    test::Session session;
    session.type({"10 PRINT 10", "20 PRINT 20", "30 PRINT 30"});
    EXPECT_EQ(session.messageOf("MERGE \"PART.BAS\" ' the rest"), "");
    EXPECT_EQ(listing(session), "10 PRINT 10\n15 PRINT 1\n20 PRINT \"NEW 20\"\n30 PRINT 30\n40 END\nOK\n");
    EXPECT_TRUE(session.host().modified);
    EXPECT_EQ(session.type("MERGE \"PART.BAS\":PRINT \"NOT REACHED\""), "MERGE \"PART.BAS\":PRINT \"NOT REACHED\"\nOK\n");
}

TEST_F(InFolder, MergeErrorsNameTheMergedLine)
{
    writeFile("LONG.BAS", "10 PRINT 1\r\n500 REM " + std::string(300, 'X') + "\r\n600 END\r\n");
    writeFile("HIGH.BAS", "20 PRINT 2\r\n70000 PRINT 1\r\n30 END\r\n");
    test::Session session;
    EXPECT_EQ(session.messageOf("MERGE \"LONG.BAS\""), "Line buffer overflow in 500");
    session.type("NEW");
    EXPECT_EQ(session.messageOf("MERGE \"HIGH.BAS\""), "Out of memory in 0");
    session.type({"NEW", "10 MERGE \"LONG.BAS\""});
    EXPECT_EQ(session.type("RUN"), "RUN\nLine buffer overflow in 500\n");
}

TEST_F(InFolder, MergeStopsWhenTheProgramIsFullAndEveryCommandStillWorks)
{
    std::string text;
    for (int n = 1; n <= 65536; ++n)
        text += std::to_string(n) + " A=1\r\n";
    writeFile("BIG.BAS", text);
    test::Session session;
    EXPECT_EQ(session.messageOf("MERGE \"BIG.BAS\""), "Out of memory in 0");
    EXPECT_EQ(session.interpreter().program().count(), core::kMaxProgramLines);
    EXPECT_EQ(session.type("PRINT 5"), "PRINT 5\n 5 \nOK\n");
    // A full store saves whole, with the warning that LOAD will not read it all back.
    EXPECT_EQ(session.messageOf("SAVE \"BIG2\",A"), "Program longer than 65535 bytes: LOAD reads only the first 65535\nOK");
    EXPECT_EQ(fileBytes("BIG2.BAS"), text.substr(0, text.find("65527 ")));
    EXPECT_EQ(session.type("NEW"), "NEW\nOK\n");
}

TEST_F(InFolder, ChainKeepsTheCommonVariablesAndStartsWhereAsked)
{
    writeFile("NEXT.BAS", "10 print \"NEXT\";a;b$;c(2);d\r\n20 PRINT \"TWENTY\"\r\n30 END\r\n");
    test::Session session;
    session.type({"10 COMMON A,B$,C()", "20 A=5:B$=\"KEPT\":C(2)=7:D=9", "30 CHAIN \"NEXT.BAS\""});
    EXPECT_EQ(session.type("RUN"), "RUN\nNEXT 5 KEPT 7  0 \nTWENTY\nOK\n");
    EXPECT_EQ(listing(session), "10 PRINT \"NEXT\";A;B$;C(2);D\n20 PRINT \"TWENTY\"\n30 END\nOK\n");
    EXPECT_EQ(session.host().loadedPath, (m_folder / "NEXT.BAS").string());
    // ALL keeps every variable; a start between lines begins at the next line.
    session.type({"NEW", "10 D=4", "20 CHAIN \"NEXT.BAS\",15,ALL"});
    EXPECT_EQ(session.type("RUN"), "RUN\nTWENTY\nOK\n");
    session.type({"NEW", "10 D=4", "20 CHAIN \"NEXT.BAS\",,ALL"});
    EXPECT_EQ(session.type("RUN"), "RUN\nNEXT 0  0  4 \nTWENTY\nOK\n");
}

TEST_F(InFolder, ChainMergeKeepsTheProgramAndDeletesTheRange)
{
    writeFile("PART.BAS", "40 PRINT \"FROM PART\"\r\n");
    test::Session session;
    session.type({"10 CHAIN MERGE \"PART.BAS\",40,ALL,DELETE 20-30", "20 PRINT \"GONE\"", "30 REM"});
    EXPECT_EQ(session.type("RUN"), "RUN\nFROM PART\nOK\n");
    EXPECT_EQ(listing(session), "10 CHAIN MERGE \"PART.BAS\",40,ALL,DELETE 20-30\n40 PRINT \"FROM PART\"\nOK\n");
}

TEST_F(InFolder, ChainAndCommonFailures)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("CHAIN"), "Missing operand in ");
    EXPECT_EQ(session.messageOf("CHAIN \"\""), "Missing operand in ");
    EXPECT_EQ(session.messageOf("CHAIN \"NONE.BAS\""), "File not found in ");
    session.type({"10 FOR I=1 TO 11:COMMON A:NEXT"});
    EXPECT_EQ(session.type("RUN"), "RUN\nOut of memory in 10\n");
}

TEST_F(InFolder, TypedDoubleByteCharactersAreSavedAsTyped)
{
    test::Session session;
    // 0x83 0x65 is a katakana whose second byte is a lower-case letter in ASCII.
    session.type({"10 a=1:\x83\x65", "20 rem \x83\x61:print \"\x83\x61\""});
    EXPECT_EQ(session.messageOf("SAVE \"KANA\",A"), "");
    EXPECT_EQ(fileBytes("KANA.BAS"), "10 A=1:\x83\x65\r\n20 REM \x83\x61:PRINT \"\x83\x61\"\r\n");
}

// Whatever makes a SAVE fail, the file on disk stays as it was and nothing is left beside it.
TEST_F(InFolder, AFailedSaveLeavesTheFileAsItWas)
{
    writeFile("OLD.BAS", "10 END\r\n");
    test::Session session;
    // Line 65536 can be stored but has no line record.
    session.type({"10 PRINT 1", "65536 END"});
    EXPECT_EQ(session.messageOf("SAVE \"OLD\""), "Syntax error in ");
    EXPECT_EQ(fileBytes("OLD.BAS"), "10 END\r\n");
    EXPECT_EQ(session.messageOf("SAVE \"OLD\",A"), "");
    EXPECT_EQ(fileBytes("OLD.BAS"), "10 PRINT 1\r\n65536 END\r\n");
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_folder))
        names.push_back(entry.path().filename().string());
    EXPECT_EQ(names, std::vector<std::string> {"OLD.BAS"});
}

// A program longer than LOAD reads is saved whole with a warning; LOAD keeps its first 65,535
// bytes and says "Out of memory in ", and the cut program counts as changed.
TEST_F(InFolder, ProgramsTooLongToLoadWholeAreNeverCutSilently)
{
    test::Session session;
    const std::string body(240, 'x');
    for (int line = 1; line <= 300; ++line)
        session.type(std::to_string(line) + " REM " + body);
    EXPECT_EQ(session.type("SAVE \"BIG\",A"), "SAVE \"BIG\",A\nProgram longer than 65535 bytes: LOAD reads only the first 65535\nOK\n");
    // Lines 1-9 take 248 bytes, 10-99 249, 100-300 250.
    EXPECT_EQ(fileBytes("BIG.BAS").size(), 9u * 248u + 90u * 249u + 201u * 250u);
    session.type("NEW");
    session.host().modified = false;
    EXPECT_EQ(session.messageOf("LOAD \"BIG\""), "Out of memory in ");
    EXPECT_TRUE(session.host().modified);
    // 65,535 bytes hold lines 1 to 262 whole and the first 143 bytes of line 263.
    auto& store = session.interpreter().program();
    ASSERT_EQ(store.count(), 263);
    EXPECT_EQ(store.textAt(263), "263 REM " + std::string(135, 'x') + "\r\n");
    EXPECT_EQ(session.messageOf("RUN \"BIG\""), "Out of memory in ");
    // A program that fits is saved without a word.
    session.type("NEW");
    session.type("10 END");
    EXPECT_EQ(session.type("SAVE \"SMALL\""), "SAVE \"SMALL\"\nOK\n");
    EXPECT_EQ(session.messageOf("LOAD \"SMALL\""), "");
}

// Runs body in a child process and returns how it ended (its wait status).
template <typename Body>
int inChildProcess(Body body)
{
    pid_t child = fork();
    if (child == 0)
        _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

std::vector<std::string> namesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(InFolder, TerminationDuringASaveLeavesNoTemporaryFile)
{
    writeFile("OLD.BAS", "10 END\r\n");
    int status = inChildProcess([] {
        // The write stops at the file size limit, and right then the process is asked to end.
        std::signal(SIGXFSZ, [](int) { std::raise(SIGTERM); });
        rlimit small {};
        getrlimit(RLIMIT_FSIZE, &small);
        small.rlim_cur = 16;
        setrlimit(RLIMIT_FSIZE, &small);
        test::Session session;
        session.type("10 PRINT \"a line long enough to pass the limit\"");
        session.type("SAVE \"OLD\",A");
        return 0;
    });
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    EXPECT_EQ(namesIn(m_folder), std::vector<std::string> {"OLD.BAS"});
    EXPECT_EQ(fileBytes("OLD.BAS"), "10 END\r\n");
}

TEST_F(InFolder, SavingRemovesTemporaryFilesOfSavesThatWereKilled)
{
    pid_t gone = fork();
    if (gone == 0)
        _exit(0);
    waitpid(gone, nullptr, 0);
    std::string stale = ".tessaly-save-" + std::to_string(gone) + "-Ab12Cd";
    std::string busy = ".tessaly-save-" + std::to_string(getppid()) + "-Ab12Cd";
    writeFile(stale, "10 HALF");
    writeFile(busy, "10 BUSY");
    writeFile(".tessaly-save-notes", "kept");
    test::Session session;
    session.type("10 END");
    EXPECT_EQ(session.messageOf("SAVE \"NEW\",A"), "");
    std::vector<std::string> expected = {busy, ".tessaly-save-notes", "NEW.BAS"};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(namesIn(m_folder), expected);
}

TEST_F(InFolder, SaveThroughALinkWritesTheFileItNames)
{
    fs::create_directory(m_folder / "REAL");
    writeFile("REAL/TARGET.BAS", "10 END\r\n");
    fs::create_symlink("REAL/TARGET.BAS", m_folder / "LINK.BAS");
    fs::create_symlink("REAL/LATER.BAS", m_folder / "DANGLING.BAS");
    test::Session session;
    session.type("10 PRINT 2");
    EXPECT_EQ(session.messageOf("SAVE \"LINK\",A"), "");
    EXPECT_EQ(session.messageOf("SAVE \"DANGLING\",A"), "");
    EXPECT_TRUE(fs::is_symlink(m_folder / "LINK.BAS"));
    EXPECT_TRUE(fs::is_symlink(m_folder / "DANGLING.BAS"));
    EXPECT_EQ(fileBytes("REAL/TARGET.BAS"), "10 PRINT 2\r\n");
    EXPECT_EQ(fileBytes("REAL/LATER.BAS"), "10 PRINT 2\r\n");
    EXPECT_EQ(namesIn(m_folder / "REAL"), (std::vector<std::string> {"LATER.BAS", "TARGET.BAS"}));
}

// A writable file in a folder that takes no new files is rewritten in place; a write that fails
// there puts the previous bytes back. The save runs in a child process without root's rights
// (as root every folder would be writable).
TEST_F(InFolder, AWritableFileInAFolderWithoutWriteRightIsSavedInPlace)
{
    fs::create_directory(m_folder / "LOCKED");
    writeFile("LOCKED/OPEN.BAS", "10 END\r\n");
    fs::permissions(m_folder / "LOCKED/OPEN.BAS", fs::perms(0666));
    fs::permissions(m_folder, fs::perms(0755));
    fs::permissions(m_folder / "LOCKED", fs::perms(0555));
    constexpr uid_t kNobody = 65534;
    constexpr int kCannotDropRoot = 10;
    int status = inChildProcess([this] {
        if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0))
            return kCannotDropRoot;
        test::Session session;
        session.type("10 PRINT \"a line long enough to pass the limit\"");
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit old {};
        getrlimit(RLIMIT_FSIZE, &old);
        rlimit small = old;
        small.rlim_cur = 16;
        setrlimit(RLIMIT_FSIZE, &small);
        std::string full = session.messageOf("SAVE \"LOCKED\\OPEN\",A");
        setrlimit(RLIMIT_FSIZE, &old);
        if (full != "Disk I/O error in " || fileBytes("LOCKED/OPEN.BAS") != "10 END\r\n")
            return 1;
        session.type({"NEW", "10 PRINT 3"});
        if (session.messageOf("SAVE \"LOCKED\\OPEN\",A") != "")
            return 2;
        if (session.messageOf("SAVE \"LOCKED\\NEW\",A") != "File already exist in ")
            return 3;
        return 0;
    });
    fs::permissions(m_folder / "LOCKED", fs::perms(0755));
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == kCannotDropRoot)
        GTEST_SKIP() << "root's rights cannot be given up here";
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(fileBytes("LOCKED/OPEN.BAS"), "10 PRINT 3\r\n");
    EXPECT_EQ(namesIn(m_folder / "LOCKED"), std::vector<std::string> {"OPEN.BAS"});
}

TEST_F(InFolder, KillDeletesAndNameRenamesInPlace)
{
    writeFile("OLD.BAS", "10 END\r\n");
    fs::create_directory(m_folder / "SUB");
    writeFile("SUB/A.BAS", "10 END\r\n");
    test::Session session;
    EXPECT_EQ(session.messageOf("NAME \"OLD.BAS\" AS \"NEW.BAS\""), "");
    EXPECT_EQ(fileBytes("NEW.BAS"), "10 END\r\n");
    EXPECT_EQ(fileBytes("OLD.BAS"), "<missing>");
    // The new name's folder is ignored: the file stays in its own folder.
    EXPECT_EQ(session.messageOf("NAME \"SUB\\A.BAS\" AS \"OTHER\\B.BAS\""), "");
    EXPECT_EQ(fileBytes("SUB/B.BAS"), "10 END\r\n");
    EXPECT_EQ(session.messageOf("KILL \"sub\\b .bas\""), "");
    EXPECT_EQ(fileBytes("SUB/B.BAS"), "<missing>");
}

TEST_F(InFolder, HostPathsFollowTheSpellingOnDisk)
{
    fs::create_directories(m_folder / "Games" / "old");
    writeFile("Games/old/Star.bas", "");
    EXPECT_EQ(HostPath("GAMES\\OLD\\STAR.BAS"), "Games/old/Star.bas");
    EXPECT_EQ(HostPath("games/NEW/X.BAS"), "Games/NEW/X.BAS");
    EXPECT_EQ(HostPath((m_folder / "GAMES").string()), (m_folder / "Games").string());
    EXPECT_EQ(ProgramFileName("\" my prog \""), "MY PROG");
    EXPECT_EQ(WithProgramExtension("DIR.OLD\\PROG"), "DIR.OLD\\PROG");
    EXPECT_EQ(WithProgramExtension("PROG"), "PROG.BAS");
}

} // namespace
} // namespace tessaly::io
