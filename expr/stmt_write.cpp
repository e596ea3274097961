// WRITE: items separated by commas, strings in double quotes, numbers without blanks.
#include "core/interpreter.h"
#include "core/outcome.h"
#include "expr/evaluator.h"
#include "expr/number_text.h"
#include "expr/print_items.h"
#include "expr/statements.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

namespace {

std::string writtenNumber(const Value& value)
{
    std::string text = numberValueText(value);
    if (text.size() >= 2 && text.compare(text.size() - 2, 2, ". ") == 0) {
        text.erase(text.size() - 2, 1);
    } else if (text.find_first_of("EDed.") != std::string::npos) {
        double x = ReadNumberText(text);
        text = value.type == ValueType::Single ? GcvtText(static_cast<float>(x), 6) : GcvtText(x, 16);
    }
    std::string bare;
    for (char c : text) {
        if (c != ' ')
            bare += c;
    }
    return bare;
}

} // namespace

int formatWriteText(core::Interpreter& in, int begin, int end, std::string& line)
{
    auto arguments = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    std::vector<PrintItem> items;
    if (!splitPrintItems(arguments, items))
        return in.raise(core::ErrorId::SyntaxError);
    line.clear();
    for (const auto& item : items) {
        if (item.text.find_first_not_of(' ') != std::string::npos) {
            Value value;
            TRY_BASIC(evaluateText(in, item.text, value, Quotes::DoubledIsQuote, arguments.substr(item.offset)));
            if (value.isString())
                line += "\"" + value.text + "\"";
            else if (!value.empty)
                line += writtenNumber(value);
        }
        if (item.separator != 0)
            line += ',';
    }
    return 0;
}

Outcome stmtWrite(core::Interpreter& in, int begin, int end)
{
    std::string line;
    TRY_BASIC(formatWriteText(in, begin, end, line));
    auto& run = in.run();
    run.printNewline = true;
    run.pendingPrintText.clear();
    run.outputText = std::move(line);
    return kDone;
}

} // namespace tessaly::expr
