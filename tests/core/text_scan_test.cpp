// The top-level scans that statements share: separators inside quotes or parentheses do not count.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/text_scan.h"

namespace tessaly::core {
namespace {

struct SplitCase {
    const char* text;
    std::vector<std::string> pieces;
    std::string separators;
};

class SplitAtTopLevel : public testing::TestWithParam<SplitCase> {};

TEST_P(SplitAtTopLevel, SplitsOnlyAtTheOuterSeparators)
{
    const auto& c = GetParam();
    std::vector<std::string> pieces;
    std::string separators;
    splitAtTopLevel(c.text, [](char ch) { return ch == ',' || ch == ';'; }, [&](std::string_view piece, char sep) {
        pieces.emplace_back(piece);
        separators += sep == 0 ? '.' : sep;
        return true;
    });
    EXPECT_EQ(pieces, c.pieces);
    EXPECT_EQ(separators, c.separators);
}

INSTANTIATE_TEST_SUITE_P(Texts, SplitAtTopLevel,
    testing::Values(SplitCase {"", {""}, "."}, SplitCase {"A,B;C", {"A", "B", "C"}, ",;."},
        SplitCase {"F(1,2),\"x,y\";", {"F(1,2)", "\"x,y\"", ""}, ",;."},
        SplitCase {"(1,(2,3)),4", {"(1,(2,3))", "4"}, ",."}, SplitCase {"1),2", {"1),2"}, "."},
        SplitCase {"\"(\",1", {"\"(\"", "1"}, ",."}));

TEST(FindAtTopLevel, ReportsTheDepthWhereItStopped)
{
    int depth = -1;
    auto stop = [](char c, int) { return c == ':'; };
    EXPECT_EQ(findAtTopLevel("A(1:2", 0, stop, &depth), 3U);
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(findAtTopLevel("\":\"", 0, stop, &depth), std::string_view::npos);
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(findAtTopLevel("A:B:C", 2, stop), 3U);
}

} // namespace
} // namespace tessaly::core
