// OPEN, CLOSE and the sequential file statements and functions, in a folder of the test's own.
#include <gtest/gtest.h>

#include <string>

#include "support/temp_folder.h"
#include "support/test_host.h"

namespace tessaly::io {
namespace {

using Files = test::InFolder;

TEST_F(Files, PrintAndWriteRecordsEndWithACarriageReturn)
{
    test::Session session;
    session.type({"10 OPEN \"data.txt\" FOR OUTPUT AS #1", "20 PRINT #1, \"AB\"; 12", "30 PRINT #1, \"C\";",
        "40 WRITE #1, \"A,B\", 3", "50 PRINT #1, USING \"##.#\";3.14", "60 CLOSE #1"});
    EXPECT_EQ(session.type("RUN"), "RUN\nOK\n");
    // The name is upper-cased; PRINT's number keeps its blanks; a trailing ";" writes no CR.
    EXPECT_EQ(fileBytes("DATA.TXT"), "AB 12 \rC\"A,B\",3\r 3.1\r");
}

TEST_F(Files, InputAndLineInputReadItemsAndLines)
{
    writeFile("IN.TXT", "\"X,Y\",Z\r  12 34\rfree text, \"quoted\"\r\n");
    test::Session session;
    session.type({"10 OPEN \"IN.TXT\" FOR INPUT AS #2", "20 INPUT #2, A$, B$:PRINT A$;\"|\";B$",
        "30 INPUT #2, N:INPUT #2, M:PRINT N;M", "40 LINE INPUT #2, L$:PRINT L$", "50 PRINT EOF(2)",
        "60 LINE INPUT #2, E$:PRINT \"[\";E$;\"]\"", "70 INPUT #2, Q"});
    EXPECT_EQ(session.type("RUN"), "RUN\nX,Y|Z\n 12  34 \nfree text, quoted\n-1 \n[]\nDisk I/O error in 70\n");
}

TEST_F(Files, LengthPositionAndEnd)
{
    writeFile("E.TXT", "L1\rL2\r");
    writeFile("EMPTY.TXT", "");
    test::Session session;
    session.type({"10 OPEN \"E.TXT\" FOR INPUT AS #1:OPEN \"EMPTY.TXT\" FOR INPUT AS #2",
        "20 PRINT LOF(1);LOC(1);LOF(2);EOF(2)", "30 LINE INPUT #1,A$:PRINT LOC(1);EOF(1)",
        "40 LINE INPUT #1,A$:PRINT LOC(1);EOF(1)"});
    EXPECT_EQ(session.type("RUN"), "RUN\n 6  0  0 -1 \n 3  0 \n 6 -1 \nOK\n");
}

TEST_F(Files, AppendAddsAndRandomCreates)
{
    writeFile("LOG.TXT", "A\r");
    test::Session session;
    EXPECT_EQ(session.messageOf("OPEN \"LOG.TXT\" FOR APPEND AS #1:PRINT #1,\"B\":CLOSE"), "");
    EXPECT_EQ(fileBytes("LOG.TXT"), "A\rB\r");
    EXPECT_EQ(session.messageOf("OPEN \"r.dat\" AS #3:CLOSE #3"), "");
    EXPECT_EQ(fileBytes("R.DAT"), "");
}

struct OpenFailure {
    const char* command;
    const char* message;
};

class OpenFailures : public test::InFolder, public ::testing::WithParamInterface<OpenFailure> {};

TEST_P(OpenFailures, ShowTheirMessage)
{
    test::Session session;
    EXPECT_EQ(session.messageOf(GetParam().command), GetParam().message) << GetParam().command;
}

INSTANTIATE_TEST_SUITE_P(Statements, OpenFailures,
    ::testing::Values(OpenFailure {"OPEN \"X\" FOR APPEND AS #2", "File not found in "},
        OpenFailure {"OPEN \"X\" FOR INPUT AS #1", "File not found in "},
        OpenFailure {"OPEN \"F\" FOR INPUT AS #16", "Bad file number in "},
        OpenFailure {"OPEN \"F\" FOR INPUT AS #0", "Bad file number in "},
        OpenFailure {"OPEN \"F\" FOR AS #1", "Syntax error in "}, OpenFailure {"OPEN \"F\" FOR OUTPUT AS 1", "Syntax error in "},
        OpenFailure {"OPEN \"SCRN:\" FOR INPUT AS #1", "Syntax error in "},
        OpenFailure {"CLOSE #4", "File not open in "},
        OpenFailure {"OPEN \"A\" FOR OUTPUT AS #1:OPEN \"B\" FOR OUTPUT AS #2:CLOSE #1,#2", "File not open in "},
        OpenFailure {"PRINT #5, 1", "File not open in "},
        OpenFailure {"OPEN \"A\" FOR OUTPUT AS #1:INPUT #1, X", "File not open in "},
        OpenFailure {"OPEN \"A\" FOR OUTPUT AS #1:PRINT #1", "Syntax error in "},
        OpenFailure {"PRINT EOF(9)", "File not open in "}));

TEST_F(Files, OnlyTwoCharactersAfterTheHashNameTheNumber)
{
    test::Session session;
    // "# 12" reads " 1": file number 1.
    EXPECT_EQ(session.messageOf("OPEN \"N.TXT\" FOR OUTPUT AS # 12:PRINT #1,\"ONE\":CLOSE #1"), "");
    EXPECT_EQ(fileBytes("N.TXT"), "ONE\r");
}

TEST_F(Files, EndAndRunLeaveFilesOpenALoadClosesThem)
{
    writeFile("P.BAS", "10 END\r\n");
    test::Session session;
    session.type({"10 OPEN \"OUT.TXT\" FOR OUTPUT AS #1", "20 END"});
    session.type("RUN");
    EXPECT_EQ(session.messageOf("PRINT #1, \"STILL\""), "");
    EXPECT_EQ(session.messageOf("LOAD \"P\""), "");
    EXPECT_EQ(session.messageOf("PRINT #1, \"GONE\""), "File not open in ");
    EXPECT_EQ(fileBytes("OUT.TXT"), "STILL\r");
}

TEST_F(Files, TheScreenAsAFile)
{
    test::Session session;
    EXPECT_EQ(session.type("OPEN \"SCRN:\" FOR OUTPUT AS #3:PRINT #3, \"HELLO\";1:WRITE #3, \"A\",2"),
        "OPEN \"SCRN:\" FOR OUTPUT AS #3:PRINT #3, \"HELLO\";1:WRITE #3, \"A\",2\nHELLO 1 \n\"A\",2\nOK\n");
}

} // namespace
} // namespace tessaly::io
