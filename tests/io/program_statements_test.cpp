// LOAD, SAVE, MERGE, KILL and NAME typed as a user types them, in a folder of the test's own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

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
        FailureCase {"SAVE \"  \"", "Syntax error in "}, FailureCase {"LOAD \"COM1:\"", "Illegal operetion in "},
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
    EXPECT_EQ(session.messageOf("SAVE \"BIG2\",A"), "");
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
