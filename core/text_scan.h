// Small scans over statement text that many statements share: trimming, searching outside string
// literals, matching parentheses, the characters of a name.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::core {

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
    bool quoted = false;
    for (size_t pos = from; pos < text.size(); ++pos) {
        if (text[pos] == '"') {
            quoted = !quoted;
            continue;
        }
        if (!quoted && stop(pos))
            return pos;
    }
    if (endsQuoted != nullptr)
        *endsQuoted = quoted;
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
    bool quoted = false;
    for (size_t pos = open; pos < text.size(); ++pos) {
        char c = text[pos];
        if (c == '"')
            quoted = !quoted;
        if (quoted)
            continue;
        if (c == '(')
            ++depth;
        else if (c == ')' && --depth == 0)
            return pos;
    }
    return std::string_view::npos;
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

[[nodiscard]] constexpr char toUpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// The text with its ASCII letters upper-cased (other bytes, Shift-JIS among them, as they are).
[[nodiscard]] inline std::string upperCased(std::string_view text)
{
    std::string out(text);
    for (char& c : out)
        c = toUpperAscii(c);
    return out;
}

[[nodiscard]] constexpr bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// A character that continues a variable name: letters, digits, ".", "_" and the type marks.
[[nodiscard]] constexpr bool isNameChar(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '%' || c == '!' || c == '#' || c == '$';
}

} // namespace tessaly::core
