// The keyword lists and the first-match statement recognition.
// Refinements that look past the keyword are done by the executor (core/executor.cpp).
#include "core/keyword_table.h"

#include <limits>

namespace tessaly::core {

namespace {

struct KeywordEntry {
    int code;
    std::string_view text;
};

constexpr KeywordEntry kStatementEntries[] = {
#define X(name, code, text, area, handler) {code, text},
#include "core/keywords.def"
#undef X
};

constexpr KeywordEntry kNumericEntries[] = {
#define X(name, code, text, shape, handler) {code, text},
#include "core/numeric_functions.def"
#undef X
};

constexpr KeywordEntry kStringEntries[] = {
#define X(name, code, text, shape, handler) {code, text},
#include "core/string_functions.def"
#undef X
};

// A list's codes run 1, 2, 3 ... in list order: a code is its keyword's place in the list.
template <size_t Count>
constexpr bool codesAreInOrder(const KeywordEntry (&entries)[Count])
{
    for (size_t i = 0; i < Count; ++i) {
        if (entries[i].code != static_cast<int>(i) + 1)
            return false;
    }
    return true;
}

static_assert(std::size(kStatementEntries) == kStatementCount, "every statement code has one keyword");
static_assert(std::size(kNumericEntries) == kNumericFunctionCount, "every numeric function code has one name");
static_assert(std::size(kStringEntries) == kStringFunctionCount, "every string function code has one name");
static_assert(codesAreInOrder(kStatementEntries), "statement codes run 1..110 in list order");
static_assert(codesAreInOrder(kNumericEntries), "numeric function codes run 1..77 in list order");
static_assert(codesAreInOrder(kStringEntries), "string function codes run 1..18 in list order");
// Slot 0 of each list stands for no keyword, so the highest code needs count + 1 slots.
static_assert(kStatementCount < kStatementSlots, "the statement list fits its slots");
static_assert(kNumericFunctionCount < kFunctionSlots, "the numeric function list fits its slots");
static_assert(kStringFunctionCount < kFunctionSlots, "the string function list fits its slots");

// The first-byte index holds statement codes in its bytes, at most kCodesPerFirstByte per byte
// with a 0 after the last.
static_assert(kStatementCount <= std::numeric_limits<uint8_t>::max(), "statement codes fit the index's bytes");

constexpr size_t mostKeywordsWithOneFirstByte()
{
    size_t most = 0;
    for (const auto& entry : kStatementEntries) {
        size_t count = 0;
        for (const auto& other : kStatementEntries)
            count += other.text[0] == entry.text[0] ? 1 : 0;
        most = count > most ? count : most;
    }
    return most;
}
static_assert(mostKeywordsWithOneFirstByte() < KeywordTable::kCodesPerFirstByte,
    "the keywords that share a first byte fit its row of the index, 0-terminated");

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
    for (const auto& entry : kNumericEntries)
        m_numericFunctions[static_cast<size_t>(entry.code)] = entry.text;
    for (const auto& entry : kStringEntries)
        m_stringFunctions[static_cast<size_t>(entry.code)] = entry.text;
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
