// The keyword lists and the first-match statement recognition.
// Refinements that look past the keyword are done by the executor (core/executor.cpp).
#include "core/keyword_table.h"

namespace tessaly::core {

namespace {

constexpr std::array<std::string_view, kNumericFunctionCount> kNumericNames = {
    "SIN", "COS", "TAN", "LOG", "SQR", "ABS", "EXP", "ATN", "SGN", "CINT", "CSNG", "CDBL", "ASC", "CSRLIN",
    "POS", "CVI", "CVS", "CVD", "VAL", "POINT", "FIX", "INT", "RND", "INSTR", "EOF", "LEN", "PEEK", "DEFUSER",
    "VARPTR", "INP", "USR", "FN", "ERL", "ERR", "SEC", "CSC", "COT", "ARCSIN", "ARCCOS", "ARCSEC", "ARCCSC",
    "ARCCOT", "SINH", "COSH", "TANH", "SECH", "CSCH", "COTH", "ARCSINH", "ARCCOSH", "ARCTANH", "ARCSECH",
    "ARCCSCH", "ARCCOTH", "COSEC", "ASIN", "ACOS", "ASEC", "ACSC", "ACOSEC", "ACOT", "COSECH", "ASINH", "ACOSH",
    "ATANH", "ASECH", "ACSCH", "ACOSECH", "ACOTH", "MAP", "VIEW", "WINDOW", "LOF", "PEN", "ROUND", "SEGPTR",
    "LOC",
};

constexpr std::array<std::string_view, kStringFunctionCount> kStringNames = {
    "CHR$", "LEFT$", "RIGHT$", "MID$", "SPACE$", "HEX$", "OCT$", "MKI$", "MKS$",
    "MKD$", "STR$", "STRING$", "INKEY$", "SPC$", "TAB$", "INPUT$", "DATE$", "TIME$",
};

struct StatementEntry {
    int code;
    std::string_view text;
};

constexpr StatementEntry kStatementEntries[] = {
#define X(name, code, text, area, handler) {code, text},
#include "core/keywords.def"
#undef X
};
static_assert(std::size(kStatementEntries) == kStatementCount, "every statement code has one keyword");

constexpr bool codesAreInOrder()
{
    for (size_t i = 0; i < std::size(kStatementEntries); ++i) {
        if (kStatementEntries[i].code != static_cast<int>(i) + 1)
            return false;
    }
    return true;
}
static_assert(codesAreInOrder(), "keyword codes run 1..110 in list order");

} // namespace

KeywordTable::KeywordTable()
{
    m_statements[0] = " ";
    std::array<int, 256> filled {};
    for (const auto& entry : kStatementEntries) {
        m_statements[static_cast<size_t>(entry.code)] = entry.text;
        auto first = static_cast<uint8_t>(entry.text[0]);
        // Codes 100, 102 and 104 hold descriptions that typed text never matches; they stay searchable
        // like every other slot, since the first-match order must not change.
        m_byFirstByte[first][static_cast<size_t>(filled[first]++)] = static_cast<uint8_t>(entry.code);
    }
    for (int i = 0; i < kNumericFunctionCount; ++i)
        m_numericFunctions[static_cast<size_t>(i + 1)] = kNumericNames[static_cast<size_t>(i)];
    for (int i = 0; i < kStringFunctionCount; ++i)
        m_stringFunctions[static_cast<size_t>(i + 1)] = kStringNames[static_cast<size_t>(i)];
}

std::string_view KeywordTable::statement(int code) const
{
    if (code < 0 || code >= kStatementSlots)
        return {};
    return m_statements[static_cast<size_t>(code)];
}

std::string_view KeywordTable::numericFunction(int code) const
{
    if (code < 0 || code >= kFunctionSlots)
        return {};
    return m_numericFunctions[static_cast<size_t>(code)];
}

std::string_view KeywordTable::stringFunction(int code) const
{
    if (code < 0 || code >= kFunctionSlots)
        return {};
    return m_stringFunctions[static_cast<size_t>(code)];
}

Recognition KeywordTable::recognizeStatement(std::string_view text, int start) const
{
    auto pos = static_cast<size_t>(start < 0 ? 0 : start);
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    if (pos >= text.size())
        return {0, start};
    auto rest = text.substr(pos);
    for (uint8_t code : m_byFirstByte[static_cast<uint8_t>(rest[0])]) {
        if (code == 0)
            break;
        auto keyword = m_statements[code];
        if (rest.substr(0, keyword.size()) == keyword)
            return {code, static_cast<int>(pos + keyword.size())};
    }
    return {0, start};
}

const KeywordTable& keywordTable()
{
    static const KeywordTable table;
    return table;
}

} // namespace tessaly::core
