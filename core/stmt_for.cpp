// FOR and NEXT: the FOR stack, stepping integer and single loop variables, and the skip of a
// loop that runs zero times to its matching NEXT.
#include <cmath>
#include <string>

#include "core/interpreter.h"
#include "core/text_scan.h"
#include "core/program_walk.h"
#include "core/for_loops.h"
#include "core/statements.h"
#include "expr/evaluator.h"
#include "expr/statements.h"
#include "expr/variables.h"

namespace tessaly::core {

namespace {

// The text of an entry as the NEXT search reads it: comments removed.
std::string searchableText(Interpreter& in, int entry)
{
    std::string text = in.program().textAt(entry);
    auto apostrophe = text.find('\'');
    if (apostrophe != std::string::npos)
        text.erase(apostrophe);
    auto rem = text.find("REM");
    if (rem != std::string::npos)
        text.erase(rem);
    return text;
}

} // namespace

// The matching NEXT of a loop that runs zero times; 0 when there is none.
int findMatchingNext(Interpreter& in, int forEntry, int level)
{
    int from = forEntry;
    // A FOR in an IF branch searches from the IF statement.
    int line = programLineOf(in, forEntry);
    auto& prepared = in.prepared();
    bool inOwnLine = forEntry == line ||
        (prepared.lastPieceOf(line) != 0 && forEntry >= prepared.overrideAt(line) && forEntry <= prepared.lastPieceOf(line));
    if (!inOwnLine && in.stacks().lastIfEntry > 0)
        from = in.stacks().lastIfEntry;
    int count = level;
    return walkEntriesAfter(in, from, [&](int entry) {
        std::string text = searchableText(in, entry);
        if (text.find('"') != std::string::npos)
            return false;
        if (text.find("FOR ") != std::string::npos)
            ++count;
        if (text.find("NEXT") != std::string::npos) {
            if (count == level)
                return true;
            --count;
        }
        return false;
    });
}

Outcome stmtFor(Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));

    expr::Target target;
    int pos = begin;
    TRY_BASIC(expr::parseTarget(in, pos, end, target));
    ForParts parts;
    if (!findForParts(text, static_cast<size_t>(pos), parts))
        return in.raise(ErrorId::SyntaxError);
    size_t equals = parts.equals;
    size_t toAt = parts.to;
    size_t toLength = parts.toLength;
    size_t stepAt = parts.step;

    if (target.type != expr::ValueType::Integer && target.type != expr::ValueType::Single)
        return in.raise(ErrorId::TypeMismatch);

    int level = 0;
    TRY_BASIC(findForLevel(in, level));

    expr::Value initial;
    TRY_BASIC(expr::evaluateExpression(in, static_cast<int>(equals) + 1, static_cast<int>(toAt), initial));
    TRY_BASIC(expr::assignTarget(in, target, initial));
    expr::Value limit;
    int limitEnd = stepAt == std::string_view::npos ? end : static_cast<int>(stepAt);
    TRY_BASIC(expr::evaluateExpression(in, static_cast<int>(toAt + toLength), limitEnd, limit));
    double step = 1;
    if (stepAt != std::string_view::npos) {
        expr::Value stepValue;
        TRY_BASIC(expr::evaluateExpression(in, static_cast<int>(stepAt) + 4, end, stepValue));
        if (stepValue.isString())
            return in.raise(ErrorId::TypeMismatch);
        step = static_cast<float>(stepValue.number);
    }
    return enterLoop(in, target, level, limit, step);
}

bool findForParts(std::string_view text, size_t pos, ForParts& parts)
{
    parts.equals = text.find('=', pos);
    if (parts.equals == std::string_view::npos)
        return false;
    parts.to = findOutsideQuotes(text, " TO", parts.equals);
    parts.toLength = 3;
    if (parts.to == std::string_view::npos) {
        parts.to = findOutsideQuotes(text, "TO", parts.equals);
        parts.toLength = 2;
    }
    if (parts.to == std::string_view::npos)
        return false;
    parts.step = findOutsideQuotes(text, "STEP", parts.to + parts.toLength);
    return true;
}

int findForLevel(Interpreter& in, int& level)
{
    auto& stacks = in.stacks();
    // A FOR run again (a GOTO back to it) takes up its own level again.
    level = 0;
    for (int k = 1; k <= stacks.forDepth; ++k) {
        if (stacks.forLevels[static_cast<size_t>(k)].entry == in.run().currentIndex)
            level = k;
    }
    if (level == 0 && stacks.forDepth >= kMaxForDepth)
        return in.raise(ErrorId::OutOfMemory);
    return 0;
}

Outcome enterLoop(Interpreter& in, const expr::Target& target, int level, const expr::Value& limit, double step)
{
    auto& run = in.run();
    auto& stacks = in.stacks();
    if (limit.isString() || limit.empty)
        return in.raise(limit.empty ? ErrorId::SyntaxError : ErrorId::TypeMismatch);
    if (step == 0)
        step = 1;
    expr::Value current;
    TRY_BASIC(expr::readTarget(in, target, current));

    if (level == 0)
        level = ++stacks.forDepth;
    else
        stacks.forDepth = level;
    stacks.forCurrentLevel = level;
    auto& entry = stacks.forLevels[static_cast<size_t>(level)];
    entry = {run.currentIndex, target.name, target.subscripts, target.isElement, target.type, current.number,
        limit.number, step};
    entry.serial = ++stacks.forPushes;

    bool zeroTrip = step > 0 ? limit.number < current.number : limit.number > current.number;
    if (!zeroTrip)
        return kDone;
    int next = findMatchingNext(in, run.currentIndex, level);
    if (next == 0)
        return in.raise(ErrorId::ForWithoutNext);
    stacks.forDepth = level - 1;
    run.currentIndex = next;
    return kDone;
}

