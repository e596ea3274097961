// LET (and an assignment without LET) compiled: the target bound, its subscripts and the value read
// once; running it evaluates and stores in the order and with the errors of stmtLet.
#include <cmath>

#include "core/compiled_statement.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/text_scan.h"
#include "expr/arrays.h"
#include "expr/compiled_expression.h"
#include "expr/compiled_target.h"
#include "expr/variables.h"

namespace tessaly::expr {

namespace {

class CompiledLet final : public core::CompiledStatement {
public:
    CompiledLet(CompiledTarget target, std::unique_ptr<CompiledExpression> value)
        : CompiledStatement(static_cast<int>(core::Stmt::Let))
        , m_target(std::move(target))
        , m_value(std::move(value))
    {
    }

    core::Outcome run(core::Interpreter& in) override
    {
        // An element's subscripts are evaluated first; a scalar is found when it is stored.
        if (m_target.isElement())
            TRY_BASIC(m_target.locate(in));
        // A computed number is stored as it is; a lone literal (which may be a &H value that an
        // integer takes up to 65535) and anything else go through its value.
        Number number {};
        int numeric = m_value->evaluateNumber(in, number);
        TRY_BASIC(numeric);
        if (numeric == 0 && number.form != NumberForm::Literal) {
            TRY_BASIC(m_target.assignNumber(in, number));
            return core::kDone;
        }
        return assignValue(in);
    }

private:
    // Kept out of line, so that the value is not set up and torn down around every number stored.
    [[gnu::noinline]] core::Outcome assignValue(core::Interpreter& in)
    {
        Value value;
        TRY_BASIC(m_value->evaluate(in, value));
        TRY_BASIC(m_target.assign(in, value));
        return core::kDone;
    }

    CompiledTarget m_target;
    std::unique_ptr<CompiledExpression> m_value;
};

} // namespace

std::unique_ptr<core::CompiledStatement> compileLet(std::string_view text, int begin, int end)
{
    CompiledTarget target;
    auto pos = static_cast<size_t>(begin);
    if (!target.compile(text, pos, static_cast<size_t>(end)))
        return nullptr;
    while (pos < static_cast<size_t>(end) && text[pos] == ' ')
        ++pos;
    if (pos >= static_cast<size_t>(end) || text[pos] != '=')
        return nullptr;
    ++pos;
    auto value = CompiledExpression::compile(text, pos, static_cast<size_t>(end), text.substr(std::min(pos, text.size())));
    if (!value)
        return nullptr;
    return std::make_unique<CompiledLet>(std::move(target), std::move(value));
}

} // namespace tessaly::expr
