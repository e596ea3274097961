// The compiled statements of the prepared entries, made as entries first run and dropped whenever
// the program store changes (any edit, LOAD, MERGE, CHAIN, DELETE, RENUM, NEW, and the preparation
// of a run or a direct command).
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/compiled_statement.h"

namespace tessaly::core {

class CompiledProgram {
public:
    // enabled false: every statement runs from its text (the reference for comparisons).
    explicit CompiledProgram(bool enabled)
        : m_enabled(enabled)
    {
    }

    // Off: every statement runs from its text from now on.
    void setEnabled(bool enabled)
    {
        m_enabled = enabled;
        dropAll(m_revision);
    }

    // The compiled statement of the entry, nullptr when there is none (yet); revision is the
    // program store's, which drops everything compiled for an older one.
    CompiledStatement* statementAt(int entry, uint32_t revision)
    {
        if (revision != m_revision)
            dropAll(revision);
        if (m_triedEntries.empty() || entry < 0 || static_cast<size_t>(entry) >= m_statements.size())
            return nullptr;
        return m_statements[static_cast<size_t>(entry)].get();
    }
    // Whether the entry still has to be tried (statementAt first, for the revision).
    [[nodiscard]] bool untried(int entry) const;
    // Keeps what compiling the entry gave (nullptr: it runs from its text from now on).
    void remember(int entry, std::unique_ptr<CompiledStatement> statement);

private:
    void dropAll(uint32_t revision);

    bool m_enabled;
    uint32_t m_revision = 0;
    // Indexed by entry, grown to the highest entry remembered and kept: dropping clears only the
    // entries that were tried, so a program that is run again and again pays for its own entries only.
    std::vector<std::unique_ptr<CompiledStatement>> m_statements;
    std::vector<bool> m_tried;
    std::vector<int> m_triedEntries;
};

} // namespace tessaly::core
