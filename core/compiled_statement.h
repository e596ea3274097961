// A statement read once, the first time its entry runs: it runs without its text being copied,
// recognised and parsed again. The text stays the truth: a statement that cannot be compiled, or
// that the compiled form does not cover, runs from its text as before, with the same results.
#pragma once

#include <memory>
#include <string_view>

#include "core/outcome.h"

namespace tessaly::core {

class Interpreter;

class CompiledStatement {
public:
    explicit CompiledStatement(int code)
        : m_code(code)
    {
    }
    virtual ~CompiledStatement() = default;
    CompiledStatement(const CompiledStatement&) = delete;
    CompiledStatement& operator=(const CompiledStatement&) = delete;

    // The statement code the run loop sees (RunState::statementCode).
    [[nodiscard]] int code() const { return m_code; }
    virtual Outcome run(Interpreter& interpreter) = 0;

private:
    int m_code;
};

// Compiles the statement text[begin, end) after its keyword (text is the whole statement); nullptr
// keeps the statement on its text.
using StatementCompiler = std::unique_ptr<CompiledStatement> (*)(std::string_view text, int begin, int end);

// The compiler of a statement code; nullptr for the statements that always run from their text.
[[nodiscard]] StatementCompiler compilerFor(int code);

// The whole statement in the statement buffer, as the executor would take it.
std::unique_ptr<CompiledStatement> compileStatement(std::string_view statement);

} // namespace tessaly::core
