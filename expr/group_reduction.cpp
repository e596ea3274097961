#include "expr/group_reduction.h"

#include "core/interpreter.h"
#include "expr/operators.h"

namespace tessaly::expr {

using core::ErrorId;

void negate(Value& value)
{
    value.number = -value.number;
    if (value.form == NumberForm::Literal)
        value.text = !value.text.empty() && value.text[0] == '-' ? value.text.substr(1) : "-" + value.text;
}

int reduceGroup(core::Interpreter& in, std::vector<Token>& tokens, ValueType& groupType)
{
    while (tokens.size() > 1) {
        int chosen = nextOperatorAt(tokens);
        if (chosen < 0)
            return in.raise(ErrorId::SyntaxError);
        auto at = static_cast<size_t>(chosen);
        Op op = tokens[at].op;
        if (at + 1 >= tokens.size() || tokens[at + 1].isOperator)
            return in.raise(ErrorId::SyntaxError);
        if (op == Op::Not) {
            TRY_BASIC(applyNot(in, tokens[at + 1].value));
            tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(at));
            continue;
        }
        if (at == 0 || tokens[at - 1].isOperator)
            return in.raise(ErrorId::SyntaxError);
        TRY_BASIC(applyBinary(in, op, tokens[at - 1].value, tokens[at + 1].value));
        if (isRelational(op))
            groupType = ValueType::Integer;
        tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(at), tokens.begin() + static_cast<std::ptrdiff_t>(at) + 2);
    }
    return 0;
}

int closeFirstTerm(core::Interpreter& in, std::vector<Token>& firstTerm, std::vector<Token>& tokens)
{
    if (firstTerm.empty())
        return in.raise(ErrorId::SyntaxError);
    ValueType termType = ValueType::Double;
    TRY_BASIC(reduceGroup(in, firstTerm, termType));
    Value term = std::move(firstTerm.front().value);
    if (term.isString())
        return in.raise(ErrorId::SyntaxError);
    negate(term);
    tokens.push_back({false, Op::Add, std::move(term)});
    return 0;
}

int finishGroupTokens(core::Interpreter& in, std::vector<Token>& tokens, std::vector<Token>& firstTerm, bool wrapping,
    ValueType groupType, Value& result)
{
    if (wrapping)
        TRY_BASIC(closeFirstTerm(in, firstTerm, tokens));
    if (tokens.empty()) {
        result = Value {};
        result.empty = true;
        return 0;
    }
    if (tokens.back().isOperator)
        return in.raise(ErrorId::SyntaxError);
    TRY_BASIC(reduceGroup(in, tokens, groupType));
    result = std::move(tokens.front().value);
    if (!result.isString())
        result.type = groupType;
    return 0;
}

} // namespace tessaly::expr
