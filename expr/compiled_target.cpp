#include "expr/compiled_target.h"

#include <array>

#include <cmath>
#include <string>

#include "core/char_class.h"
#include "core/interpreter.h"
#include "core/text_scan.h"
#include "expr/arrays.h"
#include "expr/statements.h"
#include "expr/variables.h"

namespace tessaly::expr {

using core::ErrorId;

bool CompiledTarget::compile(std::string_view text, size_t& pos, size_t end)
{
    while (pos < end && text[pos] == ' ')
        ++pos;
    if (pos >= end || !core::isLetter(text[pos]))
        return false;
    size_t start = pos;
    while (pos < end && core::isNameChar(text[pos]))
        ++pos;
    m_scalar.name.assign(text.substr(start, pos - start));
    for (char& c : m_scalar.name)
        c = core::toUpperAscii(c);
    size_t mark = pos;
    while (pos < end && text[pos] == ' ')
        ++pos;
    if (pos >= end || text[pos] != '(') {
        pos = mark;
        return true;
    }
    size_t close = core::matchingParen(text.substr(0, end), pos);
    if (close == std::string_view::npos)
        return false;
    std::string list(text.substr(pos + 1, close - pos - 1));
    list += ')';
    m_subscriptList = CompiledExpression::compileArguments(list);
    m_array.name = m_scalar.name;
    pos = close + 1;
    return m_subscriptList != nullptr;
}

int CompiledTarget::locate(core::Interpreter& in)
{
    m_type = m_scalar.typeIn(in.variables());
    if (!m_subscriptList)
        return 0;
    m_subscripts.clear();
    // Subscripts that are numbers are taken as numbers (a repeat through values, where one is not,
    // does nothing twice that shows).
    constexpr size_t kNumericSubscripts = 8; // more go through values
    std::array<Number, kNumericSubscripts> numbers; // NOLINT: each is written before it is read
    size_t count = m_subscriptList->argumentCount();
    int numeric = count <= numbers.size() ? m_subscriptList->evaluateArgumentNumbers(in, numbers.data(), count)
                                          : CompiledExpression::kNotNumbers;
    TRY_BASIC(numeric);
    if (numeric == 0) {
        for (size_t k = 0; k < count; ++k) {
            int32_t subscript = 0;
            if (!toSubscript(numbers[k].number, subscript))
                return in.raise(ErrorId::SubscriptOutOfRange);
            m_subscripts.push_back(subscript);
        }
        return 0;
    }
    TRY_BASIC(m_subscriptList->evaluateArguments(in, m_values));
    for (const auto& value : m_values) {
        if (value.isString() || value.empty)
            return in.raise(value.empty ? ErrorId::SyntaxError : ErrorId::TypeMismatch);
        int32_t subscript = 0;
        if (!toSubscript(value.number, subscript))
            return in.raise(ErrorId::SubscriptOutOfRange);
        m_subscripts.push_back(subscript);
    }
    return 0;
}

int CompiledTarget::assign(core::Interpreter& in, const Value& value)
{
    if (value.empty)
        return in.raise(ErrorId::SyntaxError);
    if (m_subscriptList)
        return arrayStatusError(in, in.arrays().store(m_array, m_type, m_subscripts, value));
    return storeStatusError(in, m_scalar.store(in.variables(), value));
}

int CompiledTarget::assignNumber(core::Interpreter& in, const Number& number)
{
    if (m_subscriptList)
        return arrayStatusError(in, in.arrays().storeNumber(m_array, m_type, m_subscripts, number.number));
    return storeStatusError(in, m_scalar.storeNumber(in.variables(), number.number));
}

} // namespace tessaly::expr
