// DIM, ERASE and OPTION BASE.
#include <cmath>

#include "core/interpreter.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "expr/statements.h"

namespace tessaly::expr {

namespace {

using core::ErrorId;

std::string readName(const core::StatementBuffer& buffer, int& pos, int end)
{
    while (pos < end && buffer.at(pos) == ' ')
        ++pos;
    int start = pos;
    if (!core::isLetter(buffer.at(pos)))
        return {};
    while (pos < end && core::isNameChar(buffer.at(pos)))
        ++pos;
    std::string name(buffer.view().substr(static_cast<size_t>(start), static_cast<size_t>(pos - start)));
    for (char& c : name)
        c = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
    return name;
}

} // namespace

int stmtDim(core::Interpreter& in, int begin, int end)
{
    auto& buffer = in.buffer();
    int pos = begin;
    for (;;) {
        std::string name = readName(buffer, pos, end);
        if (name.empty())
            return in.raise(ErrorId::SyntaxError);
        while (pos < end && buffer.at(pos) == ' ')
            ++pos;
        if (buffer.at(pos) != '(')
            return in.raise(ErrorId::SyntaxError);
        auto found = core::matchingParen(buffer.view().substr(0, static_cast<size_t>(end)), static_cast<size_t>(pos));
        if (found == std::string_view::npos)
            return in.raise(ErrorId::SyntaxError);
        int close = static_cast<int>(found);
        std::vector<Value> values;
        TRY_BASIC(evaluateArguments(in, buffer.view().substr(static_cast<size_t>(pos + 1), static_cast<size_t>(close - pos - 1)),
            values));
        std::vector<int32_t> bounds;
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
        pos = close + 1;
        while (pos < end && buffer.at(pos) == ' ')
            ++pos;
        if (pos >= end)
            return in.run().statementCode;
        if (buffer.at(pos) != ',')
            return in.raise(ErrorId::SyntaxError);
        ++pos;
    }
}

int stmtErase(core::Interpreter& in, int begin, int end)
{
    auto& buffer = in.buffer();
    int pos = begin;
    for (;;) {
        std::string name = readName(buffer, pos, end);
        if (name.empty() || !in.arrays().erase(name))
            return in.raise(ErrorId::SyntaxError);
        while (pos < end && (buffer.at(pos) == ' ' || buffer.at(pos) == '(' || buffer.at(pos) == ')'))
            ++pos;
        if (pos >= end)
            return in.run().statementCode;
        if (buffer.at(pos) != ',')
            return in.raise(ErrorId::SyntaxError);
        ++pos;
    }
}

int stmtOptionBase(core::Interpreter& in, int begin, int end)
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
    return in.run().statementCode;
}

} // namespace tessaly::expr
