// PRINT and LPRINT compiled: the item list split once and each item's expression read once. The
// line is assembled and delivered as stmtPrint does it from the text.
#include "core/compiled_statement.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "expr/compiled_expression.h"
#include "expr/print_items.h"

namespace tessaly::expr {

namespace {

class CompiledPrint final : public core::CompiledStatement {
public:
    CompiledPrint(int code, PrintTarget target)
        : CompiledStatement(code)
        , m_target(target)
    {
    }

    std::vector<PrintItem> items;
    std::vector<std::unique_ptr<CompiledExpression>> values; // none for an empty item

    core::Outcome run(core::Interpreter& in) override
    {
        std::string line;
        TRY_BASIC(assemblePrintLine(in, items, line,
            [this, &in](size_t k, Value& value) { return values[k]->evaluate(in, value); }));
        return deliverPrintLine(in, std::move(line), m_target);
    }

private:
    PrintTarget m_target;
};

} // namespace

// After PRINT or LPRINT the executor wants a blank, a quote, "(" or the end; "#" (after blanks)
// makes the file form and USING the formatted one: those keep their text.
std::unique_ptr<core::CompiledStatement> compilePrint(std::string_view text, int begin, int end, int code,
    PrintTarget target)
{
    auto at = static_cast<size_t>(begin);
    auto statement = text.substr(0, static_cast<size_t>(end));
    char next = at < statement.size() ? statement[at] : '\0';
    if (!(at >= statement.size() || next == ' ' || next == '"' || next == '('))
        return nullptr;
    size_t first = statement.find_first_not_of(' ', at);
    if (first != std::string_view::npos && (statement[first] == '#' || (first > at && statement.substr(first).starts_with("USING"))))
        return nullptr;
    auto compiled = std::make_unique<CompiledPrint>(code, target);
    auto arguments = statement.substr(at);
    if (!splitPrintItems(arguments, compiled->items))
        return nullptr;
    for (const auto& item : compiled->items) {
        std::unique_ptr<CompiledExpression> value;
        if (item.text.find_first_not_of(' ') != std::string::npos) {
            value = CompiledExpression::compile(item.text, 0, item.text.size(), arguments.substr(item.offset),
                Quotes::DoubledIsQuote);
            if (!value)
                return nullptr;
        }
        compiled->values.push_back(std::move(value));
    }
    return compiled;
}

std::unique_ptr<core::CompiledStatement> compilePrintStatement(std::string_view text, int begin, int end)
{
    return compilePrint(text, begin, end, static_cast<int>(core::Stmt::Print), PrintTarget::Screen);
}

std::unique_ptr<core::CompiledStatement> compileLprintStatement(std::string_view text, int begin, int end)
{
    return compilePrint(text, begin, end, static_cast<int>(core::Stmt::Lprint), PrintTarget::Printer);
}

} // namespace tessaly::expr
