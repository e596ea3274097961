// Upper-casing of entered lines and the numbered-line test.
#include <gtest/gtest.h>

#include "core/line_entry.h"
#include "core/upper_case_pass.h"

namespace tessaly::core {
namespace {

struct CaseCase {
    const char* typed;
    const char* stored;
    CaseRules rules = CaseRules::TypedLine;
};

class UpperCasing : public ::testing::TestWithParam<CaseCase> {};

TEST_P(UpperCasing, ChangesOnlyTextOutsideStringsCommentsAndData)
{
    std::string text = GetParam().typed;
    upperCaseOutsideStrings(text, GetParam().rules);
    EXPECT_EQ(text, GetParam().stored);
}

constexpr auto kFile = CaseRules::ProgramFile;
constexpr auto kChain = CaseRules::AllOutsideStrings;

INSTANTIATE_TEST_SUITE_P(LineEntry, UpperCasing,
    ::testing::Values(CaseCase {"10 print \"abc\": rem Hello", "10 PRINT \"abc\": REM Hello"},
        CaseCase {"print a 'keep this", "PRINT A 'keep this"},
        CaseCase {"10 data abc, def:print x", "10 DATA abc, def:PRINT X"},
        CaseCase {"10 rem a:print b", "10 REM a:PRINT B"}, CaseCase {"x$=\"q\"+y$", "X$=\"q\"+Y$"},
        CaseCase {"a\"b", "A\"b"},
        // The second byte of a double-byte character stays as it is, whoever reads the line:
        // 0x83 0x65 and 0x83 0x61 are katakana, not a lead byte and a letter.
        CaseCase {"10 a=1:\x83\x65", "10 A=1:\x83\x65"}, CaseCase {"10 a=1:\x83\x65", "10 A=1:\x83\x65", kFile},
        CaseCase {"10 a=1:\x83\x65", "10 A=1:\x83\x65", kChain},
        CaseCase {"\xe0\x61" "b \x9f\x7a" "c", "\xe0\x61" "B \x9f\x7a" "C"},
        // A quote or a colon after a lead byte is no second byte and keeps its meaning.
        CaseCase {"p \x82\"x\"y", "P \x82\"x\"Y"}, CaseCase {"rem \x82:a", "REM \x82:A"},
        // In a file an apostrophe comment ends at a colon, a CR ends everything; CHAIN keeps nothing
        // but strings.
        CaseCase {"10 'a:b\r\n20 rem c\r\n30 \"d\r\n40 e", "10 'a:B\r\n20 REM c\r\n30 \"d\r\n40 E", kFile},
        CaseCase {"10 rem a:dataxy\r\n", "10 REM a:DATAxy\r\n", kFile}, CaseCase {"10 dataxy", "10 DATAXY"},
        CaseCase {"10 rem a 'b \"c\" d", "10 REM A 'B \"c\" D", kChain}));

struct NumberCase {
    const char* text;
    bool numbered;
};

class NumberedLines : public ::testing::TestWithParam<NumberCase> {};

TEST_P(NumberedLines, RoundedValueAboveZero)
{
    EXPECT_EQ(isNumberedLine(GetParam().text), GetParam().numbered) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(LineEntry, NumberedLines,
    ::testing::Values(NumberCase {"10 PRINT", true}, NumberCase {"0 PRINT 5", false},
        NumberCase {"-5 PRINT 5", false}, NumberCase {"0.4 PRINT 5", false}, NumberCase {"0.5 PRINT", true},
        NumberCase {"PRINT 1", false}, NumberCase {"10PRINT", true}, NumberCase {"1E2 X", true},
        NumberCase {"0X10", false}, NumberCase {"INF", false}, NumberCase {".", false}));

} // namespace
} // namespace tessaly::core
