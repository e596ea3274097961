// Lookups in the prepared program: line numbers (indexed), labels and IF statements.
// Building the prepared form is core/preparation.cpp.
#include "core/prepared_program.h"

namespace tessaly::core {

PreparedProgram::PreparedProgram()
    : m_nextIndexOverride(kEntryCapacity)
    , m_sourceIndex(kEntryCapacity)
    , m_lastPiece(kEntryCapacity)
{
}

int PreparedProgram::findLine(const ProgramStore& store, int lineNumber)
{
    int limit = lastAllocated > store.count() ? lastAllocated : store.count();
    if (limit >= kEntryCapacity)
        limit = kEntryCapacity - 1;
    if (store.revision() != m_indexRevision || limit != m_indexLimit) {
        m_lineIndex.clear();
        m_lineIndex.reserve(static_cast<size_t>(limit) + 1);
        // The first entry with a number wins, as a search in entry order would find it.
        for (int entry = 1; entry <= limit; ++entry)
            m_lineIndex.try_emplace(store.numberAt(entry), entry);
        m_indexRevision = store.revision();
        m_indexLimit = limit;
    }
    auto found = m_lineIndex.find(lineNumber);
    return found == m_lineIndex.end() ? 0 : found->second;
}

int PreparedProgram::findLabel(std::string_view name) const
{
    for (const auto& label : labels) {
        if (label.name == name)
            return label.entry;
    }
    return 0;
}

int PreparedProgram::findIf(int entry) const
{
    auto found = m_ifByEntry.find(entry);
    return found == m_ifByEntry.end() ? -1 : found->second;
}

void PreparedProgram::addIf(int entry, int branchBase)
{
    m_ifByEntry.try_emplace(entry, static_cast<int32_t>(m_ifs.size()));
    m_ifs.push_back({entry, branchBase});
}

void PreparedProgram::truncateIfs(int count)
{
    while (static_cast<int>(m_ifs.size()) > count) {
        auto found = m_ifByEntry.find(m_ifs.back().entry);
        if (found != m_ifByEntry.end() && found->second == static_cast<int32_t>(m_ifs.size()) - 1)
            m_ifByEntry.erase(found);
        m_ifs.pop_back();
    }
}

} // namespace tessaly::core
