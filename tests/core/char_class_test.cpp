// The character classes, the two upper-casing rules and the rounding rules that statements share.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/char_class.h"
#include "core/rounding.h"
#include "core/upper_case_pass.h"

namespace tessaly::core {
namespace {

// Every byte whose class holds, for one class.
template <typename Class>
std::string members(Class isMember)
{
    std::string out;
    for (int b = 0; b < 256; ++b) {
        if (isMember(static_cast<char>(b)))
            out += static_cast<char>(b);
    }
    return out;
}

const std::string kUpper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string kLower = "abcdefghijklmnopqrstuvwxyz";

TEST(CharClass, HoldsExactlyItsAsciiBytes)
{
    EXPECT_EQ(members(isDigit), "0123456789");
    EXPECT_EQ(members(isUpperLetter), kUpper);
    EXPECT_EQ(members(isLetter), kUpper + kLower);
    EXPECT_EQ(members(isNameChar), "!#$%.0123456789" + kUpper + "_" + kLower);
    EXPECT_EQ(members(isUpperCaseNameChar), "!#$%.0123456789" + kUpper + "_");
    // Before SPC or TAB in a PRINT item, "_" and the marks %, ! and # do not lengthen a name.
    EXPECT_EQ(members(isPrintItemNameChar), "$.0123456789" + kUpper + kLower);
}

TEST(CharClass, UpperCasesOnlyAsciiLetters)
{
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += toUpperAscii(static_cast<char>(b));
    for (int b = 0; b < 256; ++b) {
        char expected = b >= 'a' && b <= 'z' ? static_cast<char>(b - 32) : static_cast<char>(b);
        EXPECT_EQ(all[static_cast<size_t>(b)], expected) << b;
    }
}

struct UpperCase {
    const char* text;
    const char* everyByte;
    const char* outsideStrings;
};

class UpperCasingRules : public testing::TestWithParam<UpperCase> {};

// The byte-by-byte rule of names and file names against the pass over program text (as CHAIN
// reads it): they part at string literals and at Shift-JIS second bytes in a-z.
TEST_P(UpperCasingRules, PartAtLiteralsAndSecondBytes)
{
    const auto& c = GetParam();
    EXPECT_EQ(upperCased(c.text), c.everyByte);
    std::string text = c.text;
    upperCaseOutsideStrings(text, CaseRules::AllOutsideStrings);
    EXPECT_EQ(text, c.outsideStrings);
}

INSTANTIATE_TEST_SUITE_P(Texts, UpperCasingRules,
    testing::Values(UpperCase {"a$=\"b\"", "A$=\"B\"", "A$=\"b\""},
        // 0x83 0x66 is a katakana; its second byte is "f".
        UpperCase {"\x83\x66" "f", "\x83\x46" "F", "\x83\x66" "F"},
        UpperCase {"\xe0\x61\xfc\x7a" "a", "\xe0\x41\xfc\x5a" "A", "\xe0\x61\xfc\x7a" "A"},
        // The pass also takes 0x80 and 0xFD..0xFF as first bytes, which Shift-JIS does not.
        UpperCase {"\x80" "a" "\xfd" "b" "\xff" "c" "d", "\x80" "A" "\xfd" "B" "\xff" "C" "D", "\x80" "a" "\xfd" "b" "\xff" "c" "D"},
        // A half-width katakana (0xA1..0xDF) is a single byte: the letter after it is upper-cased.
        UpperCase {"\xb1" "a", "\xb1" "A", "\xb1" "A"}));

struct Rounding {
    double x;
    double halfAway;
    double halfUpTruncated;
};

class RoundingRules : public testing::TestWithParam<Rounding> {};

TEST_P(RoundingRules, RoundWholeNumbers)
{
    const auto& c = GetParam();
    EXPECT_EQ(roundHalfAwayFromZero(c.x), c.halfAway) << c.x;
    EXPECT_EQ(roundHalfUpTruncated(c.x), c.halfUpTruncated) << c.x;
}

INSTANTIATE_TEST_SUITE_P(Values, RoundingRules,
    testing::Values(Rounding {2.5, 3, 3}, Rounding {-2.5, -3, -2}, Rounding {2.4, 2, 2}, Rounding {-2.4, -2, -1},
        Rounding {-0.7, -1, 0}, Rounding {-1.5, -2, -1}, Rounding {0.5, 1, 1}, Rounding {-0.5, -1, 0},
        // One half less one unit in the last place: adding 0.5 rounds up to 1 (std::round gives 0).
        Rounding {0.49999999999999994, 1, 1}, Rounding {-0.49999999999999994, -1, 0},
        Rounding {32767.5, 32768, 32768}, Rounding {-32768.5, -32769, -32768}));

TEST(RoundingRules, KeepNaNAndInfinities)
{
    EXPECT_TRUE(std::isnan(roundHalfAwayFromZero(NAN)));
    EXPECT_TRUE(std::isnan(roundHalfUpTruncated(NAN)));
    EXPECT_EQ(roundHalfAwayFromZero(-INFINITY), -INFINITY);
    EXPECT_EQ(roundHalfAwayFromZero(INFINITY), INFINITY);
}

} // namespace
} // namespace tessaly::core
