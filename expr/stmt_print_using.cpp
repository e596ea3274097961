// PRINT USING and LPRINT USING: the items formatted into the fields of the format, the format used
// again while items remain.
#include "core/interpreter.h"
#include "core/outcome.h"
#include "expr/evaluator.h"
#include "expr/print_items.h"
#include "expr/print_using.h"
#include "expr/statements.h"

namespace tessaly::expr {

using core::Outcome;

namespace {

int buildUsingLine(core::Interpreter& in, int begin, int end, std::string& line)
{
    using core::ErrorId;
    auto arguments = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    std::vector<PrintItem> items;
    if (!splitPrintItems(arguments, items))
        return in.raise(ErrorId::SyntaxError);
    // Only a ";" at the very end keeps the cursor on the row.
    auto last = arguments.find_last_not_of(' ');
    in.run().printNewline = !(last != std::string_view::npos && arguments[last] == ';');
    while (!items.empty() && items.back().text.find_first_not_of(' ') == std::string::npos)
        items.pop_back();
    if (items.size() < 2)
        return in.raise(ErrorId::IllegalFunctionCall);
    Value format;
    TRY_BASIC(evaluateText(in, items[0].text, format, Quotes::Plain, arguments.substr(items[0].offset)));
    if (!format.isString())
        return in.raise(ErrorId::IllegalFunctionCall);
    std::string copy = format.text;
    size_t searchFrom = 0;
    for (size_t k = 1; k < items.size(); ++k) {
        if (items[k].text.find_first_not_of(' ') == std::string::npos)
            continue;
        Field field = locateField(copy, searchFrom);
        if (field.kind == FieldKind::None) {
            size_t appended = copy.size();
            copy += format.text;
            field = locateField(copy, std::max(searchFrom, appended));
            if (field.kind == FieldKind::None)
                return in.raise(ErrorId::IllegalFunctionCall);
        }
        Value value;
        TRY_BASIC(evaluateText(in, items[k].text, value, Quotes::Plain, arguments.substr(items[k].offset)));
        std::string text;
        switch (fillField(std::string_view(copy).substr(field.start, field.length), field.kind, value, text)) {
        case FillResult::Illegal:
            return in.raise(ErrorId::IllegalFunctionCall);
        case FillResult::Syntax:
            return in.raise(ErrorId::SyntaxError);
        case FillResult::Ok:
            break;
        }
        copy.replace(field.start, field.length, text);
        searchFrom = field.start + text.size();
    }
    Field next = locateField(copy, searchFrom);
    line = removeEscapes(next.kind == FieldKind::None ? std::string_view(copy) : std::string_view(copy).substr(0, next.start));
    return 0;
}

} // namespace

int formatPrintUsingText(core::Interpreter& in, int begin, int end, std::string& text, bool& endsLine)
{
    auto& run = in.run();
    bool printNewline = run.printNewline;
    int result = buildUsingLine(in, begin, end, text);
    endsLine = run.printNewline;
    run.printNewline = printNewline;
    return result;
}

Outcome stmtPrintUsing(core::Interpreter& in, int begin, int end)
{
    return printBuiltLine(in, begin, end, buildUsingLine, PrintTarget::Screen);
}

Outcome stmtLprintUsing(core::Interpreter& in, int begin, int end)
{
    return printBuiltLine(in, begin, end, buildUsingLine, PrintTarget::Printer);
}

} // namespace tessaly::expr
