// FOR and NEXT compiled: the variable bound, the initial value, limit and step read once. They do
// what core/stmt_for.cpp does with the statement's text.
#include <cmath>

#include "core/compiled_statement.h"
#include "core/for_loops.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/text_scan.h"
#include "expr/compiled_expression.h"
#include "expr/compiled_target.h"
#include "expr/statements.h"

namespace tessaly::core {

namespace {

class CompiledFor final : public CompiledStatement {
public:
    CompiledFor()
        : CompiledStatement(static_cast<int>(Stmt::For))
    {
    }

    expr::CompiledTarget target;
    std::unique_ptr<expr::CompiledExpression> initial;
    std::unique_ptr<expr::CompiledExpression> limit;
    std::unique_ptr<expr::CompiledExpression> step; // none without STEP

    Outcome run(Interpreter& in) override
    {
        TRY_BASIC(target.locate(in));
        if (target.type() != expr::ValueType::Integer && target.type() != expr::ValueType::Single)
            return in.raise(ErrorId::TypeMismatch);
        int level = 0;
        TRY_BASIC(findForLevel(in, level));
        expr::Value value;
        TRY_BASIC(initial->evaluate(in, value));
        TRY_BASIC(target.assign(in, value));
        expr::Value limitValue;
        TRY_BASIC(limit->evaluate(in, limitValue));
        double stepValue = 1;
        if (step) {
            expr::Value given;
            TRY_BASIC(step->evaluate(in, given));
            if (given.isString())
                return in.raise(ErrorId::TypeMismatch);
            stepValue = static_cast<float>(given.number);
        }
        expr::Target located {target.name(), target.subscripts(), target.isElement(), target.type()};
        return enterLoop(in, located, level, limitValue, stepValue);
    }
};

class CompiledNext final : public CompiledStatement {
public:
    CompiledNext()
        : CompiledStatement(static_cast<int>(Stmt::Next))
    {
    }

    std::unique_ptr<expr::CompiledTarget> target; // none for NEXT alone

    Outcome run(Interpreter& in) override
    {
        auto& stacks = in.stacks();
        if (stacks.forDepth <= 0)
            return in.raise(ErrorId::NextWithoutFor);
        int level = stacks.forDepth;
        if (target && !isKnownTop(stacks)) {
            TRY_BASIC(target->locate(in));
            TRY_BASIC(levelOfVariable(in, target->name(), target->isElement(), target->subscripts(), level));
            m_knownSerial = target->isElement() ? 0 : stacks.forLevels[static_cast<size_t>(level)].serial;
        }
        return stepLoop(in, level);
    }

private:
    // A scalar's NEXT whose level is the top one and the same push as last time: that level has
    // this variable, as found then (locating a scalar changes nothing), so it is the level again.
    [[nodiscard]] bool isKnownTop(const ControlStacks& stacks) const
    {
        return m_knownSerial != 0 && stacks.forLevels[static_cast<size_t>(stacks.forDepth)].serial == m_knownSerial;
    }

    uint32_t m_knownSerial = 0; // the push of the level found last time; 0: none (or an element)
};

std::unique_ptr<expr::CompiledExpression> compilePart(std::string_view text, size_t begin, size_t end)
{
    return expr::CompiledExpression::compile(text, begin, end, text.substr(std::min(begin, text.size())));
}

} // namespace

std::unique_ptr<CompiledStatement> compileFor(std::string_view text, int begin, int end)
{
    auto statement = std::make_unique<CompiledFor>();
    auto pos = static_cast<size_t>(begin);
    if (!statement->target.compile(text, pos, static_cast<size_t>(end)))
        return nullptr;
    ForParts parts;
    if (!findForParts(text.substr(0, static_cast<size_t>(end)), pos, parts))
        return nullptr;
    size_t equals = parts.equals;
    size_t toAt = parts.to;
    size_t toLength = parts.toLength;
    size_t stepAt = parts.step;
    size_t limitEnd = stepAt == std::string_view::npos ? static_cast<size_t>(end) : stepAt;
    statement->initial = compilePart(text, equals + 1, toAt);
    statement->limit = compilePart(text, toAt + toLength, limitEnd);
    if (stepAt != std::string_view::npos) {
        statement->step = compilePart(text, stepAt + 4, static_cast<size_t>(end));
        if (!statement->step)
            return nullptr;
    }
    if (!statement->initial || !statement->limit)
        return nullptr;
    return statement;
}

std::unique_ptr<CompiledStatement> compileNext(std::string_view text, int begin, int end)
{
    auto at = static_cast<size_t>(begin);
    if (begin < end && text[at] != ' ')
        return nullptr;
    auto statement = std::make_unique<CompiledNext>();
    auto rest = text.substr(at, static_cast<size_t>(end - begin));
    if (rest.find_first_not_of(' ') != std::string_view::npos) {
        statement->target = std::make_unique<expr::CompiledTarget>();
        if (!statement->target->compile(text, at, static_cast<size_t>(end)))
            return nullptr;
    }
    return statement;
}

} // namespace tessaly::core
