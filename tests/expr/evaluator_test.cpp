// Expressions as the user sees their values: precedence and association, the group rules, number
// texts, errors, variables, arrays and functions.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "expr/evaluator.h"
#include "expr/function_state.h"
#include "expr/number_text.h"
#include "expr/operators.h"
#include "expr/variables.h"
#include "support/test_host.h"

namespace tessaly::expr {
namespace {

// The value text of an expression as PRINT would show it (strings bare), or the error message.
std::string evaluate(core::Interpreter& in, const std::string& text)
{
    if (!in.buffer().assign(text))
        return "(does not fit)";
    Value value;
    if (evaluateExpression(in, 0, in.buffer().length(), value) < 0) {
        in.error().clear();
        std::string message = in.run().outputText;
        in.run().outputText.clear();
        return message;
    }
    if (value.isString())
        return "\"" + value.text + "\"";
    return PrintNumberText(numberValueText(value), value.type);
}

struct Case {
    const char* expression;
    const char* shown;
};

class Expressions : public ::testing::TestWithParam<Case> {};

TEST_P(Expressions, ShowTheirValue)
{
    test::Session session;
    EXPECT_EQ(evaluate(session.interpreter(), GetParam().expression), GetParam().shown) << GetParam().expression;
}

INSTANTIATE_TEST_SUITE_P(Arithmetic, Expressions,
    ::testing::Values(Case {"1+2*3", " 7 "}, Case {"2^3^2", " 64 "}, Case {"7 MOD 3", " 1 "},
        Case {"-7 MOD 3", "-1 "}, Case {"7\\2", " 3 "}, Case {"7.5\\2", " 4 "}, Case {"10-2-3", " 5 "},
        Case {"2*-3", "-6 "}, Case {"2--3", " 5 "}, Case {"1/3", " 0.3333333333333333 "}, Case {"2/3", " 0.6666666666666666 "},
        Case {"0.1+0.2", " 0.3 "}, Case {"100", " 100 "}, Case {"007", " 007 "}, Case {"5.0", " 5. "},
        Case {"1E20", " 1.e+020 "}, Case {"1E16", " 1.e+016 "}, Case {"0.05", " 0.05 "}, Case {"0.00001", " 1.e-005 "},
        Case {"123456789012345", " 123456789012345 "}, Case {"2^0.5", " 1.414213562373095 "}, Case {"0^0", " 0 "},
        Case {"(-2)^3", "-7.999999999999998 "}, Case {"2^3", " 8 "}, Case {"&HFF+1", " 256 "}, Case {"&O17", " 15 "}, Case {"&HFF", " 255 "},
        Case {"1D3", " 1000. "}, Case {"1E-3+1", " 1.001 "}, Case {"3*(1+2)", " 9 "}, Case {"((((2))))", " 2 "},
        Case {"123456789\\1", " 123456800. "}, Case {"99999.99999999999*1", " 99999.99999999999 "},
        Case {"1-0.9", " 0.09999999999999998 "}, Case {"10^-2", " 0.009999999999999995 "}, Case {"2/2^3", " 0.25 "},
        Case {"2^3/2", " 4 "}, Case {"2^3/2^2", " 2 "}, Case {"3/2^2*4", " 3 "}, Case {"2^-1/2", " 0.25 "}));

INSTANTIATE_TEST_SUITE_P(LeadingMinus, Expressions,
    ::testing::Values(Case {"-2^2", "-4 "}, Case {"-2+3", " 1 "}, Case {"-(2)", "-2 "}, Case {"(-2^2)", " 4 "},
        Case {"-2*3+1", "-5 "}, Case {"-1 AND 3", " 3 "}, Case {"-1E-3+1", " 0.999 "}));

INSTANTIATE_TEST_SUITE_P(LogicalAndRelational, Expressions,
    ::testing::Values(Case {"1 OR 2 AND 3", " 3 "}, Case {"1 AND 2 OR 4", " 0 "}, Case {"3+1>2", " 3 "},
        Case {"(3+1)>2", "-1 "}, Case {"1.5<1.7", " 0 "}, Case {"65536=0", "-1 "}, Case {"NOT 0", "-1 "},
        Case {"NOT -1", " 0 "}, Case {"255 AND 15", " 15 "}, Case {"NOT 1+2", "-4 "}, Case {"5 XOR 3", " 6 "},
        Case {"5 EQV 3", "-7 "}, Case {"0 IMP 0", "-1 "}, Case {"1<2<3", " 0 "}, Case {"1<>2", "-1 "},
        Case {"2=<2", "-1 "}, Case {"3=>4", " 0 "}));

// Each pair of operators next in priority, in both orders: the two groupings give different
// values, so the value shows which operator was done first.
INSTANTIATE_TEST_SUITE_P(PriorityPairs, Expressions,
    ::testing::Values(Case {"6 IMP 3 EQV 5", "-7 "}, Case {"6 EQV 3 IMP 5", " 5 "}, Case {"6 XOR 3 AND 5", " 7 "},
        Case {"6 AND 3 XOR 5", " 7 "}, Case {"6 AND 3 OR 5", " 6 "}, Case {"6 OR 3 AND 5", " 5 "},
        Case {"NOT 6 OR 3", "-5 "}, Case {"NOT 6+3", "-10 "}, Case {"6-3+5", " 8 "}, Case {"9-7 MOD 4", " 6 "},
        Case {"9 MOD 7-4", "-2 "}, Case {"9 MOD 7\\2", " 0 "}, Case {"9\\7 MOD 4", " 1 "}, Case {"6\\3*5", " 0 "},
        Case {"6*3\\5", " 3 "}, Case {"9/7*4", " 5.142857142857144 "}, Case {"6/3^5", " 0.02469135802469136 "},
        Case {"6^3/5", " 43.2 "}, Case {"2^3<4", " 0.5 "}, Case {"2<3^4", " 1 "}, Case {"6<3+5", " 5 "},
        Case {"6+3<5", " 5 "}, Case {"6=3<5", " 0 "}, Case {"6<>3<5", "-1 "}, Case {"2<3 AND 4", " 4 "},
        Case {"9 AND 7<4", " 0 "}));

INSTANTIATE_TEST_SUITE_P(Strings, Expressions,
    ::testing::Values(Case {"\"AB\"+\"CD\"", "\"ABCD\""}, Case {"\"A\"<\"B\"", "-1 "}, Case {"\"B\"=\"B\"", "-1 "},
        Case {"\"\"", "\"\""}, Case {"\"A\"-\"B\"", "Syntax error in "}, Case {"\"open", "Illegal function call in "},
        // Arithmetic on a string is a syntax error, whichever side the string stands on.
        Case {"\"A\"*2", "Syntax error in "}, Case {"\"A\"/2", "Syntax error in "}, Case {"2*\"A\"", "Syntax error in "},
        Case {"\"A\"\\2", "Syntax error in "}, Case {"2-\"A\"", "Syntax error in "}, Case {"\"A\"-2", "Syntax error in "},
        Case {"-\"A\"", "Syntax error in "}, Case {"\"A\" MOD 2", "Syntax error in "}, Case {"2^\"A\"", "Syntax error in "},
        Case {"\"A\" AND 1", "Syntax error in "}, Case {"NOT \"A\"", "Syntax error in "},
        // + joins the strings of a string expression; a number beside it adds nothing.
        Case {"\"A\"+1", "\"A\""}, Case {"1+\"A\"+\"B\"", "\"AB\""}, Case {"\"A\"=1", "Type mismatch in "}));

INSTANTIATE_TEST_SUITE_P(Errors, Expressions,
    ::testing::Values(Case {"1/0", "Division by Zero (/0) in "}, Case {"1/1E-60", "Division by Zero (/0) in "},
        Case {"5\\0", "Division by Zero (/0) in "}, Case {"5 MOD 0", "Division by Zero (/0) in "},
        Case {"(-8)^(1/3)", "Illegal function call in "}, Case {"1E300*1E300", "Overflow in "},
        // The smallest divisor allowed, and results that overflow only when rounded to 16 digits.
        Case {"1/-1E-51", "Division by Zero (/0) in "}, Case {"2/1E-50", " 2.e+050 "}, Case {"1E308*10-1", "Overflow in "},
        Case {"1.7976931348623157E308+1", "Overflow in "}, Case {"1.797693134862315E308-1", " 1.797693134862315e+308 "},
        Case {"(1+2", "Syntax error in "}, Case {"1+2)", "Syntax error in "}, Case {"1+", "Syntax error in "},
        Case {"1 2", "Syntax error in "}, Case {"*3", "Syntax error in "}));

INSTANTIATE_TEST_SUITE_P(Functions, Expressions,
    ::testing::Values(Case {"CINT(2.5)", " 3 "}, Case {"CINT(-2.5)", "-3 "}, Case {"CINT(32767.5)", "Overflow in "},
        Case {"INT(-2.5)", "-3 "}, Case {"FIX(-2.5)", "-2 "}, Case {"INT(2)", " 2 "}, Case {"SGN(0)", " 0 "},
        Case {"SGN(-3)", "-1 "}, Case {"LOG(0)", "Illegal function call in "}, Case {"SQR(-1)", "Illegal function call in "},
        Case {"SQR(16)", " 4 "}, Case {"ABS(-3.5)", " 3.5 "}, Case {"ARCTANH(0.5)", " 0.5493061443340549 "},
        Case {"ATANH(0.5)", " 0.5493061443340549 "}, Case {"ROUND(2.375,2)", " 2.38 "},
        Case {"ROUND(1,17)", "Illegal function call in "}, Case {"ROUND(-2.5,0)", "-3 "}, Case {"SIN(0)", " 0 "},
        Case {"COS(0)", " 1 "}, Case {"ARCSIN(2)", "Illegal function call in "}, Case {"SEC(0)", " 1 "},
        Case {"COSEC(0)", "Division by Zero (/0) in "}, Case {"COSH(0)", " 1 "}, Case {"ACOSH(0.5)", "Illegal function call in "},
        Case {"LEN(\"ABC\")", " 3 "}, Case {"ASC(\"A\")", " 65 "}, Case {"ASC(1)", "Syntax error in "},
        Case {"INSTR(\"ABCABC\",\"C\")", " 3 "}, Case {"INSTR(4,\"ABCABC\",\"C\")", " 6 "},
        Case {"INSTR(\"ABC\",\"X\")", " 0 "}, Case {"VAL(\"&HFF\")", " 255 "}, Case {"VAL(\"12AB\")", " 12 "},
        Case {"VAL(\" -1.5E2\")", "-150 "}, Case {"CVI(MKI$(258))", " 258 "},
        Case {"CVI(\"ABC\")", "Illegal function call in "}, Case {"CVS(MKS$(1.5))", " 1.5 "},
        Case {"CVD(MKD$(-2.25))", "-2.25 "}));

INSTANTIATE_TEST_SUITE_P(StringFunctions, Expressions,
    ::testing::Values(Case {"CHR$(65)", "\"A\""}, Case {"CHR$(256)", "Illegal function call in "},
        Case {"HEX$(255)", "\"FF\""}, Case {"HEX$(-1)", "\"FFFF\""}, Case {"HEX$(65536)", "Illegal function call in "},
        Case {"OCT$(8)", "\"10\""}, Case {"LEFT$(\"ABC\",5)", "\"ABC\""}, Case {"RIGHT$(\"ABC\",2)", "\"BC\""},
        Case {"MID$(\"ABCDE\",2,3)", "\"BCD\""}, Case {"MID$(\"ABCDE\",3)", "\"CDE\""},
        Case {"STRING$(0,65)", "Illegal function call in "}, Case {"STRING$(3,65)", "\"AAA\""},
        Case {"STRING$(2,\"XY\")", "\"XX\""}, Case {"STR$(5)", "\" 5\""}, Case {"STR$(-2.5)", "\"-2.5\""},
        Case {"STR$(1/100000)", "\" 0.00001\""}, Case {"STR$(1E10*1E10)", "\" 1.e+20\""}, Case {"STR$(1E20)", "\" 1E20\""},
        Case {"SPACE$(3)", "\"   \""}, Case {"MKI$(258)", "\"\x02\x01\""}, Case {"LEFT$(\"ABC\",-1)", "Illegal function call in "}));

// The record layouts of MKI$/MKS$/MKD$: little-endian 16-bit integers and IEEE singles and
// doubles, checked byte for byte at the limits of each type, and read back by CVI/CVS/CVD.
// The 16-bit view of a number that the logical operators and the comparisons use: truncated toward
// zero, its low 16 bits; beyond 64 bits through the remainder; not a number gives 0.
TEST(Evaluator, SixteenBitViewOfNumbers)
{
    const std::pair<double, int16_t> cases[] = {{0, 0}, {1.9, 1}, {-1.9, -1}, {32767, 32767}, {32768, -32768},
        {65535, -1}, {65536, 0}, {-65537, -1}, {1e10, -7168}, {-1e10, 7168}, {9.0e18, 0},
        {9223372036854781952.0, 6144}, {-9223372036854781952.0, -6144}, {HUGE_VAL, 0}, {NAN, 0}};
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(toInt16(value), expected) << value;
}

// A whole number to a whole power up to 1e12 is taken as the exact product: it must be what the
// logarithm route, rounded to the nearest whole number, gives, for every such power; outside that
// range (fractions, negative bases, larger powers) the logarithm route stays.
TEST(Evaluator, WholePowersAreTheirExactProducts)
{
    int checked = 0;
    auto check = [&](double a, double b) {
        double exact = 0;
        if (!wholePowerExactly(a, b, exact))
            return;
        ++checked;
        ASSERT_EQ(exact, core::roundHalfAwayFromZero(std::exp(std::log(a) * b))) << a << "^" << b;
    };
    for (int a = 1; a <= 3000; ++a)
        for (int b = 1; b <= 40; ++b)
            check(a, b);
    for (double a = 3001; a <= 1e6; a = std::floor(a * 1.01) + 1)
        check(a, 2);
    for (double a : {999999.0, 1000000.0, 9999.0, 10000.0, 4096.0, 8191.0})
        for (int b = 1; b <= 4; ++b)
            check(a, b);
    EXPECT_GT(checked, 9000);
    double untouched = 7;
    for (auto [a, b] : {std::pair {1.5, 2.0}, {2.0, 2.5}, {-2.0, 2.0}, {2.0, 0.0}, {2.0, -1.0}, {0.5, 3.0},
             {1000001.0, 2.0}, {10.0, 13.0}, {2.0, 41.0}}) {
        EXPECT_FALSE(wholePowerExactly(a, b, untouched)) << a << "^" << b;
        EXPECT_EQ(untouched, 7);
    }
    // What the logarithm route showed for them before.
    test::Session session;
    const std::pair<const char*, const char*> shown[] = {{"3^2", " 9 "}, {"2^39", " 549755813888 "},
        {"1000000!^2", " 1000000000000 "}, {"10^12", " 1000000000000 "}, {"10^13", " 10000000000000 "},
        {"(-3)^3", "-27 "}, {"1.5^2", " 2.25 "}, {"7^14", " 678223072849 "}};
    for (const auto& [expression, text] : shown)
        EXPECT_EQ(evaluate(session.interpreter(), expression), text) << expression;
}

TEST(Evaluator, NumbersAsByteStringsAtTheirLimits)
{
    using namespace std::string_literals;
    test::Session session;
    auto& in = session.interpreter();
    const std::pair<const char*, std::string> bytes[] = {
        {"MKI$(-32768)", "\0\x80"s}, {"MKI$(32767)", "\xff\x7f"s}, {"MKI$(-1)", "\xff\xff"s},
        {"MKI$(32767.4)", "\xff\x7f"s}, {"MKI$(-32768.4)", "\0\x80"s},
        {"MKS$(1)", "\0\0\x80\x3f"s}, {"MKS$(1.70141E+38)", "\xee\xff\xff\x7e"s},
        {"MKS$(-1.70141E+38)", "\xee\xff\xff\xfe"s}, {"MKS$(1.401298E-45)", "\x01\0\0\0"s},
        {"MKD$(-1)", "\0\0\0\0\0\0\xf0\xbf"s}, {"MKD$(1.701411834604692D+38)", "\xfe\xff\xff\xff\xff\xff\xdf\x47"s},
        {"MKD$(4.9D-324)", "\x01\0\0\0\0\0\0\0"s},
        // Back and forth through CVS/CVD, whose results carry 16 significant digits.
        {"MKS$(CVS(MKS$(1.70141E+38)))", "\xee\xff\xff\x7e"s}, {"MKS$(CVS(MKS$(-1.70141E+38)))", "\xee\xff\xff\xfe"s},
        {"MKS$(CVS(MKS$(1.401298E-45)))", "\x01\0\0\0"s},
        {"MKS$(CVS(CHR$(1)+CHR$(2)+CHR$(3)+CHR$(4)))", "\x01\x02\x03\x04"s},
        {"MKD$(CVD(MKD$(1.701411834604692D+38)))", "\xfe\xff\xff\xff\xff\xff\xdf\x47"s},
        {"MKD$(CVD(MKD$(4.9D-324)))", "\x01\0\0\0\0\0\0\0"s}};
    for (const auto& [expression, expected] : bytes)
        EXPECT_EQ(evaluate(in, expression), "\"" + expected + "\"") << expression;

    const std::pair<const char*, const char*> values[] = {
        {"CVI(MKI$(-32768))", "-32768 "}, {"CVI(MKI$(32767))", " 32767 "}, {"CVI(MKI$(0))", " 0 "},
        {"CVI(CHR$(2)+CHR$(1))", " 258 "}, {"CVI(CHR$(255)+CHR$(255))", "-1 "},
        {"CVS(MKS$(-2.5))", "-2.5 "}, {"CVD(MKD$(0.125))", " 0.125 "},
        {"CVD(STRING$(8,0))", " 0 "},
        {"MKI$(32768)", "Illegal function call in "}, {"MKI$(-32769)", "Illegal function call in "},
        {"MKI$(32767.5)", "Illegal function call in "}, {"MKS$(1.70142E+38)", "Illegal function call in "},
        {"MKS$(-1.70142E+38)", "Illegal function call in "}, {"MKD$(1.7014118346047D+38)", "Illegal function call in "},
        {"MKI$(\"A\")", "Type mismatch in "}, {"CVI(\"\")", "Illegal function call in "},
        {"CVI(\"ABC\")", "Illegal function call in "}, {"CVS(\"ABC\")", "Illegal function call in "},
        {"CVS(\"ABCDE\")", "Illegal function call in "}, {"CVD(\"ABCDEFG\")", "Illegal function call in "},
        {"CVD(\"ABCDEFGHI\")", "Illegal function call in "}, {"CVI(12)", "Syntax error in "}};
    for (const auto& [expression, shown] : values)
        EXPECT_EQ(evaluate(in, expression), shown) << expression;
}

TEST(Evaluator, VariablesReadAsTheirTypeShowsThem)
{
    test::Session session;
    auto& in = session.interpreter();
    session.type({"A=1/3", "A%=7", "A#=1/3", "B$=\"X\"", "X%=&HFFFF"});
    EXPECT_EQ(evaluate(in, "A"), " 0.333333 ");
    EXPECT_EQ(evaluate(in, "A%"), " 7 ");
    EXPECT_EQ(evaluate(in, "A#"), " 0.3333333333333333 ");
    EXPECT_EQ(evaluate(in, "(A)"), " 0.3333333 ");
    EXPECT_EQ(evaluate(in, "A+A%"), " 7.3333333 ");
    EXPECT_EQ(evaluate(in, "B$+B$"), "\"XX\"");
    EXPECT_EQ(evaluate(in, "X%"), "-1 ");
    EXPECT_EQ(evaluate(in, "NEVER"), " 0 ");
    EXPECT_EQ(evaluate(in, "NEVER$"), "\"\"");
    EXPECT_EQ(in.variables().find("NEVER"), in.variables().count() - 2);
}

TEST(Evaluator, NestingLimitAndLongExpressions)
{
    test::Session session;
    auto& in = session.interpreter();
    EXPECT_EQ(evaluate(in, std::string(62, '(') + "1" + std::string(62, ')')), " 1 ");
    EXPECT_EQ(evaluate(in, std::string(64, '(') + "1" + std::string(64, ')')), "Out of memory in ");
    std::string sum = "1";
    for (int i = 0; i < 300; ++i)
        sum += "+1";
    EXPECT_EQ(evaluate(in, sum), " 301 ");
}

TEST(Evaluator, RandomNumbers)
{
    test::Session session;
    auto& in = session.interpreter();
    std::string first = evaluate(in, "RND");
    EXPECT_EQ(evaluate(in, "RND(0)"), first);
    session.type("RANDOMIZE 5");
    std::string a = evaluate(in, "RND(-1)");
    EXPECT_EQ(evaluate(in, "RND(-1)"), a);
    EXPECT_NE(evaluate(in, "RND"), a);
    EXPECT_EQ(session.type("RANDOMIZE 40000"), "RANDOMIZE 40000\nIllegal function call in \n");
    // The generator starts from seed 1 and the first RND is its second draw.
    RandomGenerator generator;
    generator.seed(1);
    generator.draw();
    double second = generator.draw() / 32767.0;
    test::Session fresh;
    EXPECT_EQ(evaluate(fresh.interpreter(), "RND"), PrintNumberText(ValueText(RoundToDigits(second, 16), 16), ValueType::Double));
}

TEST(Evaluator, ErrAndErlReadTheLastError)
{
    test::Session session;
    auto& in = session.interpreter();
    session.type({"10 ON ERROR GOTO 100", "20 X=1/0", "30 END", "100 E=ERR:L=ERL:RESUME NEXT", "RUN"});
    EXPECT_EQ(evaluate(in, "E"), " 11 ");
    EXPECT_EQ(evaluate(in, "L"), " 20 ");
}

} // namespace
} // namespace tessaly::expr
