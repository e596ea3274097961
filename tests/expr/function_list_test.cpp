// Every built-in function name: recognised with its kind and code, and called through the
// dispatch with an example whose printed result is known.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "core/keyword_table.h"
#include "expr/functions.h"
#include "support/test_host.h"

namespace tessaly::expr {
namespace {

struct FunctionCase {
    const char* name;
    FunctionKind kind;
    int code;
    const char* call;    // printed by PRINT in a fresh session
    const char* printed; // what PRINT shows, up to the OK
    const char* setup = nullptr; // lines typed before, one per line
};

constexpr auto N = FunctionKind::Numeric;
constexpr auto S = FunctionKind::String;

// Aliases take arguments at which the function they stand for differs from its neighbours.
constexpr FunctionCase kFunctions[] = {
    {"SIN", N, 1, "SIN(1)", " 0.8414709848078965 \nOK"},
    {"COS", N, 2, "COS(1)", " 0.5403023058681398 \nOK"},
    {"TAN", N, 3, "TAN(1)", " 1.557407724654902 \nOK"},
    {"LOG", N, 4, "LOG(2)", " 0.6931471805599453 \nOK"},
    {"SQR", N, 5, "SQR(2)", " 1.414213562373095 \nOK"},
    {"ABS", N, 6, "ABS(-2.5)", " 2.5 \nOK"},
    {"EXP", N, 7, "EXP(1)", " 2.718281828459045 \nOK"},
    {"ATN", N, 8, "ATN(1)", " 0.7853981633974483 \nOK"},
    {"SGN", N, 9, "SGN(-4)", "-1 \nOK"},
    {"CINT", N, 10, "CINT(1.5)", " 2 \nOK"},
    {"CSNG", N, 11, "CSNG(1/3)", " 0.3333333432674408 \nOK"},
    {"CDBL", N, 12, "CDBL(1/3)", " 0.3333333333333333 \nOK"},
    {"ASC", N, 13, "ASC(\"B\")", " 66 \nOK"},
    {"CSRLIN", N, 14, "CSRLIN", " 1 \nOK"},
    {"POS", N, 15, "1:LOCATE 9,2:PRINT POS(0)", " 1 \n 9 \nOK"},
    {"CVI", N, 16, "CVI(\"AB\")", " 16961 \nOK"},
    {"CVS", N, 17, "CVS(\"ABCD\")", " 781.0352172851562 \nOK"},
    {"CVD", N, 18, "CVD(\"ABCDEFGH\")", " 1.583980010380482e+040 \nOK"},
    {"VAL", N, 19, "VAL(\"1.5\")", " 1.5 \nOK"},
    {"POINT", N, 20, "POINT(0);POINT(3,4)", " 3  0 \nOK", "PSET(3,4),5"},
    {"FIX", N, 21, "FIX(-1.5)", "-1 \nOK"},
    {"INT", N, 22, "INT(-1.5)", "-2 \nOK"},
    {"RND", N, 23, "RND(1)", " 0.5635853144932401 \nOK"},
    {"INSTR", N, 24, "INSTR(\"ABC\",\"C\")", " 3 \nOK"},
    {"EOF", N, 25, "EOF(1)", "File not open in "},
    {"LEN", N, 26, "LEN(\"ABCD\")", " 4 \nOK"},
    {"PEEK", N, 27, "PEEK(100)", " 7 \nOK", "POKE 100,7"},
    {"DEFUSER", N, 28, "DEFUSER(0)", " 1048576 \nOK"},
    {"VARPTR", N, 29, "VARPTR(A)", " 2097152 \nOK"},
    {"INP", N, 30, "INP(0)", " 255 \nOK"},
    {"USR", N, 31, "USR(0)", "Undefined user function in "},
    {"FN", N, 32, "FN(1)", "Illegal function call in "},
    {"ERL", N, 33, "ERL", " 10 \nOK", "10 ERROR 7\nRUN"},
    {"ERR", N, 34, "ERR", " 7 \nOK", "10 ERROR 7\nRUN"},
    {"SEC", N, 35, "SEC(1)", " 1.850815717680925 \nOK"},
    {"CSC", N, 36, "CSC(1)", " 1.188395105778121 \nOK"},
    {"COT", N, 37, "COT(1)", " 0.6420926159343306 \nOK"},
    {"ARCSIN", N, 38, "ARCSIN(0.5)", " 0.5235987755982989 \nOK"},
    {"ARCCOS", N, 39, "ARCCOS(0.5)", " 1.047197551196598 \nOK"},
    {"ARCSEC", N, 40, "ARCSEC(2)", " 1.047197551196598 \nOK"},
    {"ARCCSC", N, 41, "ARCCSC(2)", " 0.5235987755982989 \nOK"},
    {"ARCCOT", N, 42, "ARCCOT(2)", " 0.4636476090008061 \nOK"},
    {"SINH", N, 43, "SINH(1)", " 1.175201193643801 \nOK"},
    {"COSH", N, 44, "COSH(1)", " 1.543080634815244 \nOK"},
    {"TANH", N, 45, "TANH(1)", " 0.7615941559557649 \nOK"},
    {"SECH", N, 46, "SECH(1)", " 0.6480542736638855 \nOK"},
    {"CSCH", N, 47, "CSCH(1)", " 0.8509181282393216 \nOK"},
    {"COTH", N, 48, "COTH(1)", " 1.313035285499331 \nOK"},
    {"ARCSINH", N, 49, "ARCSINH(1)", " 0.8813735870195429 \nOK"},
    {"ARCCOSH", N, 50, "ARCCOSH(2)", " 1.316957896924817 \nOK"},
    {"ARCTANH", N, 51, "ARCTANH(0.5)", " 0.5493061443340549 \nOK"},
    {"ARCSECH", N, 52, "ARCSECH(0.5)", " 1.316957896924817 \nOK"},
    {"ARCCSCH", N, 53, "ARCCSCH(2)", " 0.4812118250596035 \nOK"},
    {"ARCCOTH", N, 54, "ARCCOTH(2)", " 0.5493061443340549 \nOK"},
    {"COSEC", N, 55, "COSEC(2)", " 1.099750170294616 \nOK"},
    {"ASIN", N, 56, "ASIN(0.25)", " 0.2526802551420786 \nOK"},
    {"ACOS", N, 57, "ACOS(0.25)", " 1.318116071652818 \nOK"},
    {"ASEC", N, 58, "ASEC(3)", " 1.230959417340775 \nOK"},
    {"ACSC", N, 59, "ACSC(3)", " 0.3398369094541219 \nOK"},
    {"ACOSEC", N, 60, "ACOSEC(4)", " 0.2526802551420786 \nOK"},
    {"ACOT", N, 61, "ACOT(3)", " 0.3217505543966422 \nOK"},
    {"COSECH", N, 62, "COSECH(2)", " 0.2757205647717832 \nOK"},
    {"ASINH", N, 63, "ASINH(2)", " 1.44363547517881 \nOK"},
    {"ACOSH", N, 64, "ACOSH(3)", " 1.762747174039086 \nOK"},
    {"ATANH", N, 65, "ATANH(0.25)", " 0.2554128118829954 \nOK"},
    {"ASECH", N, 66, "ASECH(0.25)", " 2.063437068895561 \nOK"},
    {"ACSCH", N, 67, "ACSCH(3)", " 0.3274501502372586 \nOK"},
    {"ACOSECH", N, 68, "ACOSECH(4)", " 0.2474664615472635 \nOK"},
    {"ACOTH", N, 69, "ACOTH(3)", " 0.3465735902799726 \nOK"},
    {"MAP", N, 70, "MAP(5,0)", " 5 \nOK"},
    {"VIEW", N, 71, "VIEW(2)", " 639 \nOK", "WINDOW(0,0)-(10,10)"},
    {"WINDOW", N, 72, "WINDOW(2)", " 10 \nOK", "WINDOW(0,0)-(10,10)"},
    {"LOF", N, 73, "LOF(1)", "File not open in "},
    {"PEN", N, 74, "PEN(0)", " 0 \nOK"},
    {"ROUND", N, 75, "ROUND(2.5,0)", " 3 \nOK"},
    {"SEGPTR", N, 76, "SEGPTR(0)", " 1048576 \nOK"},
    {"LOC", N, 77, "LOC(1)", "File not open in "},
    {"CHR$", S, 1, "CHR$(66)", "B\nOK"},
    {"LEFT$", S, 2, "LEFT$(\"ABC\",2)", "AB\nOK"},
    {"RIGHT$", S, 3, "RIGHT$(\"ABC\",2)", "BC\nOK"},
    {"MID$", S, 4, "MID$(\"ABC\",2)", "BC\nOK"},
    {"SPACE$", S, 5, "\"[\"+SPACE$(2)+\"]\"", "[  ]\nOK"},
    {"HEX$", S, 6, "HEX$(255)", "FF\nOK"},
    {"OCT$", S, 7, "OCT$(8)", "10\nOK"},
    {"MKI$", S, 8, "MKI$(16706)", "BA\nOK"},
    {"MKS$", S, 9, "CVS(MKS$(1.5))", " 1.5 \nOK"},
    {"MKD$", S, 10, "CVD(MKD$(-2.25))", "-2.25 \nOK"},
    {"STR$", S, 11, "STR$(5)", " 5\nOK"},
    {"STRING$", S, 12, "STRING$(3,\"x\")", "xxx\nOK"},
    {"INKEY$", S, 13, "\"[\"+INKEY$+\"]\"", "[]\nOK"},
    {"SPC$", S, 14, "\"[\"+SPC$(3)+\"]\"", "[   ]\nOK"},
    {"TAB$", S, 15, "\"AB\";\"[\"+TAB$(4)+\"]\"", "AB[  ]\nOK"},
    {"INPUT$", S, 16, "INPUT$(1,#1)", "File not open in "},
    {"DATE$", S, 17, "MID$(DATE$,3,1)+MID$(DATE$,6,1)", "//\nOK"},
    {"TIME$", S, 18, "MID$(TIME$,3,1)+MID$(TIME$,6,1)", "::\nOK"},
};

class EveryFunction : public ::testing::TestWithParam<FunctionCase> {};

TEST_P(EveryFunction, IsRecognisedWithItsCodeAndCalled)
{
    const auto& c = GetParam();
    const auto& table = core::keywordTable();
    auto listed = c.kind == N ? table.numericFunction(c.code) : table.stringFunction(c.code);
    EXPECT_EQ(listed, c.name);
    auto found = findFunction(c.name);
    EXPECT_EQ(found.kind, c.kind) << c.name;
    EXPECT_EQ(found.code, c.code) << c.name;
    test::Session session;
    for (std::string_view setup = c.setup != nullptr ? c.setup : ""; !setup.empty();) {
        auto end = std::min(setup.find('\n'), setup.size());
        session.type(setup.substr(0, end));
        setup.remove_prefix(std::min(end + 1, setup.size()));
    }
    EXPECT_EQ(session.messageOf(std::string("PRINT ") + c.call), c.printed) << c.call;
}

INSTANTIATE_TEST_SUITE_P(FunctionList, EveryFunction, ::testing::ValuesIn(kFunctions));

TEST(FunctionList, CoversEveryCodeOfBothLists)
{
    std::set<std::pair<FunctionKind, int>> codes;
    for (const auto& c : kFunctions)
        codes.insert({c.kind, c.code});
    EXPECT_EQ(codes.size(), std::size(kFunctions));
    EXPECT_EQ(std::size(kFunctions),
        static_cast<size_t>(core::kNumericFunctionCount + core::kStringFunctionCount));
}

} // namespace
} // namespace tessaly::expr
