// Small scans over statement text that many statements share: trimming, searching outside string
// literals, matching parentheses. The classes of single characters are core/char_class.h.
#pragma once

#include <string>
#include <string_view>

#include "core/char_class.h"

namespace tessaly::core {

// Follows string literals through text taken one byte at a time: each double quote opens or
// closes one. Nothing else ends a literal here; the scans that also end one at a line end say so.
class QuoteState {
public:
    // Takes the next byte; true when it is a double quote, which has then opened or closed a literal.
    bool takesQuote(char c)
    {
        if (c != '"')
            return false;
        m_inside = !m_inside;
        return true;
    }
    // Inside a literal after the bytes taken so far.
    [[nodiscard]] bool inside() const { return m_inside; }
    // A line end: for the scans in which it ends an open literal.
    void endLine() { m_inside = false; }

private:
    bool m_inside = false;
};

[[nodiscard]] inline std::string trimBlanks(std::string_view text)
{
    auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    auto last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

// The first position at or after from, outside double quotes, where stop(pos) holds; npos when
// none. The quote marks themselves are not offered. endsQuoted, when given, tells whether the text
// ends inside quotes.
template <typename Stop>
[[nodiscard]] size_t findOutsideQuotesIf(std::string_view text, size_t from, Stop stop, bool* endsQuoted = nullptr)
{
    QuoteState quotes;
    for (size_t pos = from; pos < text.size(); ++pos) {
        if (!quotes.takesQuote(text[pos]) && !quotes.inside() && stop(pos))
            return pos;
    }
    if (endsQuoted != nullptr)
        *endsQuoted = quotes.inside();
    return std::string_view::npos;
}

// The first occurrence of word at or after from outside double quotes; npos when none.
[[nodiscard]] inline size_t findOutsideQuotes(std::string_view text, std::string_view word, size_t from)
{
    if (word.empty())
        return std::string_view::npos;
    return findOutsideQuotesIf(
        text, from, [&](size_t pos) { return text[pos] == word[0] && text.compare(pos, word.size(), word) == 0; });
}

// The ")" that closes the "(" at open, outside double quotes; npos when it is missing.
[[nodiscard]] inline size_t matchingParen(std::string_view text, size_t open)
{
    int depth = 0;
    return findOutsideQuotesIf(text, open, [&](size_t pos) {
        if (text[pos] == '(')
            ++depth;
        else if (text[pos] == ')' && --depth == 0)
            return true;
        return false;
    });
}

// The first position at or after from, outside double quotes, whose byte satisfies
// stop(byte, depth), depth being the number of parentheses open there (counted from from);
// npos when none. endDepth, when given, receives the depth where the walk ended.
template <typename Stop>
[[nodiscard]] size_t findAtTopLevel(std::string_view text, size_t from, Stop stop, int* endDepth = nullptr)
{
    int depth = 0;
    size_t pos = findOutsideQuotesIf(text, from, [&](size_t at) {
        char c = text[at];
        if (c == '(')
            ++depth;
        else if (c == ')')
            --depth;
        else
            return stop(c, depth);
        return false;
    });
    if (endDepth != nullptr)
        *endDepth = depth;
    return pos;
}

// Splits text at the separators that stand outside quotes and parentheses; calls piece(text,
// separator) for each piece, separator 0 for the last. Stops early when piece returns false.
template <typename IsSeparator, typename Piece>
bool splitAtTopLevel(std::string_view text, IsSeparator isSeparator, Piece piece)
{
    size_t start = 0;
    for (;;) {
        size_t pos = findAtTopLevel(text, start, [&](char c, int depth) { return depth == 0 && isSeparator(c); });
        if (pos == std::string_view::npos)
            return piece(text.substr(start), '\0');
        if (!piece(text.substr(start, pos - start), text[pos]))
            return false;
        start = pos + 1;
    }
}

// The line of text that starts at pos, up to the first of the bytes in ends (or the text's end),
// without that byte; pos moves past it, so that it stands beyond the text after the last line.
[[nodiscard]] inline std::string_view takeLine(std::string_view text, size_t& pos, std::string_view ends)
{
    // One end byte is searched as a byte: find_first_of tests the set at every position.
    size_t end = ends.size() == 1 ? text.find(ends[0], pos) : text.find_first_of(ends, pos);
    if (end == std::string_view::npos)
        end = text.size();
    auto line = text.substr(pos, end - pos);
    pos = end + 1;
    return line;
}

// The text without the bytes listed in dropped.
[[nodiscard]] inline std::string withoutBytes(std::string_view text, std::string_view dropped)
{
    std::string out;
    for (char c : text) {
        if (dropped.find(c) == std::string_view::npos)
            out += c;
    }
    return out;
}

} // namespace tessaly::core
