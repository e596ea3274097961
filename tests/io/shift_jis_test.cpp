// Shift-JIS <-> UTF-8 conversions.
#include <gtest/gtest.h>

#include "io/shift_jis.h"

namespace tessaly::io {
namespace {

struct Pair {
    const char* sjis;
    const char* utf8;
};

class BothWays : public ::testing::TestWithParam<Pair> {};

TEST_P(BothWays, ConvertsAndComesBack)
{
    EXPECT_EQ(ShiftJisToUtf8(GetParam().sjis), GetParam().utf8);
    EXPECT_EQ(Utf8ToShiftJis(GetParam().utf8), GetParam().sjis);
}

INSTANTIATE_TEST_SUITE_P(ShiftJis, BothWays,
    ::testing::Values(Pair {"PRINT \"A\"\\~", "PRINT \"A\"\\~"}, Pair {"\x82\xa0\x82\xa2", "あい"},
        Pair {"\xb1\xb2\xdf", "ｱｲﾟ"}, Pair {"\x81\x5f", "＼"}, Pair {"\x93\xfa\x96\x7b", "日本"},
        Pair {"\x07\x0d\x1f", "\x07\x0d\x1f"}, Pair {"", ""}));

TEST(ShiftJis, BadBytesAndUnknownCharactersAreReplaced)
{
    EXPECT_EQ(ShiftJisToUtf8("A\x82"), "A\xEF\xBF\xBD");
    EXPECT_EQ(ShiftJisToUtf8("\xFD" "B"), "\xEF\xBF\xBD" "B");
    EXPECT_EQ(Utf8ToShiftJis("A\xF0\x9F\x98\x80" "B"), "A?B");
    EXPECT_EQ(Utf8ToShiftJis("\xC3"), "?");
}

TEST(ShiftJis, LeadBytes)
{
    EXPECT_TRUE(IsLeadByte(0x81));
    EXPECT_TRUE(IsLeadByte(0x9F));
    EXPECT_TRUE(IsLeadByte(0xE0));
    EXPECT_TRUE(IsLeadByte(0xFC));
    EXPECT_FALSE(IsLeadByte(0xA0));
    EXPECT_FALSE(IsLeadByte(0xDF));
    EXPECT_FALSE(IsLeadByte(0x80));
    EXPECT_FALSE(IsLeadByte(0xFD));
}

} // namespace
} // namespace tessaly::io
