// Shift-JIS <-> UTF-8 conversions and lead bytes.
// The interpreter's own double-byte handling is tested where it is used.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "core/shift_jis.h"

namespace tessaly::core {
namespace {

using namespace std::string_literals;

struct Pair {
    std::string from;
    std::string to;
};

class BothWays : public ::testing::TestWithParam<Pair> {};

TEST_P(BothWays, ConvertsAndComesBack)
{
    EXPECT_EQ(ShiftJisToUtf8(GetParam().from), GetParam().to);
    EXPECT_EQ(Utf8ToShiftJis(GetParam().to), GetParam().from);
}

INSTANTIATE_TEST_SUITE_P(ShiftJis, BothWays,
    ::testing::Values(Pair {"PRINT \"A\"\\~", "PRINT \"A\"\\~"}, Pair {"\\\x82\xa0~", "\\あ~"}, Pair {"\x82\xa0\x82\xa2", "あい"},
        Pair {"\xa1\xb1\xdf", "｡ｱﾟ"}, Pair {"\x81\x5f", "＼"}, Pair {"\x83\x5c\x95\x5c", "ソ表"}, Pair {"\x93\xfa\x96\x7b", "日本"},
        Pair {"\x07\x82\xa0\x1b\r\n"s + '\0', "\x07あ\x1b\r\n"s + '\0'}, Pair {"", ""}));

class ToUtf8Only : public ::testing::TestWithParam<Pair> {};

TEST_P(ToUtf8Only, ReplacesWhatDoesNotConvert) { EXPECT_EQ(ShiftJisToUtf8(GetParam().from), GetParam().to); }

INSTANTIATE_TEST_SUITE_P(ShiftJis, ToUtf8Only,
    ::testing::Values(Pair {"A\x82", "A\uFFFD"}, Pair {"\x82\r", "\uFFFD\r"}, Pair {"\xfd" "B", "\uFFFD" "B"},
        Pair {"\x80\xa0", "\uFFFD\uFFFD"}, Pair {"\x85" "A", "\uFFFD" "A"}, Pair {"\x85\x9f" "B", "\uFFFD" "B"}));

class ToShiftJisOnly : public ::testing::TestWithParam<Pair> {};

TEST_P(ToShiftJisOnly, ReplacesWhatDoesNotConvert) { EXPECT_EQ(Utf8ToShiftJis(GetParam().from), GetParam().to); }

INSTANTIATE_TEST_SUITE_P(ShiftJis, ToShiftJisOnly,
    ::testing::Values(Pair {"A\U0001F600B", "A?B"}, Pair {"é", "?"}, Pair {"\xc3", "?"}, Pair {"\xe3\x81" "A", "?A"},
        Pair {"\x80", "?"}, Pair {"\xc0\xaf", "??"}, Pair {"\xed\xa0\x80", "?"}, Pair {"¥‾", "\\~"}));

// The exact conversion stops at the first character without a Shift-JIS form (or a broken
// sequence) and tells its offset; what converts before it is kept.
struct ExactCase {
    std::string utf8;
    std::optional<size_t> stop;
    std::string sjis;
};

class ToShiftJisExactly : public ::testing::TestWithParam<ExactCase> {};

TEST_P(ToShiftJisExactly, StopsAtTheFirstCharacterWithoutAForm)
{
    std::string sjis = "old";
    EXPECT_EQ(Utf8ToShiftJisExact(GetParam().utf8, sjis), GetParam().stop);
    EXPECT_EQ(sjis, GetParam().sjis);
}

INSTANTIATE_TEST_SUITE_P(ShiftJis, ToShiftJisExactly,
    ::testing::Values(ExactCase {"10 ? \"あ日ｱ\"¥", std::nullopt, "10 ? \"\x82\xa0\x93\xfa\xb1\"\\"},
        ExactCase {"", std::nullopt, ""}, ExactCase {"AB\U0001F600C", 2, "AB"}, ExactCase {"あé", 3, "\x82\xa0"},
        ExactCase {"A\xe3\x81", 1, "A"}, ExactCase {"\xed\xa0\x80", 0, ""}, ExactCase {"?", std::nullopt, "?"}));

TEST(ShiftJis, WellFormedUtf8)
{
    for (std::string text : {"", "PRINT", "あ日本", "\U0001F600", "é\r\n", "\xef\xbb\xbf" "A"})
        EXPECT_TRUE(IsValidUtf8(text)) << text;
    // Shift-JIS bytes: a stray trail byte, a lead byte cut short, a lead byte no UTF-8 has.
    for (std::string text : {"\x82\xa0", "\xe3\x81", "A\xb1", "\xfc\x40", "\xc3"})
        EXPECT_FALSE(IsValidUtf8(text)) << text;
}

TEST(ShiftJis, LeadBytes)
{
    for (uint8_t b : {0x81, 0x88, 0x9F, 0xE0, 0xEA, 0xFC})
        EXPECT_TRUE(IsLeadByte(b)) << int {b};
    for (uint8_t b : {0x00, 0x40, 0x5C, 0x7F, 0x80, 0xA0, 0xA1, 0xDF, 0xFD, 0xFF})
        EXPECT_FALSE(IsLeadByte(b)) << int {b};
}

} // namespace
} // namespace tessaly::core
