// Expression evaluation. So far: numeric literals (with a sign) and string literals; operators,
// variables and functions come with the full evaluator.
#include "expr/evaluator.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "core/interpreter.h"

namespace tessaly::expr {

int32_t integerOf(const Value& value)
{
    if (value.isString() || !std::isfinite(value.number))
        return 0;
    double truncated = std::trunc(value.number);
    if (truncated > 2147483647.0)
        return 2147483647;
    if (truncated < -2147483648.0)
        return -2147483647 - 1;
    return static_cast<int32_t>(truncated);
}

int evaluateExpression(core::Interpreter& in, int begin, int end, Value& result)
{
    result = Value {};
    auto text = std::string(in.buffer().view().substr(0, static_cast<size_t>(end)));
    size_t pos = static_cast<size_t>(begin);
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    size_t last = text.find_last_not_of(' ');
    if (pos >= text.size() || last == std::string::npos || last < pos) {
        result.empty = true;
        return 0;
    }
    text.erase(last + 1);
    if (text[pos] == '"') {
        auto close = text.find('"', pos + 1);
        if (close != std::string::npos && close != text.size() - 1)
            return in.raise(core::ErrorId::SyntaxError);
        result.type = ValueType::String;
        result.text = text.substr(pos + 1, close == std::string::npos ? std::string::npos : close - pos - 1);
        return 0;
    }
    const char* start = text.c_str() + pos;
    bool sign = *start == '-' || *start == '+';
    const char* digits = sign ? start + 1 : start;
    if (!((*digits >= '0' && *digits <= '9') || *digits == '.'))
        return in.raise(core::ErrorId::SyntaxError);
    char* stop = nullptr;
    double value = std::strtod(start, &stop);
    if (stop != text.c_str() + text.size())
        return in.raise(core::ErrorId::SyntaxError);
    result.number = value;
    return 0;
}

} // namespace tessaly::expr
