// Reducing a group's tokens (operands and operators, in the order they were read) to one value:
// the operator done next is the first that goes before its right neighbour, else the last one.
// Shared by the evaluator of statement text and the compiled expressions.
#pragma once

#include <vector>

#include "expr/expression_scratch.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

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
