// WHILE and WEND compiled: the condition read once. They do what core/stmt_while.cpp does with the
// statement's text.
#include "core/compiled_statement.h"
#include "core/for_loops.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "expr/compiled_condition.h"

namespace tessaly::core {

namespace {

class CompiledWhile final : public CompiledStatement {
public:
    explicit CompiledWhile(std::unique_ptr<expr::CompiledCondition> condition)
        : CompiledStatement(static_cast<int>(Stmt::While))
        , m_condition(std::move(condition))
    {
    }
    Outcome run(Interpreter& in) override
    {
        if (in.stacks().whileDepth >= kMaxWhileDepth)
            return in.raise(ErrorId::OutOfMemory);
        bool truth = false;
        TRY_BASIC(m_condition->evaluate(in, truth));
        return whileTested(in, truth);
    }

private:
    std::unique_ptr<expr::CompiledCondition> m_condition;
};

class CompiledWend final : public CompiledStatement {
public:
    CompiledWend()
        : CompiledStatement(static_cast<int>(Stmt::Wend))
    {
    }
    Outcome run(Interpreter& in) override { return wendReached(in); }
};

} // namespace

std::unique_ptr<CompiledStatement> compileWhile(std::string_view text, int begin, int end)
{
    auto condition = expr::CompiledCondition::compile(
        text.substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin)));
    if (!condition)
        return nullptr;
    return std::make_unique<CompiledWhile>(std::move(condition));
}

std::unique_ptr<CompiledStatement> compileWend(std::string_view, int, int) { return std::make_unique<CompiledWend>(); }

} // namespace tessaly::core
