// DEFINT, DEFSNG, DEFDBL, DEFSTR (letter ranges) and CLEAR, with the variable reset they share.
#include "core/char_class.h"
#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/statements.h"
#include "expr/arrays.h"
#include "expr/function_state.h"
#include "expr/statements.h"
#include "expr/variables.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

int defineLetters(core::Interpreter& in, int begin, int end, ValueType type)
{
    auto& buffer = in.buffer();
    struct Range {
        char first, last;
    };
    std::vector<Range> ranges;
    int pos = begin;
    auto skip = [&] {
        while (pos < end && buffer.at(pos) == ' ')
            ++pos;
    };
    for (;;) {
        skip();
        char first = core::toUpperAscii(buffer.at(pos));
        if (pos >= end || first < 'A' || first > 'Z')
            return in.raise(ErrorId::SyntaxError);
        ++pos;
        char last = first;
        skip();
        if (pos < end && buffer.at(pos) == '-') {
            ++pos;
            skip();
            last = core::toUpperAscii(buffer.at(pos));
            if (pos >= end || last < 'A' || last > 'Z')
                return in.raise(ErrorId::SyntaxError);
            ++pos;
            skip();
        }
        if (last < first)
            std::swap(first, last);
        ranges.push_back({first, last});
        if (pos >= end)
            break;
        if (buffer.at(pos) != ',')
            return in.raise(ErrorId::SyntaxError);
        ++pos;
    }
    auto& variables = in.variables();
    for (const auto& range : ranges) {
        if (!variables.canDefine(range.first, range.last, type))
            return in.raise(ErrorId::DuplicateDefinition);
        variables.define(range.first, range.last, type);
    }
    return in.run().statementCode;
}

} // namespace

Outcome stmtDefint(core::Interpreter& in, int begin, int end) { return core::outcomeOf(defineLetters(in, begin, end, ValueType::Integer)); }
Outcome stmtDefsng(core::Interpreter& in, int begin, int end) { return core::outcomeOf(defineLetters(in, begin, end, ValueType::Single)); }
Outcome stmtDefdbl(core::Interpreter& in, int begin, int end) { return core::outcomeOf(defineLetters(in, begin, end, ValueType::Double)); }
Outcome stmtDefstr(core::Interpreter& in, int begin, int end) { return core::outcomeOf(defineLetters(in, begin, end, ValueType::String)); }

Outcome stmtClear(core::Interpreter& in, int, int)
{
    core::resetRunTime(in);
    return kDone;
}

void resetVariables(core::Interpreter& in)
{
    in.variables().reset();
    in.arrays().reset();
    auto& state = in.functionState();
    state.userFunctionDepth = 0;
    state.random.reset();
}

} // namespace tessaly::expr
