// The MID$ statement: MID$(v, m[, n]) = x overwrites bytes of a string variable in place.
#include <algorithm>
#include <cmath>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "expr/evaluator.h"
#include "expr/statements.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

Outcome stmtMid(core::Interpreter& in, int begin, int end)
{
    using core::ErrorId;
    auto& buffer = in.buffer();
    int pos = begin;
    while (pos < end && buffer.at(pos) == ' ')
        ++pos;
    if (buffer.at(pos) != '(')
        return in.raise(ErrorId::SyntaxError);
    ++pos;
    while (pos < end && buffer.at(pos) == ' ')
        ++pos;
    char first = buffer.at(pos);
    if (first < 'A' || first > 'Z')
        return in.raise(ErrorId::SyntaxError);
    Target target;
    TRY_BASIC(parseTarget(in, pos, end, target));
    if (target.type != ValueType::String)
        return in.raise(ErrorId::TypeMismatch);
    auto text = buffer.view().substr(0, static_cast<size_t>(end));
    auto equals = text.find('=', static_cast<size_t>(pos));
    if (equals == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    auto close = text.rfind(')', equals);
    if (close == std::string_view::npos || static_cast<int>(close) < pos)
        return in.raise(ErrorId::SyntaxError);
    std::vector<Value> numbers;
    auto list = text.substr(static_cast<size_t>(pos), close - static_cast<size_t>(pos));
    auto comma = list.find(',');
    if (comma == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    TRY_BASIC(evaluateArguments(in, list.substr(comma + 1), numbers));
    Value current;
    TRY_BASIC(readTarget(in, target, current));
    std::string s = current.text;
    if (s.empty())
        return in.raise(ErrorId::IllegalFunctionCall);
    for (const auto& number : numbers) {
        if (number.isString() || number.empty)
            return in.raise(ErrorId::SyntaxError);
    }
    if (numbers.empty() || numbers.size() > 2)
        return in.raise(ErrorId::SyntaxError);
    double m = std::trunc(numbers[0].number);
    double n = numbers.size() == 2 ? std::trunc(numbers[1].number) : static_cast<double>(s.size()) - m + 1;
    if (m < 1 || n < 0 || m > static_cast<double>(s.size()))
        return in.raise(ErrorId::IllegalFunctionCall);
    Value replacement;
    TRY_BASIC(evaluateExpression(in, static_cast<int>(equals) + 1, end, replacement));
    if (!replacement.isString())
        return in.raise(ErrorId::SyntaxError);
    auto at = static_cast<size_t>(m) - 1;
    double count = std::min({n, static_cast<double>(replacement.text.size()), static_cast<double>(s.size() - at)});
    s.replace(at, static_cast<size_t>(count), replacement.text.substr(0, static_cast<size_t>(count)));
    TRY_BASIC(assignTarget(in, target, Value::makeString(std::move(s))));
    return kDone;
}

} // namespace tessaly::expr
