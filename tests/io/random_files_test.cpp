// Random files (FIELD, LSET, RSET, GET #, PUT #), INPUT$ of a file, and the keyboard as a file
// number, in a folder of the test's own; files are read back byte for byte.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temp_folder.h"
#include "support/test_host.h"

namespace tessaly::io {
namespace {

using namespace std::string_literals;
using RandomFiles = test::InFolder;

TEST_F(RandomFiles, RecordsLieAtTheirOffsets)
{
    test::Session session;
    session.type({"10 OPEN \"r.dat\" AS #1", "20 FIELD #1, 2 AS A$, 4 AS B$",
        "30 LSET A$=\"X\":RSET B$=\"12345\":PUT #1,3", "40 PRINT \"[\";A$;\"][\";B$;\"]\";LOC(1);LOF(1)",
        "50 LSET A$=MKI$(-2):LSET B$=\"LONGER\":PUT #1", "60 PRINT LOC(1);LOF(1):CLOSE #1"});
    EXPECT_EQ(session.type("RUN"), "RUN\n[X ][2345] 18  18 \n 24  24 \nOK\n");
    // Record 3 of 6 bytes starts at 12; the records before it were never written; PUT without a
    // number writes the record after the last one.
    EXPECT_EQ(fileBytes("R.DAT"), std::string(12, '\0') + "X 2345" + "\xfe\xffLONG");
}

TEST_F(RandomFiles, AFileOfItsOwnBeforeAnyFieldHas256ByteRecords)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("OPEN \"W.DAT\" AS #2:PUT #2,2:CLOSE"), "");
    EXPECT_EQ(fileBytes("W.DAT"), std::string(256, '\0') + std::string(256, ' '));
}

TEST_F(RandomFiles, GetReadsRecordsInTurnAndBlanksPastTheEnd)
{
    writeFile("G.DAT", "AAAAAABBBBBBCCCCCCDDDDDDEEEEEEFFFFFFGGG");
    test::Session session;
    session.type({"10 OPEN \"G.DAT\" AS #1:FIELD #1, 2 AS A$, 4 AS B$", "20 GET #1, 5:PRINT A$;B$",
        "30 GET #1:PRINT A$;B$;LOC(1)", "40 GET #1:PRINT \"[\";A$;B$;\"]\"", "50 GET #1"});
    EXPECT_EQ(session.type("RUN"), "RUN\nEEEEEE\nFFFFFF 36 \n[GGG   ]\nDisk I/O error in 50\n");
    // The record of a GET can be PUT back elsewhere unchanged.
    EXPECT_EQ(session.messageOf("GET #1,1:PUT #1,8:CLOSE"), "");
    EXPECT_EQ(fileBytes("G.DAT"), "AAAAAABBBBBBCCCCCCDDDDDDEEEEEEFFFFFFGGG"s + std::string(3, '\0') + "AAAAAA");
}

TEST_F(RandomFiles, NumbersTravelAsByteStrings)
{
    test::Session session;
    session.type({"10 OPEN \"N.DAT\" AS #1:FIELD #1, 2 AS I$, 4 AS S$, 8 AS D$",
        "20 LSET I$=MKI$(-32768):LSET S$=MKS$(1.5):LSET D$=MKD$(-2.25):PUT #1,2:CLOSE",
        "30 OPEN \"N.DAT\" AS #1:FIELD #1, 2 AS I$, 4 AS S$, 8 AS D$:GET #1,2",
        "40 PRINT CVI(I$);CVS(S$);CVD(D$)"});
    EXPECT_EQ(session.type("RUN"), "RUN\n-32768  1.5 -2.25 \nOK\n");
    EXPECT_EQ(fileBytes("N.DAT"), std::string(14, '\0') + "\0\x80"s + "\0\0\xc0\x3f"s + "\0\0\0\0\0\0\x02\xc0"s);
}

// LSET and RSET find a field by its name as FIELD wrote it, subscripts included, blanks aside.
TEST_F(RandomFiles, FieldsOfArrayElementsAndTheFirstFileThatNamesAVariable)
{
    test::Session session;
    session.type({"10 DIM N$(3):OPEN \"A.DAT\" AS #1:OPEN \"B.DAT\" AS #2",
        "20 FIELD #1, 3 AS N$(1), 3 AS N$( 2 ):FIELD #2, 3 AS N$(2)", "30 RSET N$(2)=\"AB\":PUT #1,1:PUT #2,1",
        "40 PRINT \"[\";N$(2);\"]\":CLOSE"});
    EXPECT_EQ(session.type("RUN"), "RUN\n[ AB]\nOK\n");
    EXPECT_EQ(fileBytes("A.DAT"), "    AB");
    EXPECT_EQ(fileBytes("B.DAT"), "   ");
}

