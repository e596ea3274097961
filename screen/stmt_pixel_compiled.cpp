// PSET and PRESET compiled: the point's two expressions and the arguments after it read once;
// running evaluates them in the order, and with the errors, of reading the text.
#include "core/compiled_statement.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/text_scan.h"
#include "expr/compiled_expression.h"
#include "screen/colours.h"
#include "screen/figure_arguments.h"
#include "screen/statements.h"

namespace tessaly::screen {

namespace {

using core::ErrorId;

class CompiledPixel final : public core::CompiledStatement {
public:
    CompiledPixel(core::Stmt code, bool step, std::unique_ptr<expr::CompiledExpression> point,
        std::vector<std::unique_ptr<expr::CompiledExpression>> rest)
        : CompiledStatement(static_cast<int>(code))
        , m_reset(code == core::Stmt::Preset)
        , m_step(step)
        , m_point(std::move(point))
        , m_rest(std::move(rest))
    {
    }

    core::Outcome run(core::Interpreter& in) override
    {
        int defaultColour = m_reset ? in.colours().backgroundColour : in.colours().pointColour;
        FigurePoint point {m_step, 0, 0};
        TRY_BASIC(evaluatePoint(in, point));
        // The colour: where it is a number it is taken as one; the rest only as values.
        if (m_rest.size() == 1) {
            expr::Number colour {};
            int numeric = m_rest[0]->evaluateNumber(in, colour);
            TRY_BASIC(numeric);
            if (numeric == 0)
                return plotPixel(in, point, wholeArgument(colour.number), defaultColour);
        }
        m_restValues.resize(m_rest.size());
        for (size_t k = 0; k < m_rest.size(); ++k)
            TRY_BASIC(m_rest[k]->evaluate(in, m_restValues[k]));
        return plotPixel(in, point, argumentOr(m_restValues, 0, 20), defaultColour);
    }

private:
    // The point's two numbers (on numbers alone where they are numbers; a repeat of such an
    // evaluation does nothing twice that shows).
    int evaluatePoint(core::Interpreter& in, FigurePoint& point)
    {
        expr::Number coordinates[2] {};
        int numeric = m_point->evaluateArgumentNumbers(in, coordinates, 2);
        TRY_BASIC(numeric);
        if (numeric == 0) {
            point.x = coordinates[0].number;
            point.y = coordinates[1].number;
            return 0;
        }
        TRY_BASIC(m_point->evaluateArguments(in, m_values));
        if (m_values.size() != 2 || m_values[0].empty || m_values[1].empty || m_values[0].isString()
            || m_values[1].isString())
            return in.raise(ErrorId::SyntaxError);
        point.x = m_values[0].number;
        point.y = m_values[1].number;
        return 0;
    }

    bool m_reset;
    bool m_step;
    std::unique_ptr<expr::CompiledExpression> m_point;
    std::vector<std::unique_ptr<expr::CompiledExpression>> m_rest;
    // Reused from run to run, so that a numeric PSET allocates nothing.
    std::vector<expr::Value> m_values;
    std::vector<expr::Value> m_restValues;
};

// [STEP](x, y) [, arguments]; nullptr for anything else, which keeps the text and its errors.
std::unique_ptr<core::CompiledStatement> compilePixel(core::Stmt code, std::string_view text, int begin, int end)
{
    text = text.substr(0, static_cast<size_t>(end));
    size_t at = text.find_first_not_of(' ', static_cast<size_t>(begin));
    if (at == std::string_view::npos)
        return nullptr;
    bool step = text.compare(at, 4, "STEP") == 0;
    if (step)
        at = text.find_first_not_of(' ', at + 4);
    if (at == std::string_view::npos || text[at] != '(')
        return nullptr;
    size_t close = core::matchingParen(text, at);
    if (close == std::string_view::npos)
        return nullptr;
    std::string list(text.substr(at + 1, close - at - 1));
    list += ')';
    auto point = expr::CompiledExpression::compileArguments(list);
    if (!point)
        return nullptr;
    std::vector<std::unique_ptr<expr::CompiledExpression>> rest;
    size_t comma = text.find_first_not_of(' ', close + 1);
    if (comma != std::string_view::npos) {
        // Text after the point that is not a comma is ignored by the text path: left to it.
        if (text[comma] != ',')
            return nullptr;
        bool compiled = core::splitAtTopLevel(text.substr(comma + 1), [](char c) { return c == ',' || c == ';'; },
            [&](std::string_view piece, char) {
                rest.push_back(expr::CompiledExpression::compile(piece, 0, piece.size(), piece));
                return rest.back() != nullptr;
            });
        if (!compiled)
            return nullptr;
    }
    return std::make_unique<CompiledPixel>(code, step, std::move(point), std::move(rest));
}

} // namespace

std::unique_ptr<core::CompiledStatement> compilePsetStatement(std::string_view text, int begin, int end)
{
    return compilePixel(core::Stmt::Pset, text, begin, end);
}

std::unique_ptr<core::CompiledStatement> compilePresetStatement(std::string_view text, int begin, int end)
{
    return compilePixel(core::Stmt::Preset, text, begin, end);
}

} // namespace tessaly::screen
