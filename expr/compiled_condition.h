// An IF or WHILE condition read once: its terms' sides compiled, the logical words between them
// kept. Evaluating it gives what evaluateCondition gives for its text, with the same errors.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "expr/compiled_expression.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

class CompiledCondition {
public:
    // nullptr where a side cannot be compiled.
    static std::unique_ptr<CompiledCondition> compile(std::string_view condition);
    // Sets truth and the condition's value; 0, or kFailed after raising.
    int evaluate(core::Interpreter& interpreter, bool& truth) const;

private:
    struct Term {
        std::unique_ptr<CompiledExpression> left;
        std::unique_ptr<CompiledExpression> right; // none without a comparison
        int kind = 0;
    };
    // The condition as the terms' -1 and 0 joined by the logical words.
    struct Piece {
        int term = -1;    // a term, or -1 for the text
        std::string text; // a logical word and its blank
    };
    static int numericTermTruth(core::Interpreter& interpreter, const Term& term, bool& truth);
    static int termTruth(core::Interpreter& interpreter, const Term& term, bool& truth);
    // The general ways, kept out of line: the values and the text they make would otherwise be set
    // up and torn down around every numeric term as well.
    [[gnu::noinline]] static int valueTermTruth(core::Interpreter& interpreter, const Term& term, bool& truth);
    [[gnu::noinline]] int evaluateCombined(core::Interpreter& interpreter, bool& truth) const;

    std::vector<Term> m_terms;
    std::vector<Piece> m_pieces;
};

} // namespace tessaly::expr
