// The statements about values: assignment and its store rules, DEF types, SWAP, arrays,
// DEF FN, the MID$ statement and the DATE$/TIME$ statements.
#include <gtest/gtest.h>

#include <string>

#include "core/interpreter.h"
#include "expr/evaluator.h"
#include "expr/number_text.h"
#include "support/test_host.h"

namespace tessaly::expr {
namespace {

struct StoreCase {
    const char* statement;
    const char* error;   // "" when the statement succeeds
    const char* variable;
    const char* shown;
};

class StoreRules : public ::testing::TestWithParam<StoreCase> {};

TEST_P(StoreRules, ConvertAndTestTheRange)
{
    test::Session session;
    const auto& c = GetParam();
    EXPECT_EQ(session.messageOf(c.statement), c.error) << c.statement;
    if (*c.variable != '\0') {
        EXPECT_EQ(session.valueOf(c.variable), c.shown) << c.statement;
    }
}

INSTANTIATE_TEST_SUITE_P(Assignment, StoreRules,
    ::testing::Values(StoreCase {"X%=2.5", "", "X%", " 3 "}, StoreCase {"X%=-2.5", "", "X%", "-3 "},
        StoreCase {"X%=32767.4", "", "X%", " 32767 "}, StoreCase {"X%=32767.5", "Overflow in ", "", ""},
        StoreCase {"X%=&HFFFF", "", "X%", "-1 "}, StoreCase {"X%=65535", "Overflow in ", "", ""},
        StoreCase {"X%=-32768", "", "X%", "-32768 "}, StoreCase {"LET Y=5", "", "Y", " 5 "},
        StoreCase {"A=-0", "", "A", " 0 "}, StoreCase {"S!=2E38", "Overflow in ", "", ""},
        StoreCase {"D#=1E38", "", "D#", " 1.e+038 "}, StoreCase {"D#=2E38", "Overflow in ", "", ""},
        StoreCase {"A$=1", "Type mismatch in ", "", ""}, StoreCase {"A=\"X\"", "Type mismatch in ", "", ""},
        StoreCase {"A$=\"hello\"", "", "A$", "hello"}, StoreCase {"A=", "Syntax error in ", "", ""},
        StoreCase {"=5", "", "", ""}, StoreCase {"A=1:A%=7", "", "A", " 1 "},
        StoreCase {"S=1/3", "", "S", " 0.333333 "}, StoreCase {"D#=1/3", "", "D#", " 0.3333333333333333 "}));

TEST(Statements, DefTypesAndDuplicateDefinition)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("DEFINT K-M,X"), "");
    EXPECT_EQ(session.messageOf("K=2.6:L=1:M=1:X=1.4"), "");
    EXPECT_EQ(session.valueOf("K"), " 3 ");
    EXPECT_EQ(session.valueOf("X"), " 1 ");
    EXPECT_EQ(session.messageOf("DEFSNG L"), "Duplicate Definition in ");
    EXPECT_EQ(session.messageOf("DEFINT K"), "");
    EXPECT_EQ(session.messageOf("DEFSTR 1"), "Syntax error in ");
    EXPECT_EQ(session.messageOf("DEFSTR AB"), "Syntax error in ");
    EXPECT_EQ(session.messageOf("CLEAR"), "");
    EXPECT_EQ(session.messageOf("DEFSNG L"), "");
    EXPECT_EQ(session.messageOf("DEFSTR S:S=\"text\""), "");
    EXPECT_EQ(session.valueOf("S"), "text");
}

TEST(Statements, Swap)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("A=1:B=2:SWAP A,B"), "");
    EXPECT_EQ(session.valueOf("A"), " 2 ");
    EXPECT_EQ(session.valueOf("B"), " 1 ");
    EXPECT_EQ(session.messageOf("SWAP A, B$"), "Type mismatch in ");
    EXPECT_EQ(session.messageOf("X$(1)=\"P\":Y$=\"Q\":SWAP X$(1),Y$"), "");
    EXPECT_EQ(session.valueOf("X$(1)"), "Q");
}