Outcome stmtNext(Interpreter& in, int begin, int end)
{
    auto& stacks = in.stacks();
    char after = in.buffer().at(begin);
    if (begin < end && after != ' ')
        return in.raise(ErrorId::SyntaxError);
    if (stacks.forDepth <= 0)
        return in.raise(ErrorId::NextWithoutFor);
    int level = stacks.forDepth;
    auto rest = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    if (rest.find_first_not_of(' ') != std::string_view::npos) {
        expr::Target target;
        int pos = begin;
        TRY_BASIC(expr::parseTarget(in, pos, end, target));
        TRY_BASIC(levelOfVariable(in, target.name, target.isElement, target.subscripts, level));
    }
    return stepLoop(in, level);
}

int levelOfVariable(Interpreter& in, std::string_view name, bool isElement, const std::vector<int32_t>& subscripts,
    int& level)
{
    auto& stacks = in.stacks();
    auto same = [&](const ForLevel& loop) {
        return loop.variable == name && loop.isElement == isElement && loop.subscripts == subscripts;
    };
    if (same(stacks.forLevels[static_cast<size_t>(level)]))
        return 0;
    level = 0;
    for (int k = 1; k <= stacks.forCurrentLevel && k <= stacks.forDepth; ++k) {
        if (same(stacks.forLevels[static_cast<size_t>(k)])) {
            level = k;
            break;
        }
    }
    if (level == 0)
        return in.raise(ErrorId::NextWithoutFor);
    stacks.forDepth = level;
    return 0;
}

namespace {

// The loop variable's next value from the value its cell holds, and whether the loop has ended
// with it; false when an integer variable would step out of its 16-bit range (an overflow: the
// variable keeps its value).
bool stepValue(const ForLevel& loop, double stored, double& next, bool& ended)
{
    if (loop.type == expr::ValueType::Integer) {
        // An integer loop variable steps by the step truncated to a whole number.
        next = stored + std::trunc(loop.step);
        if (next > 32767 || next < -32768)
            return false;
        double limit = std::trunc(loop.limit);
        ended = loop.step > 0 ? next > limit : next < limit;
        return true;
    }
    float value = static_cast<float>(stored) + static_cast<float>(loop.step);
    next = value;
    float limit = static_cast<float>(loop.limit);
    ended = loop.step > 0 ? value > limit : value < limit;
    return true;
}

// After the variable is stored: an ended loop leaves its level, else the body runs again.
Outcome endStep(Interpreter& in, int level, bool ended)
{
    auto& stacks = in.stacks();
    stacks.forCurrentLevel = level;
    if (ended) {
        stacks.forDepth = level - 1;
        return kDone;
    }
    in.run().currentIndex = stacks.forLevels[static_cast<size_t>(level)].entry;
    return kDone;
}

// stepLoop for an array element, or a variable not made yet: read and stored by its name. Out of
// line, so that the values it makes are not set up around every step of a bound variable.
[[gnu::noinline]] Outcome stepLoopByName(Interpreter& in, int level)
{
    const auto& loop = in.stacks().forLevels[static_cast<size_t>(level)];
    expr::Target target {loop.variable, loop.subscripts, loop.isElement, loop.type};
    double stored = 0;
    TRY_BASIC(expr::readTargetStored(in, target, stored));
    double next = 0;
    bool ended = false;
    if (!stepValue(loop, stored, next, ended))
        return in.raise(ErrorId::Overflow);
    expr::Value stepped = expr::Value::makeNumber(next, expr::NumberForm::Computed16);
    TRY_BASIC(expr::assignTarget(in, target, stepped));
    return endStep(in, level, ended);
}

} // namespace

Outcome stepLoop(Interpreter& in, int level)
{
    auto& loop = in.stacks().forLevels[static_cast<size_t>(level)];
    auto& variables = in.variables();
    if (!loop.isElement && (loop.cellGeneration != variables.generation() || loop.cell < 0)) {
        loop.cell = variables.find(loop.variable);
        loop.cellGeneration = variables.generation();
    }
    if (loop.isElement || loop.cell < 0)
        return stepLoopByName(in, level);
    // The variable steps from the value its cell holds: a single not through its seven-digit
    // text, so 0.1 added ten times is just above 1 and FOR X=0 TO 1 STEP 0.1 runs ten times.
    double next = 0;
    bool ended = false;
    if (!stepValue(loop, variables.readStoredAt(loop.cell), next, ended))
        return in.raise(ErrorId::Overflow);
    TRY_BASIC(expr::storeStatusError(in, variables.storeNumberAt(loop.cell, next)));
    return endStep(in, level, ended);
}

} // namespace tessaly::core