TEST_F(RandomFiles, AFailedFieldLeavesWholeRecordsAndNothingBeyondThem)
{
    test::Session session;
    session.type({"10 OPEN \"F.DAT\" AS #1:ON ERROR GOTO 40", "20 FIELD #1, 200 AS A$, 57 AS B$", "30 END",
        "40 PRINT ERR;ERL:PUT #1,1:PRINT LOF(1):CLOSE:END"});
    EXPECT_EQ(session.type("RUN"), "RUN\n 50  20 \n 256 \nOK\n");
}

struct RecordError {
    const char* statement; // line 20, after line 10 opened R.DAT at random and T.TXT for INPUT
    const char* message;
};

class RecordErrors : public test::InFolder, public ::testing::WithParamInterface<RecordError> {};

TEST_P(RecordErrors, ShowTheirMessageAndLine)
{
    writeFile("T.TXT", "ABC");
    test::Session session;
    // Loaded from a file: the longest statement is longer than a typed line may be.
    writeFile("P.BAS", "10 OPEN \"R.DAT\" AS #1:OPEN \"T.TXT\" FOR INPUT AS #2:OPEN \"O.TXT\" FOR OUTPUT AS #3\r\n"s +
        "20 " + GetParam().statement + "\r\n");
    ASSERT_EQ(session.messageOf("LOAD \"P\""), "");
    EXPECT_EQ(session.type("RUN"), "RUN\n"s + GetParam().message + "20\n") << GetParam().statement;
    // Nothing reached the files but what the statement wrote before it failed.
    EXPECT_EQ(fileBytes("T.TXT"), "ABC");
}

std::string manyFields(int count)
{
    std::string text = "FIELD #1";
    for (int k = 0; k < count; ++k)
        text += ", 1 AS A$";
    return text;
}

const std::string kSixtyFiveFields = manyFields(65);

INSTANTIATE_TEST_SUITE_P(Statements, RecordErrors,
    ::testing::Values(RecordError {"FIELD #1", "Syntax error in "}, RecordError {"FIELD #4, 2 AS A$", "File not open in "},
        RecordError {"FIELD #2, 2 AS A$", "Illegal function call in "},
        RecordError {"FIELD #1, 0 AS A$", "Illegal function call in "},
        RecordError {"FIELD #1, 257 AS A$", "Illegal function call in "},
        RecordError {"FIELD #1, 200 AS A$, 57 AS B$", "FIELD overflow in "},
        RecordError {"FIELD #1, 2 AS A", "Illegal function call in "}, RecordError {"FIELD #1, 2 A$", "Syntax error in "},
        RecordError {"FIELD #1, \"2\" AS A$", "Type mismatch in "},
        RecordError {kSixtyFiveFields.c_str(), "Out of memory in "},
        RecordError {"LSET Z$=\"X\"", "Illegal function call in "},
        RecordError {"FIELD #1, 2 AS A$:LSET A$=5", "Type mismatch in "},
        RecordError {"FIELD #1, 2 AS A$:RSET A$", "Syntax error in "},
        RecordError {"GET #1, 65001", "Disk I/O error in "}, RecordError {"GET #1, -1", "Disk I/O error in "},
        RecordError {"PUT #1, 65001", "Disk I/O error in "}, RecordError {"PUT #1, 1E10", "Disk I/O error in "},
        RecordError {"GET #1, 1", "Disk I/O error in "}, RecordError {"GET #5", "File not open in "},
        RecordError {"PUT #9, 1", "File not open in "}, RecordError {"GET #2, 1", "Syntax error in "},
        RecordError {"PUT #3, 1", "Syntax error in "}, RecordError {"PUT #2", "Syntax error in "},
        RecordError {"PRINT INPUT$(1,#1)", "Syntax error in "}, RecordError {"PRINT INPUT$(1,#3)", "Syntax error in "},
        RecordError {"PRINT INPUT$(1,#7)", "File not open in "},
        RecordError {"PRINT INPUT$(2,#2);INPUT$(2,#2)", "Disk I/O error in "},
        RecordError {"PRINT INPUT$(0,#2)", "Illegal function call in "}));

TEST_F(RandomFiles, PutShowsTheRecordOnTheScreenChannel)
{
    test::Session session;
    EXPECT_EQ(session.type("OPEN \"SCRN:\" FOR OUTPUT AS #1:FIELD #1, 3 AS A$, 2 AS B$:LSET A$=\"HI\":RSET B$=\"!\":PUT #1"),
        "OPEN \"SCRN:\" FOR OUTPUT AS #1:FIELD #1, 3 AS A$, 2 AS B$:LSET A$=\"HI\":RSET B$=\"!\":PUT #1\nHI  !\nOK\n");
}

