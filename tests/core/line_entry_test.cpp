// Upper-casing of entered lines and the numbered-line test.
#include <gtest/gtest.h>

#include "core/line_entry.h"

namespace tessaly::core {
namespace {

struct CaseCase {
    const char* typed;
    const char* stored;
};

class UpperCasing : public ::testing::TestWithParam<CaseCase> {};

TEST_P(UpperCasing, ChangesOnlyTextOutsideStringsCommentsAndData)
{
    std::string text = GetParam().typed;
    upperCaseEnteredText(text);
    EXPECT_EQ(text, GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(LineEntry, UpperCasing,
    ::testing::Values(CaseCase {"10 print \"abc\": rem Hello", "10 PRINT \"abc\": REM Hello"},
        CaseCase {"print a 'keep this", "PRINT A 'keep this"},
        CaseCase {"10 data abc, def:print x", "10 DATA abc, def:PRINT X"},
        CaseCase {"10 rem a:print b", "10 REM a:PRINT B"}, CaseCase {"x$=\"q\"+y$", "X$=\"q\"+Y$"},
        CaseCase {"a\"b", "A\"b"}));

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
