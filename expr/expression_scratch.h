// Working storage of the evaluator, kept between evaluations so that reducing a group allocates
// nothing once the program has run a while.
#pragma once

#include <vector>

#include "expr/operators.h"
#include "expr/values.h"

namespace tessaly::expr {

struct Token {
    bool isOperator;
    Op op;
    Value value;
};

struct ExpressionScratch {
    ExpressionScratch()
        : groups(kGroupSlots)
        , firstTerms(kGroupSlots)
        , argumentLists(kGroupSlots)
        , subscriptLists(kGroupSlots)
        , functionResults(kGroupSlots)
    {
    }

    // One token list per nesting level; never reallocated, so a level's list stays put while
    // deeper levels (and the expressions of FN calls) are reduced.
    static constexpr size_t kGroupSlots = 64 * 12;
    std::vector<std::vector<Token>> groups;
    // The first term of a group whose leading minus wraps it, per level.
    std::vector<std::vector<Token>> firstTerms;
    // The arguments of a call or the subscripts of an element read by a compiled group, per level.
    std::vector<std::vector<Value>> argumentLists;
    std::vector<std::vector<int32_t>> subscriptLists;
    // The value of a function called by a group evaluated on numbers, per level.
    std::vector<Value> functionResults;
    int depth = 0;
};

} // namespace tessaly::expr
