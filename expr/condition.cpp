// Conditions of IF and WHILE: each comparison is made between two whole sides, exactly, and the
// logical operators then combine the -1 and 0 that the comparisons give.
#include <cmath>
#include <string>

#include "core/interpreter.h"
#include "expr/evaluator.h"
#include "core/text_scan.h"
#include "expr/condition_parts.h"
#include "expr/function_state.h"

namespace tessaly::expr {

constexpr std::string_view kLogicalWords[] = {" AND", " OR", " XOR", " IMP", " EQV", " NOT"};

// The first logical word (with its blank) outside quotes from pos; npos when none.
size_t findLogical(std::string_view text, size_t pos, size_t& length)
{
    return core::findOutsideQuotesIf(text, pos, [&](size_t at) {
        for (auto word : kLogicalWords) {
            if (text.compare(at, word.size(), word) == 0) {
                length = word.size();
                return true;
            }
        }
        return false;
    });
}

// The first relational operator of a term outside quotes and parentheses.
Relation findRelation(std::string_view term)
{
    size_t pos = core::findAtTopLevel(term, 0, [](char c, int depth) { return depth == 0 && (c == '=' || c == '<' || c == '>'); });
    if (pos == std::string_view::npos)
        return {};
    char c = term[pos];
    char next = pos + 1 < term.size() ? term[pos + 1] : '\0';
    auto pairIs = [&](const char* pair) { return (c == pair[0] && next == pair[1]) || (c == pair[1] && next == pair[0]); };
    if (pairIs("<>"))
        return {pos, 2, 2};
    if (pairIs("<="))
        return {pos, 2, 4};
    if (pairIs(">="))
        return {pos, 2, 6};
    return {pos, 1, c == '=' ? 1 : (c == '<' ? 3 : 5)};
}

namespace {

using core::ErrorId;

bool holds(int kind, int comparison)
{
    switch (kind) {
    case 1: return comparison == 0;
    case 2: return comparison != 0;
    case 3: return comparison < 0;
    case 4: return comparison <= 0;
    case 5: return comparison > 0;
    default: return comparison >= 0;
    }
}

} // namespace

int valueTruth(core::Interpreter& in, const Value& value, bool& truth)
{
    if (value.isString())
        return in.raise(ErrorId::TypeMismatch);
    truth = numberTruth(value.number);
    return 0;
}

int sidesTruth(core::Interpreter& in, const Value& left, const Value& right, int kind, bool& truth)
{
    if (left.isString() != right.isString() || left.empty || right.empty)
        return in.raise(left.empty || right.empty ? ErrorId::SyntaxError : ErrorId::TypeMismatch);
    int comparison = 0;
    if (left.isString()) {
        int c = left.text.compare(right.text);
        comparison = c < 0 ? -1 : (c > 0 ? 1 : 0);
    } else {
        truth = numbersHold(kind, left.number, right.number);
        return 0;
    }
    truth = holds(kind, comparison);
    return 0;
}

bool numbersHold(int kind, double left, double right)
{
    return holds(kind, left < right ? -1 : (left > right ? 1 : 0));
}

namespace {

int termTruth(core::Interpreter& in, std::string_view term, bool& truth)
{
    auto relation = findRelation(term);
    if (relation.at == std::string_view::npos) {
        Value value;
        TRY_BASIC(evaluateText(in, term, value));
        return valueTruth(in, value, truth);
    }
    Value left;
    Value right;
    TRY_BASIC(evaluateText(in, term.substr(0, relation.at), left));
    TRY_BASIC(evaluateText(in, term.substr(relation.at + relation.length), right));
    return sidesTruth(in, left, right, relation.kind, truth);
}

} // namespace

int evaluateCondition(core::Interpreter& in, int begin, int end, bool& truth)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    std::string condition(text.substr(static_cast<size_t>(begin)));
    // Each term becomes -1 or 0; the logical words stay between them.
    std::string combined;
    size_t pos = 0;
    while (pos <= condition.size()) {
        size_t length = 0;
        size_t word = findLogical(condition, pos, length);
        size_t stop = word == std::string_view::npos ? condition.size() : word;
        auto term = std::string_view(condition).substr(pos, stop - pos);
        if (term.find_first_not_of(' ') != std::string_view::npos) {
            bool termTrue = false;
            TRY_BASIC(termTruth(in, term, termTrue));
            combined += termTrue ? "-1 " : " 0 ";
        }
        if (word == std::string_view::npos)
            break;
        combined += condition.substr(word, length);
        combined += ' ';
        pos = word + length;
    }
    Value value;
    TRY_BASIC(evaluateText(in, combined, value));
    if (value.isString() || value.empty)
        return in.raise(ErrorId::SyntaxError);
    in.functionState().conditionValue = integerOf(value);
    truth = in.functionState().conditionValue != 0;
    return 0;
}

} // namespace tessaly::expr