TEST_F(RandomFiles, RecordNumbersCountFromTheLastGetOrPut)
{
    writeFile("S.DAT", "112233445566778899");
    test::Session session;
    session.type({"10 OPEN \"S.DAT\" AS #1:FIELD #1, 2 AS A$", "20 GET #1, 5:GET #1:PRINT A$;:GET #1,0:PRINT A$;",
        "30 PUT #1:PRINT LOC(1):GET #1,2.9:PRINT A$:CLOSE"});
    EXPECT_EQ(session.type("RUN"), "RUN\n6677 16 \n22\nOK\n");
    EXPECT_EQ(fileBytes("S.DAT"), "112233445566777799");
}

TEST_F(RandomFiles, InputOfAFileReadsItsRawBytes)
{
    writeFile("T.TXT", "A,\"B\rCD");
    test::Session session;
    session.type({"10 OPEN \"T.TXT\" FOR INPUT AS #1", "20 A$=INPUT$(4,#1):PRINT A$;LEN(A$);ASC(RIGHT$(A$,1))",
        "30 B$=INPUT$(3,# 1):PRINT ASC(B$);MID$(B$,2);EOF(1)"});
    EXPECT_EQ(session.type("RUN"), "RUN\nA,\"B 4  66 \n 13 CD-1 \nOK\n");
}

TEST_F(RandomFiles, InputOfAFileInADirectCommandLeavesTheNextCommandAlone)
{
    writeFile("T.TXT", "HELLO");
    test::Session session;
    EXPECT_EQ(session.type({"OPEN \"T.TXT\" FOR INPUT AS #1:PRINT INPUT$(2,#1)", "PRINT 5"}),
        "OPEN \"T.TXT\" FOR INPUT AS #1:PRINT INPUT$(2,#1)\nHE\nOK\nPRINT 5\n 5 \nOK\n");
}

// Typed characters reach a program through a keyboard channel while the run loop keeps returning
// to the idle driver.
class KeyboardChannel : public ::testing::Test {
protected:
    void typeKeys(std::string_view keys)
    {
        for (char c : keys)
            session.interpreter().onChar(static_cast<unsigned char>(c));
    }
    test::Session session;
};

TEST_F(KeyboardChannel, GetWaitsForARecordOfTypedCharacters)
{
    session.type({"10 OPEN \"KYBD:\" FOR INPUT AS #1:FIELD #1, 2 AS A$, 1 AS B$", "20 GET #1:PRINT A$;\"|\";B$",
        "30 PRINT INPUT$(2,#1);EOF(1)", "40 GET #1"});
    session.start("RUN");
    session.step(20);
    EXPECT_TRUE(session.interpreter().isRunning());
    typeKeys("xy");
    session.step(20);
    EXPECT_TRUE(session.interpreter().isRunning());
    typeKeys("z");
    session.step(20);
    typeKeys("pq");
    session.step(20);
    EXPECT_EQ(session.breakAndCollect(), "RUN\nxy|z\npq 0 \nBREAK, OK in 40 \n");
}

TEST_F(KeyboardChannel, BreakWhileWaitingGivesTheKeysBackToTheEditor)
{
    session.type({"10 OPEN \"KYBD:\" FOR INPUT AS #1:FIELD #1, 4 AS A$", "20 GET #1"});
    session.start("RUN");
    session.step(10);
    EXPECT_EQ(session.breakAndCollect(), "RUN\nBREAK, OK in 20 \n");
    EXPECT_EQ(session.type("PRINT 7"), "PRINT 7\n 7 \nOK\n");
}

TEST_F(KeyboardChannel, InputFromTheKeyboardChannelAsksOnTheScreen)
{
    session.type("10 OPEN \"KYBD:\" FOR INPUT AS #1:INPUT #1, A$:PRINT A$+\"!\"");
    EXPECT_EQ(session.type({"RUN", "hello"}), "RUN\n? hello\nhello!\nOK\n");
}

TEST_F(KeyboardChannel, WhatTheKeyboardRefuses)
{
    EXPECT_EQ(session.messageOf("OPEN \"KYBD:\" FOR OUTPUT AS #1"), "Syntax error in ");
    EXPECT_EQ(session.messageOf("OPEN \"KYBD:\" AS #1"), "Syntax error in ");
    EXPECT_EQ(session.messageOf("OPEN \"KYBD:\" FOR INPUT AS #1:PRINT LOF(1)"), "Illegal function call in ");
    EXPECT_EQ(session.messageOf("PRINT LOC(1)"), "Illegal function call in ");
    EXPECT_EQ(session.messageOf("PUT #1"), "Syntax error in ");
}

} // namespace
} // namespace tessaly::io
