#include "expr/compiled_condition.h"

#include "core/interpreter.h"
#include "expr/condition_parts.h"
#include "expr/evaluator.h"
#include "expr/function_state.h"

namespace tessaly::expr {

namespace {

std::unique_ptr<CompiledExpression> compileText(std::string_view text)
{
    return CompiledExpression::compile(text, 0, text.size(), text);
}

} // namespace

std::unique_ptr<CompiledCondition> CompiledCondition::compile(std::string_view condition)
{
    auto compiled = std::make_unique<CompiledCondition>();
    size_t pos = 0;
    while (pos <= condition.size()) {
        size_t length = 0;
        size_t word = findLogical(condition, pos, length);
        size_t stop = word == std::string_view::npos ? condition.size() : word;
        auto term = condition.substr(pos, stop - pos);
        if (term.find_first_not_of(' ') != std::string_view::npos) {
            Term compiledTerm;
            auto relation = findRelation(term);
            if (relation.at == std::string_view::npos) {
                compiledTerm.left = compileText(term);
            } else {
                compiledTerm.left = compileText(term.substr(0, relation.at));
                compiledTerm.right = compileText(term.substr(relation.at + relation.length));
                compiledTerm.kind = relation.kind;
                if (!compiledTerm.right)
                    return nullptr;
            }
            if (!compiledTerm.left)
                return nullptr;
            compiled->m_pieces.push_back({static_cast<int>(compiled->m_terms.size()), {}});
            compiled->m_terms.push_back(std::move(compiledTerm));
        }
        if (word == std::string_view::npos)
            break;
        compiled->m_pieces.push_back({-1, std::string(condition.substr(word, length)) + ' '});
        pos = word + length;
    }
    // A condition with nothing in it keeps its text, and the error that comes with it.
    if (compiled->m_terms.empty())
        return nullptr;
    return compiled;
}

// A term whose sides are numbers: compared without making values; kNotNumbers sends the term the
// general way (evaluating its sides again does nothing twice that shows).
int CompiledCondition::numericTermTruth(core::Interpreter& in, const Term& term, bool& truth)
{
    Number left {};
    int status = term.left->evaluateNumber(in, left);
    if (status != 0)
        return status;
    if (!term.right) {
        truth = numberTruth(left.number);
        return 0;
    }
    Number right {};
    status = term.right->evaluateNumber(in, right);
    if (status != 0)
        return status;
    truth = numbersHold(term.kind, left.number, right.number);
    return 0;
}

int CompiledCondition::termTruth(core::Interpreter& in, const Term& term, bool& truth)
{
    int numeric = numericTermTruth(in, term, truth);
    if (numeric != CompiledExpression::kNotNumbers)
        return numeric;
    return valueTermTruth(in, term, truth);
}

int CompiledCondition::valueTermTruth(core::Interpreter& in, const Term& term, bool& truth)
{
    Value left;
    TRY_BASIC(term.left->evaluate(in, left));
    if (!term.right)
        return valueTruth(in, left, truth);
    Value right;
    TRY_BASIC(term.right->evaluate(in, right));
    return sidesTruth(in, left, right, term.kind, truth);
}

int CompiledCondition::evaluate(core::Interpreter& in, bool& truth) const
{
    if (m_pieces.size() == 1) {
        bool termTrue = false;
        TRY_BASIC(termTruth(in, m_terms.front(), termTrue));
        in.functionState().conditionValue = termTrue ? -1 : 0;
        truth = termTrue;
        return 0;
    }
    return evaluateCombined(in, truth);
}

int CompiledCondition::evaluateCombined(core::Interpreter& in, bool& truth) const
{
    // The terms are evaluated in order; the words between them then combine their -1 and 0.
    std::string combined;
    for (const auto& piece : m_pieces) {
        if (piece.term < 0) {
            combined += piece.text;
            continue;
        }
        bool termTrue = false;
        TRY_BASIC(termTruth(in, m_terms[static_cast<size_t>(piece.term)], termTrue));
        combined += termTrue ? "-1 " : " 0 ";
    }
    Value value;
    TRY_BASIC(evaluateText(in, combined, value));
    if (value.isString() || value.empty)
        return in.raise(core::ErrorId::SyntaxError);
    in.functionState().conditionValue = integerOf(value);
    truth = in.functionState().conditionValue != 0;
    return 0;
}

} // namespace tessaly::expr
