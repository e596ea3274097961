// Keyword lists and first-match statement recognition.
#include <gtest/gtest.h>

#include "core/keyword_table.h"

namespace tessaly::core {
namespace {

TEST(KeywordTable, CountsAndSlots)
{
    const auto& table = keywordTable();
    EXPECT_EQ(table.statementCount(), 110);
    EXPECT_EQ(table.numericFunctionCount(), 77);
    EXPECT_EQ(table.stringFunctionCount(), 18);
    EXPECT_EQ(table.statement(0), " ");
    EXPECT_EQ(table.statement(111), "");
    EXPECT_EQ(table.statement(5), "LINE ");
    EXPECT_EQ(table.statement(84), "LINE(");
    EXPECT_EQ(table.statement(110), "?");
    EXPECT_EQ(table.numericFunction(1), "SIN");
    EXPECT_EQ(table.numericFunction(77), "LOC");
    EXPECT_EQ(table.numericFunction(78), "");
    EXPECT_EQ(table.stringFunction(1), "CHR$");
    EXPECT_EQ(table.stringFunction(18), "TIME$");
}

struct RecognitionCase {
    const char* text;
    int code;
    int position;
};

class Recognition : public ::testing::TestWithParam<RecognitionCase> {};

TEST_P(Recognition, FirstKeywordInCodeOrderWins)
{
    const auto& c = GetParam();
    auto found = keywordTable().recognizeStatement(c.text, 0);
    EXPECT_EQ(found.code, c.code) << c.text;
    EXPECT_EQ(found.position, c.position) << c.text;
}

INSTANTIATE_TEST_SUITE_P(KeywordTable, Recognition,
    ::testing::Values(RecognitionCase {"PRINT X", 1, 5}, RecognitionCase {"PRINT #1,X", 1, 5},
        RecognitionCase {"  END", 13, 5}, RecognitionCase {"ENDX=2", 13, 3}, RecognitionCase {"ONE=1", 46, 2},
        RecognitionCase {"DELETE 10-20", 34, 6}, RecognitionCase {"DEL 10-20", 35, 3},
        RecognitionCase {"RENUM", 39, 5}, RecognitionCase {"REN", 40, 3}, RecognitionCase {"KEY LIST", 85, 3},
        RecognitionCase {"COMMON A", 94, 6}, RecognitionCase {"COM(1) ON", 109, 3},
        RecognitionCase {"GOTO100", 0, 0}, RecognitionCase {"GOTO 100", 11, 5}, RecognitionCase {"GO TO 100", 12, 6},
        RecognitionCase {"GOSUB100", 0, 0}, RecognitionCase {"LINE(0,0)-(9,9)", 84, 5},
        RecognitionCase {"LINE (0,0)-(9,9)", 5, 5}, RecognitionCase {"LINEINPUT A$", 29, 10},
        RecognitionCase {"A=1", 0, 0}, RecognitionCase {"?1", 110, 1}, RecognitionCase {"'note", 56, 1},
        RecognitionCase {"DEF FNA(X)=X", 83, 6}, RecognitionCase {"DEFINT A", 50, 6},
        RecognitionCase {"KEY ON/OFF/STOP", 85, 3}, RecognitionCase {"", 0, 0}, RecognitionCase {"   ", 0, 0}));

} // namespace
} // namespace tessaly::core
