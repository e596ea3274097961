// Reducing a group's tokens (operands and operators, in the order they were read) to one value:
// the operator done next is the first that goes before its right neighbour, else the last one.
// Shared by the evaluator of statement text and the compiled expressions.
#pragma once

#include <vector>

#include "expr/expression_scratch.h"
#include "expr/operators.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

// The place of the operator that the reduction applies next: the first one that goes before its
// right neighbour (a NOT waits for what follows it), else the last one; -1 when there is none.
// Works on any list of tokens with isOperator and op.
template <typename TokenList>
[[nodiscard]] int nextOperatorAt(const TokenList& tokens)
{
    int pending = -1;
    for (int k = 0; k < static_cast<int>(tokens.size()); ++k) {
        const auto& token = tokens[static_cast<size_t>(k)];
        if (!token.isOperator)
            continue;
        if (token.op == Op::Not) {
            pending = k;
            continue;
        }
        if (pending >= 0 && !tokens[static_cast<size_t>(k - 1)].isOperator
            && goesFirst(tokens[static_cast<size_t>(pending)].op, token.op))
            return pending;
        pending = k;
    }
    return pending;
}

// A negated number; a literal keeps its spelling with the sign in front.
void negate(Value& value);
// Reduces the tokens to one; a relational operator makes the group's type integer. Returns 0, or
// kFailed after raising.
int reduceGroup(core::Interpreter& interpreter, std::vector<Token>& tokens, ValueType& groupType);
// The wrapped first term -(term) reduced as a group of its own and put in front of the group.
int closeFirstTerm(core::Interpreter& interpreter, std::vector<Token>& firstTerm, std::vector<Token>& tokens);
// The group's value from its tokens once its end is reached (a wrapped first term still open is
// closed first); an empty group gives a value with `empty` set.
int finishGroupTokens(core::Interpreter& interpreter, std::vector<Token>& tokens, std::vector<Token>& firstTerm,
    bool wrapping, ValueType groupType, Value& result);

} // namespace tessaly::expr