struct ArrayCase {
    const char* commands;
    const char* error;
};

class Arrays : public ::testing::TestWithParam<ArrayCase> {};

TEST_P(Arrays, LimitsAndErrors)
{
    test::Session session;
    EXPECT_EQ(session.messageOf(GetParam().commands), GetParam().error) << GetParam().commands;
}

INSTANTIATE_TEST_SUITE_P(Statements, Arrays,
    ::testing::Values(ArrayCase {"A(10)=1", ""}, ArrayCase {"A(10)=1:A(11)=1", "Subscript out of range in "},
        ArrayCase {"DIM A(5):DIM A(5)", "Duplicate Definition in "}, ArrayCase {"DIM A(5):ERASE A:DIM A(5)", ""},
        ArrayCase {"DIM A%(32766)", ""}, ArrayCase {"DIM A%(32767)", "Out of memory in "},
        ArrayCase {"DIM D#(8190)", ""}, ArrayCase {"DIM D#(8191)", "Out of memory in "},
        ArrayCase {"DIM S!(16382)", ""}, ArrayCase {"DIM S!(16383)", "Out of memory in "},
        ArrayCase {"OPTION BASE 1:A(0)=1", "Subscript out of range in "}, ArrayCase {"OPTION BASE 2", "Syntax error in "},
        ArrayCase {"OPTION BASE 1:OPTION BASE 1", "Duplicate Definition in "}, ArrayCase {"ERASE Q", "Syntax error in "},
        ArrayCase {"A(-1)=1", "Subscript out of range in "}, ArrayCase {"A(1,2)=1:B=A(1)", "Subscript out of range in "},
        ArrayCase {"A$(1)=1", "Type mismatch in "}, ArrayCase {"A%(1)=40000", "Overflow in "},
        ArrayCase {"DIM A(3),B$(2,2),C#(1)", ""}, ArrayCase {"DIM A(", "Syntax error in "},
        ArrayCase {"DIM B(2,2,2,2,2,2,2,2,2,2,2,2,2,2)", "Out of memory in "},
        ArrayCase {"DIM A%(30000),B%(30000),C%(30000),D%(30000),E%(30000),F%(30000),G%(30000),H%(30000),I%(30000)", ""},
        ArrayCase {"DIM A#(8000),B#(8000),C#(8000),D#(8000),E#(8000),F#(8000),G#(8000),H#(8000),I#(8000),"
                   "J#(8000),K#(8000),L#(8000),M#(8000),N#(8000),O#(8000),P#(8000),Q#(8000)",
            "Out of memory in "}));

TEST(Statements, ArrayElementsHaveTheirOwnCells)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("DIM B(2,2,2):B(0,0,1)=1:B(2,1,0)=7"), "");
    EXPECT_EQ(session.valueOf("B(0,1,0)"), " 0 ");
    EXPECT_EQ(session.valueOf("B(0,0,1)"), " 1 ");
    EXPECT_EQ(session.valueOf("B(2.7,1,0)"), " 7 ");
    EXPECT_EQ(session.messageOf("DIM S$(3)"), "");
    EXPECT_EQ(session.valueOf("S$(3)"), "");
    EXPECT_EQ(session.messageOf("A(3,4)=5"), "");
    EXPECT_EQ(session.valueOf("A(10,10)"), " 0 ");
}

