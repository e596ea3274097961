// The program as a sorted array of numbered text lines, and the working entries above it.
// Deciding what an entered line is (line entry) lives in core/line_entry; preparation in core/preparation.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/zeroed_allocator.h"

namespace tessaly::core {

// Entries are numbered 1..count(); entry 0 is never a program line. Entries above count()
// are the working entries of preparation.
inline constexpr int kEntryCapacity = 65536;
inline constexpr int kHighestLineNumber = 65536;
// A stored line (without leading blanks, with its CR LF) may hold at most this many bytes.
inline constexpr int kMaxStoredLineLength = 257;
inline constexpr int kCutLineLength = 255;
// The most entries the program may hold. Direct commands (NEW, SAVE, LIST and DELETE included)
// are placed behind the program and need room below the entry limit of preparation (65533, less
// the 6 entries a direct command may use): a line that would make the program longer is refused
// with "Out of memory in " 0 and the program stays as it was.
inline constexpr int kMaxProgramLines = 65526;

enum class StoreOutcome : uint8_t {
    Stored,             // inserted, replaced or deleted (a number alone)
    NumberOutOfRange,   // "Out of memory in " 0: the entry stays as the last entry
    LineTooLong,        // "Line buffer overflow in " n: the cut entry stays as the last entry
    StoreFull,          // "Out of memory in " 0: the program already holds kMaxProgramLines entries
};

class ProgramStore {
public:
    ProgramStore();

    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] int numberAt(int entry) const { return m_numbers[static_cast<size_t>(entry)]; }
    [[nodiscard]] const std::string& textAt(int entry) const { return m_texts.find(entry); }
    [[nodiscard]] static bool isValidEntry(int entry) { return entry >= 0 && entry < kEntryCapacity; }

    // Stores the line text (which begins with its digits); numberText is the run of digits at its start.
    // Any "?" outside quotes becomes "PRINT " (unless rewrite is false: a pasted line keeps it), CR LF
    // is appended, the line is put in its place.
    StoreOutcome enterLine(std::string_view text, std::string_view numberText, bool rewrite = true);
    // Puts entry count() in its place after the repair pass over the older entries.
    StoreOutcome insertSorted(std::string_view numberText);

    // Replaces the whole program with the given lines, in the given order (program loading); lines
    // beyond kMaxProgramLines are left out.
    struct Line {
        int number;
        std::string text;
    };
    void replaceAll(std::vector<Line> lines);
    void clear();
    // Removes program entry i (1..count()); the entries behind it move down.
    void removeLine(int entry);

    // Working entries (preparation and the "?" rewrite of the executor); entry must be valid.
    void setEntry(int entry, int number, std::string text);
    // A text that may be changed: the store counts as changed.
    std::string& mutableText(int entry)
    {
        ++m_revision;
        return m_texts.at(entry);
    }

    // Bumped by every change to any entry; caches keyed on it stay valid while it is unchanged.
    [[nodiscard]] uint32_t revision() const { return m_revision; }

private:
    void repairOrder();
    StoreOutcome dropNewest(StoreOutcome outcome);
    void moveEntry(size_t from, size_t to);

    // The entries' texts in blocks made when an entry of theirs is first written, so that a short
    // program makes a few hundred strings, not 65,536. Blocks never move: a reference to a text stays
    // good while other entries are written.
    class EntryTexts {
    public:
        [[nodiscard]] const std::string& find(int entry) const;
        std::string& at(int entry);

    private:
        static constexpr int kBlockBits = 10;
        static constexpr int kBlockSize = 1 << kBlockBits;
        using Block = std::array<std::string, kBlockSize>;
        std::array<std::unique_ptr<Block>, kEntryCapacity / kBlockSize> m_blocks;
    };

    int m_count = 0;
    bool m_ordered = true; // entries 1..count are known to be in strictly ascending order
    uint32_t m_revision = 0;
    // Zeroed without being written: only the pages of the entries in use are ever touched.
    std::vector<int32_t, ZeroedAllocator<int32_t>> m_numbers;
    EntryTexts m_texts;
};

// Which "?" of a text rewriteQuestionMarks writes out as "PRINT ".
enum class QuestionMarks : uint8_t {
    // Every "?" outside double quotes: a line typed in or a direct command, before it is stored.
    OutsideQuotes,
    // Only the first "?", quoted or not: a stored entry whose statement is "?" (a line read from a
    // program file keeps its "?"). Loading an entry starts at its first "?", "*", apostrophe or
    // letter after the number, so a statement "?" loaded from it is that first "?", wherever the
    // quotes of a malformed line stand.
    FirstOnly,
};

// "?" is short for PRINT: writes "PRINT " in place of the chosen "?" of text. Returns how many.
int rewriteQuestionMarks(std::string& text, QuestionMarks which);
// The decimal value of the leading digits of text (after leading blanks); 0 when there are none.
int32_t leadingNumber(std::string_view text);

} // namespace tessaly::core
