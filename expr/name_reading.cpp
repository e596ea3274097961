// Names, subscripts and list commas of DIM, ERASE, LET, SWAP, READ and the like.
#include "expr/name_reading.h"

#include "core/interpreter.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"

namespace tessaly::expr {

void skipBlanks(const core::StatementBuffer& buffer, int& pos, int end)
{
    while (pos < end && buffer.at(pos) == ' ')
        ++pos;
}

bool readVariableName(const core::StatementBuffer& buffer, int& pos, int end, std::string& name)
{
    skipBlanks(buffer, pos, end);
    if (pos >= end || !core::isLetter(buffer.at(pos)))
        return false;
    int start = pos;
    while (pos < end && core::isNameChar(buffer.at(pos)))
        ++pos;
    name.assign(buffer.view().substr(static_cast<size_t>(start), static_cast<size_t>(pos - start)));
    for (char& c : name)
        c = core::toUpperAscii(c);
    return true;
}

int readParenthesisedArguments(core::Interpreter& in, int& pos, int end, std::vector<Value>& values)
{
    auto& buffer = in.buffer();
    auto found = core::matchingParen(buffer.view().substr(0, static_cast<size_t>(end)), static_cast<size_t>(pos));
    if (found == std::string_view::npos)
        return in.raise(core::ErrorId::SyntaxError);
    int close = static_cast<int>(found);
    values.clear();
    TRY_BASIC(evaluateArguments(in,
        buffer.view().substr(static_cast<size_t>(pos + 1), static_cast<size_t>(close - pos - 1)), values));
    pos = close + 1;
    return 0;
}

int nextListItem(core::Interpreter& in, int& pos, int end)
{
    auto& buffer = in.buffer();
    skipBlanks(buffer, pos, end);
    if (pos >= end)
        return 0;
    if (buffer.at(pos) != ',')
        return in.raise(core::ErrorId::SyntaxError);
    ++pos;
    return 1;
}

} // namespace tessaly::expr