TEST(Statements, UserFunctions)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("DEF FNA(X)=X*2"), "");
    EXPECT_EQ(session.messageOf("X=1"), "");
    EXPECT_EQ(session.valueOf("FNA(5)"), " 10 ");
    EXPECT_EQ(session.valueOf("X"), " 1 ");
    EXPECT_EQ(session.valueOf("X_X"), " 1 ");
    EXPECT_EQ(session.messageOf("DEF FNB$(A$,N%)=LEFT$(A$,N%)"), "");
    EXPECT_EQ(session.valueOf("FNB$(\"HELLO\",2)"), "HE");
    EXPECT_EQ(session.messageOf("DEF FNP=3"), "");
    EXPECT_EQ(session.valueOf("FNP+1"), " 4 ");
    EXPECT_EQ(session.valueOf("FNZ(1)"), "error");
    EXPECT_EQ(session.messageOf("DEF FN1(X)=X"), "Syntax error in ");
    EXPECT_EQ(session.messageOf("DEF FNA(X)=X*3"), "");
    EXPECT_EQ(session.valueOf("FNA(2)"), " 6 ");
}

TEST(Statements, UserFunctionsNestAtMostTenDeep)
{
    test::Session session;
    for (int k = 0; k < 11; ++k) {
        std::string next = k == 10 ? "1" : "FN" + std::string(1, static_cast<char>('B' + k)) + "(X)";
        session.messageOf("DEF FN" + std::string(1, static_cast<char>('A' + k)) + "(X)=" + next);
    }
    EXPECT_EQ(session.valueOf("FNB(1)"), " 1 ");
    EXPECT_EQ(session.messageOf("Y=FNA(1)"), "Out of memory in ");
}

TEST(Statements, SixtyFourDefinitionsAtMost)
{
    test::Session session;
    for (int k = 0; k < 64; ++k)
        ASSERT_EQ(session.messageOf("DEF FNF" + std::to_string(k) + "=1"), "");
    EXPECT_EQ(session.messageOf("DEF FNG=1"), "Out of memory in ");
}

struct MidCase {
    const char* statement;
    const char* error;
    const char* result;
};

class MidStatement : public ::testing::TestWithParam<MidCase> {};

TEST_P(MidStatement, OverwritesInPlace)
{
    test::Session session;
    session.messageOf("A$=\"ABCDE\"");
    EXPECT_EQ(session.messageOf(GetParam().statement), GetParam().error) << GetParam().statement;
    EXPECT_EQ(session.valueOf("A$"), GetParam().result) << GetParam().statement;
}

INSTANTIATE_TEST_SUITE_P(Statements, MidStatement,
    ::testing::Values(MidCase {"MID$(A$,2,3)=\"xyz\"", "", "AxyzE"}, MidCase {"MID$(A$,4)=\"123\"", "", "ABC12"},
        MidCase {"MID$(A$,2,1)=\"xyz\"", "", "AxCDE"}, MidCase {"MID$(A$,6)=\"Q\"", "Illegal function call in ", "ABCDE"},
        MidCase {"MID$(A$,0,1)=\"Q\"", "Illegal function call in ", "ABCDE"},
        MidCase {"MID$(A,1)=\"Q\"", "Type mismatch in ", "ABCDE"},
        MidCase {"MID$(A$,1)=5", "Syntax error in ", "ABCDE"},
        MidCase {"MID$(E$,1)=\"Q\"", "Illegal function call in ", "ABCDE"}));

TEST(Statements, DateAndTimeRunOnFromWhatWasSet)
{
    test::Session session;
    EXPECT_EQ(session.messageOf("DATE$=\"26/02/28\""), "");
    EXPECT_EQ(session.valueOf("DATE$"), "26/02/28");
    EXPECT_EQ(session.messageOf("TIME$=\"23:59:58\""), "");
    EXPECT_EQ(session.valueOf("TIME$"), "23:59:58");
    EXPECT_EQ(session.messageOf("DATE$=\"26/02/30\""), "Illegal function call in ");
    EXPECT_EQ(session.messageOf("TIME$=\"24:00:00\""), "Illegal function call in ");
    EXPECT_EQ(session.messageOf("TIME$=\"12:60:00\""), "Illegal function call in ");
    EXPECT_EQ(session.messageOf("DATE$=\"2026/1/1\""), "Illegal function call in ");
}

} // namespace
} // namespace tessaly::expr
