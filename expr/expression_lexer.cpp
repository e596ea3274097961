#include "expr/expression_lexer.h"

#include "core/char_class.h"

namespace tessaly::expr {

using core::isDigit;

bool startsWithWord(std::string_view text, size_t pos, std::string_view word)
{
    if (pos + word.size() > text.size())
        return false;
    for (size_t k = 0; k < word.size(); ++k) {
        if (core::toUpperAscii(text[pos + k]) != word[k])
            return false;
    }
    return true;
}

bool leadingMinusWraps(std::string_view scope)
{
    for (std::string_view word : {" AND", " NOT", " OR", " XOR", " IMP", " EQV", " \\", " MOD", " THEN", " ELSE"}) {
        if (scope.find(word) != std::string_view::npos)
            return false;
    }
    return true;
}

std::string_view readNumberLiteral(std::string_view text, size_t& pos)
{
    auto at = [&](size_t k) { return k < text.size() ? text[k] : '\0'; };
    size_t start = pos;
    while (isDigit(at(pos)))
        ++pos;
    if (at(pos) == '.') {
        ++pos;
        while (isDigit(at(pos)))
            ++pos;
    }
    char e = core::toUpperAscii(at(pos));
    if (e == 'E' || e == 'D') {
        size_t mark = pos + 1;
        if (at(mark) == '+' || at(mark) == '-')
            ++mark;
        if (isDigit(at(mark))) {
            pos = mark;
            while (isDigit(at(pos)))
                ++pos;
        }
    }
    std::string_view spelling = text.substr(start, pos - start);
    // A type mark after a number (1#, 2%) does not change its value.
    if (at(pos) == '#' || at(pos) == '!' || at(pos) == '%')
        ++pos;
    return spelling;
}

bool readHexOrOctalLiteral(std::string_view text, size_t& pos, int32_t& value)
{
    auto at = [&](size_t k) { return k < text.size() ? text[k] : '\0'; };
    ++pos;
    int base = 8;
    char kind = core::toUpperAscii(at(pos));
    if (kind == 'H') {
        base = 16;
        ++pos;
    } else if (kind == 'O') {
        ++pos;
    } else if (!isDigit(kind)) {
        return false;
    }
    uint32_t number = 0;
    for (;;) {
        char c = core::toUpperAscii(at(pos));
        int digit = isDigit(c) ? c - '0' : (c >= 'A' && c <= 'F' ? c - 'A' + 10 : 99);
        if (digit >= base)
            break;
        number = number * static_cast<uint32_t>(base) + static_cast<uint32_t>(digit);
        ++pos;
    }
    value = static_cast<int32_t>(number);
    return true;
}

StringLiteral readStringLiteral(std::string_view text, size_t& pos, Quotes quotes, std::string& bytes)
{
    bytes.clear();
    size_t from = pos + 1;
    for (;;) {
        size_t close = text.find('"', from);
        if (close == std::string_view::npos)
            return StringLiteral::Unterminated;
        bytes.append(text.substr(from, close - from));
        bool doubled = quotes == Quotes::DoubledIsQuote && close + 1 < text.size() && text[close + 1] == '"';
        if (!doubled) {
            pos = close + 1;
            break;
        }
        bytes += '"';
        from = close + 2;
    }
    return bytes.size() > kMaxStringLength ? StringLiteral::TooLong : StringLiteral::Read;
}

bool readBinaryOperator(std::string_view text, size_t& pos, Op& op)
{
    char c = pos < text.size() ? text[pos] : '\0';
    char next = pos + 1 < text.size() ? text[pos + 1] : '\0';
    auto take = [&](Op found, size_t length) {
        op = found;
        pos += length;
        return true;
    };
    static constexpr std::pair<std::string_view, Op> kMarkPairs[] = {{"<=", Op::LessEqual}, {"=<", Op::LessEqual},
        {">=", Op::GreaterEqual}, {"=>", Op::GreaterEqual}, {"<>", Op::NotEqual}, {"><", Op::NotEqual}};
    for (const auto& [marks, found] : kMarkPairs) {
        if (c == marks[0] && next == marks[1])
            return take(found, 2);
    }
    static constexpr std::pair<char, Op> kMarks[] = {{'+', Op::Add}, {'-', Op::Subtract}, {'*', Op::Multiply},
        {'/', Op::Divide}, {'^', Op::Power}, {'\\', Op::IntDivide}, {'<', Op::Less}, {'>', Op::Greater},
        {'=', Op::Equal}};
    for (const auto& [mark, found] : kMarks) {
        if (c == mark)
            return take(found, 1);
    }
    static constexpr std::pair<std::string_view, Op> kWords[] = {
        {"MOD", Op::Mod}, {"AND", Op::And}, {"OR", Op::Or}, {"XOR", Op::Xor}, {"EQV", Op::Eqv}, {"IMP", Op::Imp}};
    for (const auto& [word, found] : kWords) {
        if (startsWithWord(text, pos, word))
            return take(found, word.size());
    }
    return false;
}

} // namespace tessaly::expr
