// The executable form of the program that preparation builds: continuation overrides, source lines,
// the label table and the IF table, and the line lookup that jumps use.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/program_store.h"
#include "core/zeroed_allocator.h"

namespace tessaly::core {

// The number of entries the prepared form may use.
inline constexpr int kEntryLimit = 65533;
inline constexpr int kMaxIfStatements = 4096;

struct Label {
    std::string name; // "*" and the label's characters
    int entry;
};

struct IfStatement {
    int entry;       // the entry of the IF statement
    int branchBase;  // THEN statement, jump after THEN, ELSE statement, jump after ELSE
};

class PreparedProgram {
public:
    PreparedProgram();

    [[nodiscard]] int overrideAt(int entry) const { return m_nextIndexOverride[static_cast<size_t>(entry)]; }
    void setOverride(int entry, int target) { m_nextIndexOverride[static_cast<size_t>(entry)] = target; }
    [[nodiscard]] int sourceAt(int entry) const { return m_sourceIndex[static_cast<size_t>(entry)]; }
    // The last statement piece of a split line (its pieces run from its override to here); 0 when
    // the line was not split.
    [[nodiscard]] int lastPieceOf(int line) const { return m_lastPiece[static_cast<size_t>(line)]; }
    void setLastPiece(int line, int entry) { m_lastPiece[static_cast<size_t>(line)] = entry; }
    void setSource(int entry, int source) { m_sourceIndex[static_cast<size_t>(entry)] = source; }

    std::vector<Label> labels;
    int programIfCount = 0;     // IF statements of the program (direct commands add theirs behind)
    int preparedHighWater = 0;  // the last entry used by the last program preparation
    int lastAllocated = 0;      // the last entry in use (program or direct command)
    int directBase = -1;        // entries above it belong to the direct command being run
    bool prepared = false;

    // The first entry in 1..lastAllocated whose number is lineNumber; 0 when none.
    [[nodiscard]] int findLine(const ProgramStore& store, int lineNumber);
    [[nodiscard]] int findLabel(std::string_view name) const;
    // The IF statement (0-based) whose entry is entry; -1 when none.
    [[nodiscard]] int findIf(int entry) const;
    [[nodiscard]] int ifCount() const { return static_cast<int>(m_ifs.size()); }
    [[nodiscard]] const IfStatement& ifAt(int k) const { return m_ifs[static_cast<size_t>(k)]; }
    void addIf(int entry, int branchBase);
    // Keeps the first count IF statements.
    void truncateIfs(int count);

private:
    // Zeroed without being written: a short program touches only the pages of its own entries.
    using EntryTable = std::vector<int32_t, ZeroedAllocator<int32_t>>;
    EntryTable m_nextIndexOverride;
    EntryTable m_sourceIndex;
    EntryTable m_lastPiece;
    std::vector<IfStatement> m_ifs;
    std::unordered_map<int32_t, int32_t> m_ifByEntry;
    // Line lookup, rebuilt when the store or the used range changes.
    std::unordered_map<int32_t, int32_t> m_lineIndex;
    uint32_t m_indexRevision = ~0U;
    int m_indexLimit = -1;
};

} // namespace tessaly::core
