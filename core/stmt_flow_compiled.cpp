// GOTO, GOSUB, RETURN and IF compiled: jump targets looked up once, conditions read once. They do
// what core/stmt_goto.cpp and core/stmt_flow.cpp do with the statement's text.
#include "core/compiled_statement.h"
#include "core/find_target.h"
#include "core/flow_parts.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "expr/compiled_condition.h"

namespace tessaly::core {

namespace {

class CompiledGoto final : public CompiledStatement {
public:
    CompiledGoto(int code, CompiledJump jump)
        : CompiledStatement(code)
        , m_jump(std::move(jump))
    {
    }
    Outcome run(Interpreter& in) override
    {
        TRY_BASIC(m_jump.resolve(in));
        return kDone;
    }

private:
    CompiledJump m_jump;
};

class CompiledGosub final : public CompiledStatement {
public:
    explicit CompiledGosub(CompiledJump jump)
        : CompiledStatement(static_cast<int>(Stmt::Gosub))
        , m_jump(std::move(jump))
    {
    }
    Outcome run(Interpreter& in) override
    {
        in.run().runMode = RunMode::Gosub;
        TRY_BASIC(m_jump.resolve(in));
        return enterSubroutine(in);
    }

private:
    CompiledJump m_jump;
};

// RETURN alone; RETURN n keeps its text.
class CompiledReturn final : public CompiledStatement {
public:
    CompiledReturn()
        : CompiledStatement(static_cast<int>(Stmt::Return))
    {
    }
    Outcome run(Interpreter& in) override { return leaveSubroutine(in); }
};

class CompiledIf final : public CompiledStatement {
public:
    explicit CompiledIf(std::unique_ptr<expr::CompiledCondition> condition)
        : CompiledStatement(static_cast<int>(Stmt::If))
        , m_condition(std::move(condition))
    {
    }
    Outcome run(Interpreter& in) override
    {
        in.stacks().lastIfEntry = in.run().currentIndex;
        bool truth = false;
        TRY_BASIC(m_condition->evaluate(in, truth));
        return takeIfBranch(in, truth, m_knownIf);
    }

private:
    std::unique_ptr<expr::CompiledCondition> m_condition;
    int m_knownIf = -1;
};

template <Stmt kCode>
std::unique_ptr<CompiledStatement> compileGoto(std::string_view text, int begin, int end)
{
    CompiledJump jump;
    if (!jump.compile(text, begin, end))
        return nullptr;
    return std::make_unique<CompiledGoto>(static_cast<int>(kCode), std::move(jump));
}

} // namespace

std::unique_ptr<CompiledStatement> compileGotoStatement(std::string_view text, int begin, int end)
{
    return compileGoto<Stmt::Goto>(text, begin, end);
}

std::unique_ptr<CompiledStatement> compileGoToStatement(std::string_view text, int begin, int end)
{
    return compileGoto<Stmt::GoTo>(text, begin, end);
}

std::unique_ptr<CompiledStatement> compileGosub(std::string_view text, int begin, int end)
{
    CompiledJump jump;
    if (!jump.compile(text, begin, end))
        return nullptr;
    return std::make_unique<CompiledGosub>(std::move(jump));
}

std::unique_ptr<CompiledStatement> compileReturn(std::string_view text, int begin, int end)
{
    auto rest = text.substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    if (rest.find_first_not_of(' ') != std::string_view::npos)
        return nullptr;
    return std::make_unique<CompiledReturn>();
}

std::unique_ptr<CompiledStatement> compileIf(std::string_view text, int begin, int end)
{
    size_t stop = ifConditionEnd(text, begin, end);
    auto condition = expr::CompiledCondition::compile(text.substr(static_cast<size_t>(begin), stop - static_cast<size_t>(begin)));
    if (!condition)
        return nullptr;
    return std::make_unique<CompiledIf>(std::move(condition));
}

} // namespace tessaly::core
