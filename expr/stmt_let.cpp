// LET and assignment without LET, SWAP, and the targets (scalars and array elements) they store to.
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

using core::ErrorId;

static_assert(StoreStatus::Ok == StoreStatus {} && ArrayStatus::Ok == ArrayStatus {}, "Ok is the zero status");

int raiseStoreError(core::Interpreter& in, StoreStatus status)
{
    switch (status) {
    case StoreStatus::Ok: return 0;
    case StoreStatus::Overflow: return in.raise(ErrorId::Overflow);
    case StoreStatus::TypeMismatch: return in.raise(ErrorId::TypeMismatch);
    default: return in.raise(ErrorId::OutOfMemory);
    }
}

int raiseArrayError(core::Interpreter& in, ArrayStatus status)
{
    switch (status) {
    case ArrayStatus::Ok: return 0;
    case ArrayStatus::Overflow: return in.raise(ErrorId::Overflow);
    case ArrayStatus::TypeMismatch: return in.raise(ErrorId::TypeMismatch);
    case ArrayStatus::OutOfMemory: return in.raise(ErrorId::OutOfMemory);
    case ArrayStatus::Duplicate: return in.raise(ErrorId::DuplicateDefinition);
    default: return in.raise(ErrorId::SubscriptOutOfRange);
    }
}

namespace {

// A target read through one kind of reader of the arrays and its kind for the scalars.
template <typename Out>
int readTargetThrough(core::Interpreter& in, const Target& target, Out& out,
    ArrayStatus (ArrayStore::*readElement)(std::string_view, ValueType, const std::vector<int32_t>&, Out&),
    bool (VariableStore::*readScalar)(std::string_view, ValueType, Out&))
{
    if (target.isElement)
        return arrayStatusError(in, (in.arrays().*readElement)(target.name, target.type, target.subscripts, out));
    if (!(in.variables().*readScalar)(target.name, target.type, out))
        return in.raise(ErrorId::OutOfMemory);
    return 0;
}

} // namespace

int parseTarget(core::Interpreter& in, int& pos, int end, Target& target)
{
    auto& buffer = in.buffer();
    if (!readVariableName(buffer, pos, end, target.name))
        return in.raise(ErrorId::SyntaxError);
    target.type = in.variables().typeOfName(target.name);
    int mark = pos;
    skipBlanks(buffer, pos, end);
    target.isElement = buffer.at(pos) == '(';
    target.subscripts.clear();
    if (!target.isElement) {
        pos = mark;
        return 0;
    }
    std::vector<Value> values;
    TRY_BASIC(readParenthesisedArguments(in, pos, end, values));
    for (const auto& value : values) {
        if (value.isString() || value.empty)
            return in.raise(value.empty ? ErrorId::SyntaxError : ErrorId::TypeMismatch);
        int32_t subscript = 0;
        if (!toSubscript(value.number, subscript))
            return in.raise(ErrorId::SubscriptOutOfRange);
        target.subscripts.push_back(subscript);
    }
    return 0;
}

namespace {

// A target and the mark that must follow it, blanks between passed over; pos moves past the mark.
int parseTargetBefore(core::Interpreter& in, int& pos, int end, char mark, Target& target)
{
    TRY_BASIC(parseTarget(in, pos, end, target));
    while (pos < end && in.buffer().at(pos) == ' ')
        ++pos;
    if (in.buffer().at(pos) != mark)
        return in.raise(ErrorId::SyntaxError);
    ++pos;
    return 0;
}

} // namespace

int readTarget(core::Interpreter& in, const Target& target, Value& value)
{
    return readTargetThrough(in, target, value, &ArrayStore::read, &VariableStore::read);
}

int readTargetStored(core::Interpreter& in, const Target& target, double& stored)
{
    return readTargetThrough(in, target, stored, &ArrayStore::readStored, &VariableStore::readStored);
}

int assignTarget(core::Interpreter& in, const Target& target, const Value& value)
{
    if (value.empty)
        return in.raise(ErrorId::SyntaxError);
    if (target.isElement)
        return arrayStatusError(in, in.arrays().store(target.name, target.type, target.subscripts, value));
    return storeStatusError(in, in.variables().store(target.name, target.type, value));
}

Outcome stmtLet(core::Interpreter& in, int begin, int end)
{
    Target target;
    int pos = begin;
    TRY_BASIC(parseTargetBefore(in, pos, end, '=', target));
    Value value;
    TRY_BASIC(evaluateExpression(in, pos, end, value));
    TRY_BASIC(assignTarget(in, target, value));
    return kDone;
}

Outcome stmtSwap(core::Interpreter& in, int begin, int end)
{
    Target first;
    Target second;
    int pos = begin;
    TRY_BASIC(parseTargetBefore(in, pos, end, ',', first));
    TRY_BASIC(parseTarget(in, pos, end, second));
    if ((first.type == ValueType::String) != (second.type == ValueType::String) || first.type != second.type)
        return in.raise(ErrorId::TypeMismatch);
    Value a;
    Value b;
    TRY_BASIC(readTarget(in, first, a));
    TRY_BASIC(readTarget(in, second, b));
    TRY_BASIC(assignTarget(in, first, b));
    TRY_BASIC(assignTarget(in, second, a));
    return kDone;
}

} // namespace tessaly::expr
