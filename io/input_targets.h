// The variable list of INPUT # and LINE INPUT #: targets separated by commas or semicolons.
#pragma once

#include "core/interpreter.h"
#include "core/statement_buffer.h"
#include "expr/number_text.h"
#include "expr/statements.h"

namespace tessaly::io {

// Assigns text to a target as if name=("text") ran: a number is read from the text for a numeric
// target.
inline int assignText(core::Interpreter& in, const expr::Target& target, const std::string& text)
{
    // As the literal "text" would be, a text longer than a string may be does not fit.
    if (text.size() > expr::kMaxStringLength)
        return in.raise(core::ErrorId::OutOfMemory);
    expr::Value value = target.type == expr::ValueType::String
        ? expr::Value::makeString(text)
        : expr::Value::makeNumber(expr::ReadNumberText(text), expr::NumberForm::Computed16);
    return expr::assignTarget(in, target, value);
}


// Calls each(target) for the targets of the list from pos to end, in order; stops at the first
// error (each's or a target's) and returns it.
template <typename Each>
int forEachTarget(core::Interpreter& in, int pos, int end, Each&& each)
{
    auto& buffer = in.buffer();
    while (pos < end) {
        while (pos < end && buffer.at(pos) == ' ')
            ++pos;
        if (pos >= end)
            break;
        expr::Target target;
        TRY_BASIC(expr::parseTarget(in, pos, end, target));
        TRY_BASIC(each(target));
        while (pos < end && buffer.at(pos) == ' ')
            ++pos;
        if (pos < end && (buffer.at(pos) == ',' || buffer.at(pos) == ';'))
            ++pos;
        else
            break;
    }
    return 0;
}

} // namespace tessaly::io
