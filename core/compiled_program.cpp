#include "core/compiled_program.h"

#include "core/program_store.h"

namespace tessaly::core {

bool CompiledProgram::untried(int entry) const
{
    if (!m_enabled || !ProgramStore::isValidEntry(entry))
        return false;
    return m_tried.empty() || !m_tried[static_cast<size_t>(entry)];
}

void CompiledProgram::remember(int entry, std::unique_ptr<CompiledStatement> statement)
{
    if (!ProgramStore::isValidEntry(entry))
        return;
    if (m_statements.empty()) {
        m_statements.resize(kEntryCapacity);
        m_tried.resize(kEntryCapacity);
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
