// Storing, replacing and deleting program lines in number order.
// Line entry's decisions (numbered line or direct command) are in core/line_entry.cpp.
#include "core/program_store.h"

#include <algorithm>
#include <functional>
#include <numeric>

#include "core/text_scan.h"

namespace tessaly::core {

ProgramStore::ProgramStore()
    : m_numbers(kEntryCapacity)
{
}

const std::string& ProgramStore::EntryTexts::find(int entry) const
{
    static const std::string kNoText;
    const auto& block = m_blocks[static_cast<size_t>(entry) >> kBlockBits];
    return block ? (*block)[static_cast<size_t>(entry) & (kBlockSize - 1)] : kNoText;
}

std::string& ProgramStore::EntryTexts::at(int entry)
{
    auto& block = m_blocks[static_cast<size_t>(entry) >> kBlockBits];
    if (!block)
        block = std::make_unique<Block>();
    return (*block)[static_cast<size_t>(entry) & (kBlockSize - 1)];
}

int32_t leadingNumber(std::string_view text)
{
    size_t pos = 0;
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    int64_t value = 0;
    for (; pos < text.size() && text[pos] >= '0' && text[pos] <= '9'; ++pos) {
        value = value * 10 + (text[pos] - '0');
        if (value > 999999999) // far above every valid line number; keeps the value in range
            value = 999999999;
    }
    return static_cast<int32_t>(value);
}

int rewriteQuestionMarks(std::string& text, QuestionMarks which)
{
    static constexpr std::string_view kPrint = "PRINT ";
    int count = 0;
    size_t mark = which == QuestionMarks::FirstOnly ? text.find('?') : findOutsideQuotes(text, "?", 0);
    while (mark != std::string::npos) {
        text.replace(mark, 1, kPrint);
        ++count;
        if (which == QuestionMarks::FirstOnly)
            break;
        // The rewrite holds no quote, so the scan goes on outside quotes after it.
        mark = findOutsideQuotes(text, "?", mark + kPrint.size());
    }
    return count;
}

StoreOutcome ProgramStore::enterLine(std::string_view text, std::string_view numberText, bool rewrite)
{
    // The store never holds more than kMaxProgramLines entries, so entry count + 1 is free.
    if (m_count + 1 >= kEntryCapacity)
        return StoreOutcome::StoreFull;
    ++m_count;
    auto& entry = m_texts.at(m_count);
    auto lineEnd = text.find_first_of("\r\n");
    entry.assign(text.substr(0, lineEnd));
    if (rewrite)
        rewriteQuestionMarks(entry, QuestionMarks::OutsideQuotes);
    entry += "\r\n";
    m_numbers[static_cast<size_t>(m_count)] = leadingNumber(numberText);
    ++m_revision;
    return insertSorted(numberText);
}

void ProgramStore::repairOrder()
{
    // Puts entries 1..count-1 in ascending order; of equal numbers the one that comes last stays.
    // Entries stored by line entry are known to be in order: only a loaded program or a line
    // left behind by a refusal need the pass.
    if (m_ordered)
        return;
    int older = m_count - 1;
    bool ordered = true;
    for (int i = 2; i <= older; ++i) {
        if (m_numbers[static_cast<size_t>(i - 1)] >= m_numbers[static_cast<size_t>(i)]) {
            ordered = false;
            break;
        }
    }
    if (ordered)
        return;
    std::vector<int> order(static_cast<size_t>(older));
    std::iota(order.begin(), order.end(), 1);
    std::stable_sort(order.begin(), order.end(), [this](int a, int b) {
        return m_numbers[static_cast<size_t>(a)] < m_numbers[static_cast<size_t>(b)];
    });
    std::vector<int32_t> numbers;
    std::vector<std::string> texts;
    for (size_t k = 0; k < order.size(); ++k) {
        auto i = static_cast<size_t>(order[k]);
        bool laterTwin = k + 1 < order.size() && m_numbers[static_cast<size_t>(order[k + 1])] == m_numbers[i];
        if (laterTwin)
            continue;
        numbers.push_back(m_numbers[i]);
        texts.push_back(std::move(m_texts.at(static_cast<int>(i))));
    }
    auto newest = static_cast<size_t>(m_count);
    int32_t newestNumber = m_numbers[newest];
    std::string newestText = std::move(m_texts.at(static_cast<int>(newest)));
    for (size_t k = 0; k < numbers.size(); ++k) {
        m_numbers[k + 1] = numbers[k];
        m_texts.at(static_cast<int>(k + 1)) = std::move(texts[k]);
    }
    m_count = static_cast<int>(numbers.size()) + 1;
    m_numbers[static_cast<size_t>(m_count)] = newestNumber;
    m_texts.at(m_count) = std::move(newestText);
}

void ProgramStore::moveEntry(size_t from, size_t to)
{
    m_numbers[to] = m_numbers[from];
    m_texts.at(static_cast<int>(to)) = std::move(m_texts.at(static_cast<int>(from)));
}

StoreOutcome ProgramStore::insertSorted(std::string_view numberText)
{
    ++m_revision;
    repairOrder();
    auto newest = static_cast<size_t>(m_count);
    int32_t number = m_numbers[newest];
    // A refused line stays as the last entry, unless the program is full: then it is dropped.
    // Every other outcome leaves all entries in order.
    m_ordered = true;
    bool full = m_count > kMaxProgramLines;
    if (number < 1 || number > kHighestLineNumber) {
        if (full)
            return dropNewest(StoreOutcome::StoreFull);
        m_ordered = false;
        return StoreOutcome::NumberOutOfRange;
    }

    std::string line = m_texts.at(static_cast<int>(newest));
    line.erase(0, line.find_first_not_of(' ') == std::string::npos ? line.size() : line.find_first_not_of(' '));
    if (static_cast<int>(line.size()) > kMaxStoredLineLength) {
        if (full)
            return dropNewest(StoreOutcome::StoreFull);
        m_texts.at(static_cast<int>(newest)) = line.substr(0, kCutLineLength);
        m_ordered = false;
        return StoreOutcome::LineTooLong;
    }

    // The older entries are in order now: the first with a number not below the new one.
    auto older = m_numbers.begin() + 1;
    int place = static_cast<int>(std::lower_bound(older, older + (m_count - 1), number) - m_numbers.begin());
    auto at = static_cast<size_t>(place);
    // A number alone deletes the line; it changes nothing when there is no such line.
    auto end = line.find_last_not_of(" \r\n");
    std::string_view body(line.data(), end == std::string::npos ? 0 : end + 1);
    bool numberAlone = body == numberText;
    bool replaces = place < m_count && m_numbers[at] == number;
    if (!replaces) {
        if (numberAlone)
            return dropNewest(StoreOutcome::Stored);
        if (full)
            return dropNewest(StoreOutcome::StoreFull);
    }
    if (replaces) {
        m_texts.at(static_cast<int>(at)) = line;
        m_texts.at(static_cast<int>(newest)).clear();
        m_numbers[newest] = 0;
        --m_count;
    } else if (place < m_count) {
        for (auto i = newest; i > at; --i)
            moveEntry(i - 1, i);
        m_numbers[at] = number;
        m_texts.at(static_cast<int>(at)) = line;
    } else {
        m_texts.at(static_cast<int>(at)) = line;
    }
    if (numberAlone) {
        removeLine(place);
        return StoreOutcome::Stored;
    }
    auto& stored = m_texts.at(static_cast<int>(at));
    stored.erase(0, std::min(stored.find_first_not_of(' '), stored.size()));
    return StoreOutcome::Stored;
}

StoreOutcome ProgramStore::dropNewest(StoreOutcome outcome)
{
    auto newest = static_cast<size_t>(m_count);
    m_texts.at(static_cast<int>(newest)).clear();
    m_numbers[newest] = 0;
    --m_count;
    return outcome;
}

void ProgramStore::removeLine(int entry)
{
    if (entry < 1 || entry > m_count)
        return;
    for (auto i = static_cast<size_t>(entry); i < static_cast<size_t>(m_count); ++i)
        moveEntry(i + 1, i);
    m_texts.at(m_count).clear();
    m_numbers[static_cast<size_t>(m_count)] = 0;
    --m_count;
    ++m_revision;
}

void ProgramStore::replaceAll(std::vector<Line> lines)
{
    clear();
    size_t count = std::min(lines.size(), static_cast<size_t>(kMaxProgramLines));
    for (size_t i = 0; i < count; ++i) {
        m_numbers[i + 1] = lines[i].number;
        m_texts.at(static_cast<int>(i + 1)) = std::move(lines[i].text);
    }
    m_count = static_cast<int>(count);
    m_ordered = std::is_sorted(m_numbers.begin() + 1, m_numbers.begin() + 1 + m_count, std::less_equal<>());
}

void ProgramStore::clear()
{
    for (int i = 1; i <= m_count; ++i) {
        m_texts.at(static_cast<int>(i)).clear();
        m_numbers[static_cast<size_t>(i)] = 0;
    }
    m_count = 0;
    m_ordered = true;
    ++m_revision;
}

void ProgramStore::setEntry(int entry, int number, std::string text)
{
    m_numbers[static_cast<size_t>(entry)] = number;
    m_texts.at(entry) = std::move(text);
    if (entry >= 1 && entry <= m_count)
        m_ordered = false;
    ++m_revision;
}

} // namespace tessaly::core
