// PRINT and LPRINT: items, the 14-column zones, ; and , and the text carried over on the row.
#include <utility>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/printer_output.h"
#include "expr/evaluator.h"
#include "expr/number_text.h"
#include "expr/print_items.h"
#include "expr/statements.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

namespace {

constexpr size_t kZoneWidth = 14;

// Builds the printed line into run.outputText; sets printNewline and the carried-over text.
int buildPrintLine(core::Interpreter& in, int begin, int end, std::string& line)
{
    auto arguments = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    std::vector<PrintItem> items;
    if (!splitPrintItems(arguments, items))
        return in.raise(core::ErrorId::SyntaxError);
    struct Reading {
        core::Interpreter& in;
        const std::vector<PrintItem>& items;
        std::string_view arguments;
    } reading {in, items, arguments};
    // One pointer captured: the evaluator is kept without an allocation.
    return assemblePrintLine(in, items, line, [r = &reading](size_t k, Value& value) {
        return evaluateText(r->in, r->items[k].text, value, Quotes::DoubledIsQuote, r->arguments.substr(r->items[k].offset));
    });
}

} // namespace

int assemblePrintLine(core::Interpreter& in, const std::vector<PrintItem>& items, std::string& line,
    const ItemEvaluator& evaluate)
{
    auto& run = in.run();
    std::string carried = run.pendingPrintText;
    line.clear();
    bool newline = true;
    for (size_t k = 0; k < items.size(); ++k) {
        const auto& item = items[k];
        if (item.text.find_first_not_of(' ') != std::string::npos) {
            run.printColumn = static_cast<int>(run.pendingPrintText.size());
            Value value;
            TRY_BASIC(evaluate(k, value));
            if (value.isString())
                line += value.text;
            else if (!value.empty)
                line += PrintNumberText(numberValueText(value), value.type);
            newline = true;
        }
        if (item.separator == ';') {
            newline = false;
            run.pendingPrintText = line;
        } else if (item.separator == ',') {
            newline = false;
            line.append(kZoneWidth - (carried.size() + line.size()) % kZoneWidth, ' ');
        }
    }
    run.printNewline = newline;
    run.pendingPrintText = newline ? std::string() : carried + line;
    return 0;
}

Outcome deliverPrintLine(core::Interpreter& in, std::string line, PrintTarget target)
{
    auto& run = in.run();
    if (target == PrintTarget::Screen) {
        run.outputText = std::move(line);
        return kDone;
    }
    if (run.printNewline)
        line += "\r\n";
    // The screen's row is not touched by the printer.
    run.printNewline = true;
    return core::outcomeOf(core::writeToPrinter(in, line));
}

int formatPrintText(core::Interpreter& in, int begin, int end, std::string& text, bool& endsLine)
{
    auto& run = in.run();
    std::string pending = std::exchange(run.pendingPrintText, std::string());
    bool printNewline = run.printNewline;
    int column = run.printColumn;
    int result = buildPrintLine(in, begin, end, text);
    endsLine = run.printNewline;
    run.pendingPrintText = std::move(pending);
    run.printNewline = printNewline;
    run.printColumn = column;
    return result;
}

Outcome printBuiltLine(core::Interpreter& in, int begin, int end, PrintLineBuilder build, PrintTarget target)
{
    std::string line;
    TRY_BASIC(build(in, begin, end, line));
    return deliverPrintLine(in, std::move(line), target);
}

Outcome stmtPrint(core::Interpreter& in, int begin, int end)
{
    return printBuiltLine(in, begin, end, buildPrintLine, PrintTarget::Screen);
}

Outcome stmtLprint(core::Interpreter& in, int begin, int end)
{
    return printBuiltLine(in, begin, end, buildPrintLine, PrintTarget::Printer);
}

} // namespace tessaly::expr
