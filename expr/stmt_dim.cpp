// DIM, ERASE and OPTION BASE.
#include <cmath>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/arrays.h"
#include "expr/evaluator.h"
#include "expr/name_reading.h"
#include "expr/statements.h"
#include "expr/variables.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

} // namespace

Outcome stmtDim(core::Interpreter& in, int begin, int end)
{
    auto& buffer = in.buffer();
    int pos = begin;
    std::string name;
    std::vector<Value> values;
    std::vector<int32_t> bounds;
    for (;;) {
        if (!readVariableName(buffer, pos, end, name))
            return in.raise(ErrorId::SyntaxError);
        skipBlanks(buffer, pos, end);
        if (buffer.at(pos) != '(')
            return in.raise(ErrorId::SyntaxError);
        TRY_BASIC(readParenthesisedArguments(in, pos, end, values));
        bounds.clear();
        for (const auto& value : values) {
            if (value.isString() || value.empty)
                return in.raise(value.empty ? ErrorId::SyntaxError : ErrorId::TypeMismatch);
            // A bound reads as its leading sign and digits: 5.9 is 5.
            bounds.push_back(integerOf(value));
        }
        switch (in.arrays().create(name, in.variables().typeOfName(name), bounds)) {
        case ArrayStatus::Ok:
            break;
        case ArrayStatus::Duplicate:
            return in.raise(ErrorId::DuplicateDefinition);
        case ArrayStatus::SubscriptOutOfRange:
            return in.raise(ErrorId::SubscriptOutOfRange);
        default:
            return in.raise(ErrorId::OutOfMemory);
        }
        int more = nextListItem(in, pos, end);
        TRY_BASIC(more);
        if (more == 0)
            return kDone;
    }
}

Outcome stmtErase(core::Interpreter& in, int begin, int end)
{
    auto& buffer = in.buffer();
    int pos = begin;
    std::string name;
    for (;;) {
        if (!readVariableName(buffer, pos, end, name) || !in.arrays().erase(name))
            return in.raise(ErrorId::SyntaxError);
        // ERASE A() and ERASE A name the same array.
        while (pos < end && (buffer.at(pos) == '(' || buffer.at(pos) == ')' || buffer.at(pos) == ' '))
            ++pos;
        int more = nextListItem(in, pos, end);
        TRY_BASIC(more);
        if (more == 0)
            return kDone;
    }
}

Outcome stmtOptionBase(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto first = text.find_first_not_of(' ');
    auto last = text.find_last_not_of(' ');
    if (first == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    auto digits = text.substr(first, last - first + 1);
    if (digits != "0" && digits != "1")
        return in.raise(ErrorId::SyntaxError);
    if (!in.arrays().setOptionBase(digits[0] - '0'))
        return in.raise(ErrorId::DuplicateDefinition);
    return kDone;
}

} // namespace tessaly::expr
