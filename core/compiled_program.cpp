#include "core/compiled_program.h"

#include <algorithm>

#include "core/program_store.h"

namespace tessaly::core {

bool CompiledProgram::untried(int entry) const
{
    if (!m_enabled || !ProgramStore::isValidEntry(entry))
        return false;
    return static_cast<size_t>(entry) >= m_tried.size() || !m_tried[static_cast<size_t>(entry)];
}

void CompiledProgram::remember(int entry, std::unique_ptr<CompiledStatement> statement)
{
    if (!ProgramStore::isValidEntry(entry))
        return;
    // The tables grow to the highest entry run so far (doubling), not to the whole entry range.
    auto needed = static_cast<size_t>(entry) + 1;
    if (needed > m_statements.size()) {
        size_t size = std::max(needed, std::min(m_statements.size() * 2, static_cast<size_t>(kEntryCapacity)));
        m_statements.resize(size);
        m_tried.resize(size);
    }
    if (!m_tried[static_cast<size_t>(entry)])
        m_triedEntries.push_back(entry);
    m_statements[static_cast<size_t>(entry)] = std::move(statement);
    m_tried[static_cast<size_t>(entry)] = true;
}

void CompiledProgram::dropAll(uint32_t revision)
{
    m_revision = revision;
    for (int entry : m_triedEntries) {
        m_statements[static_cast<size_t>(entry)].reset();
        m_tried[static_cast<size_t>(entry)] = false;
    }
    m_triedEntries.clear();
}

} // namespace tessaly::core
