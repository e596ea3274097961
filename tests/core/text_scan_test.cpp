// The scans that statements share: separators inside quotes or parentheses do not count.
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

TEST(QuoteState, EachQuoteOpensOrClosesAndALineEndCloses)
{
    QuoteState quotes;
    std::string inside;
    std::string taken;
    for (char c : std::string("A\"B\"\"C")) {
        taken += quotes.takesQuote(c) ? 'q' : '.';
        inside += quotes.inside() ? 'i' : 'o';
    }
    EXPECT_EQ(taken, ".q.qq.");
    EXPECT_EQ(inside, "oiioii");
    quotes.endLine();
    EXPECT_FALSE(quotes.inside());
}

struct FindCase {
    const char* text;
    size_t from;
    size_t found;
    bool endsQuoted;
};

class FindOutsideQuotes : public testing::TestWithParam<FindCase> {};

// Looks for "=" or a quote mark: the quote marks themselves are never offered.
TEST_P(FindOutsideQuotes, SkipsLiteralsAndTheirQuotes)
{
    const auto& c = GetParam();
    std::string_view text = c.text;
    bool endsQuoted = false;
    auto found = findOutsideQuotesIf(text, c.from, [&](size_t pos) { return text[pos] == '=' || text[pos] == '"'; }, &endsQuoted);
    EXPECT_EQ(found, c.found) << c.text;
    EXPECT_EQ(endsQuoted, c.endsQuoted) << c.text;
    EXPECT_EQ(findOutsideQuotes(text, "=", c.from), c.found) << c.text;
}

constexpr size_t kNone = std::string_view::npos;

INSTANTIATE_TEST_SUITE_P(Texts, FindOutsideQuotes,
    testing::Values(FindCase {"A=1", 0, 1, false}, FindCase {"\"=\"=", 0, 3, false}, FindCase {"\"=", 0, kNone, true},
        FindCase {"\"a\"\"=\"", 0, kNone, false},
        // Starting inside a literal reads it as outside: the scan knows only what it has seen.
        FindCase {"\"=\"=", 2, kNone, true}, FindCase {"X=1", 9, kNone, false},
        // Shift-JIS bytes, second bytes like "a" (0x61) and "=" (0x3D is no second byte) among them.
        FindCase {"\x83\x61\"\x82\xa0=\"=", 0, 7, false}, FindCase {"\x83\x61=", 0, 2, false}));

TEST(MatchingParen, CountsDepthOutsideQuotes)
{
    EXPECT_EQ(matchingParen("(A(B)C)", 0), 6U);
    EXPECT_EQ(matchingParen("(A(B)C)", 2), 4U);
    EXPECT_EQ(matchingParen("(\")\")", 0), 4U);
    EXPECT_EQ(matchingParen("(\"(\")", 0), 4U);
    EXPECT_EQ(matchingParen("((A)", 0), kNone);
    EXPECT_EQ(matchingParen("X)", 0), kNone);
}

TEST(TextPieces, TrimBlanksAndDropBytes)
{
    EXPECT_EQ(trimBlanks("  A B  "), "A B");
    EXPECT_EQ(trimBlanks("   "), "");
    EXPECT_EQ(trimBlanks(""), "");
    EXPECT_EQ(trimBlanks("\tA "), "\tA");
    EXPECT_EQ(withoutBytes(" \"A b\" ", "\" "), "Ab");
    EXPECT_EQ(withoutBytes("\x82\xa0 \x82\x20", " "), "\x82\xa0\x82");
}

TEST(TakeLine, SplitsAtAnyOfTheEndBytesAndPassesBeyondTheLast)
{
    std::string_view text = "10 A\r\n20 B\n30";
    size_t pos = 0;
    std::vector<std::string> lines;
    while (pos < text.size())
        lines.emplace_back(takeLine(text, pos, "\r\n"));
    EXPECT_EQ(lines, (std::vector<std::string> {"10 A", "", "20 B", "30"}));
    EXPECT_EQ(pos, text.size() + 1);

    pos = 0;
    EXPECT_EQ(takeLine("A\r\nB", pos, "\n"), "A\r");
    EXPECT_EQ(pos, 3U);
    EXPECT_EQ(takeLine("A\r\nB", pos, "\n"), "B");
    EXPECT_EQ(pos, 5U);
}

} // namespace
} // namespace tessaly::core
