// GOSUB, RETURN, IF and ON expression GOTO/GOSUB. GOTO is core/stmt_goto.cpp; loops are
// core/stmt_for.cpp and core/stmt_while.cpp.
#include <string>

#include "core/executor.h"
#include "core/flow_parts.h"
#include "core/find_target.h"
#include "core/interpreter.h"
#include "core/text_scan.h"
#include "core/keyword_table.h"
#include "core/statements.h"
#include "expr/evaluator.h"

namespace tessaly::core {

namespace {

} // namespace

Outcome stmtGosub(Interpreter& in, int begin, int end)
{
    in.run().runMode = RunMode::Gosub;
    TRY_BASIC(findTarget(in, begin, end));
    return enterSubroutine(in);
}

Outcome enterSubroutine(Interpreter& in)
{
    auto& run = in.run();
    auto& stacks = in.stacks();
    if (stacks.gosubDepth >= kMaxGosubDepth)
        return in.raise(ErrorId::OutOfMemory);
    stacks.gosubReturn[static_cast<size_t>(stacks.gosubDepth)] = run.currentIndex + 1;
    ++stacks.gosubDepth;
    run.currentIndex = run.jumpTarget - 1;
    stacks.gosubTarget[static_cast<size_t>(stacks.gosubDepth)] = run.currentIndex;
    return kDone;
}

Outcome leaveSubroutine(Interpreter& in)
{
    auto& run = in.run();
    auto& stacks = in.stacks();
    run.runMode = RunMode::Returned;
    if (stacks.gosubDepth <= 0) {
        stacks.gosubDepth = 0;
        return in.raise(ErrorId::ReturnWithoutGosub);
    }
    --stacks.gosubDepth;
    run.jumpTarget = stacks.gosubReturn[static_cast<size_t>(stacks.gosubDepth)];
    run.currentIndex = run.jumpTarget - 1;
    return kDone;
}

Outcome stmtReturn(Interpreter& in, int begin, int end)
{
    if (Outcome left = leaveSubroutine(in); left.failed())
        return left;
    auto rest = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    if (rest.find_first_not_of(' ') == std::string_view::npos)
        return kDone;
    // RETURN n: the return address is dropped and the statement goes on as GOTO n.
    int keyword = begin - 6;
    if (keyword < 0 || !in.buffer().replace(keyword, 6, "GOTO  "))
        return in.raise(ErrorId::SyntaxError);
    return executeFromKeyword(in, keyword, end);
}

size_t ifConditionEnd(std::string_view statement, int begin, int end)
{
    auto text = statement.substr(0, static_cast<size_t>(end));
    size_t stop = findOutsideQuotes(text, " THEN", static_cast<size_t>(begin));
    size_t jump = findOutsideQuotes(text, " GOTO", static_cast<size_t>(begin));
    if (jump < stop)
        stop = jump;
    return stop == std::string_view::npos ? static_cast<size_t>(end) : stop;
}

Outcome stmtIf(Interpreter& in, int begin, int end)
{
    size_t stop = ifConditionEnd(in.buffer().view(), begin, end);
    in.stacks().lastIfEntry = in.run().currentIndex;
    bool truth = false;
    TRY_BASIC(expr::evaluateCondition(in, begin, static_cast<int>(stop), truth));
    return takeIfBranch(in, truth);
}

Outcome takeIfBranch(Interpreter& in, bool truth)
{
    int k = -1;
    return takeIfBranch(in, truth, k);
}

Outcome takeIfBranch(Interpreter& in, bool truth, int& known)
{
    auto& run = in.run();
    const auto& prepared = in.prepared();
    // The IF found last time stands for this entry while it is still recorded there.
    int k = known;
    if (k < 0 || k >= prepared.ifCount() || prepared.ifAt(k).entry != run.currentIndex)
        k = known = prepared.findIf(run.currentIndex);
    if (k < 0)
        return in.raise(ErrorId::IllegalFunctionCall);
    int base = prepared.ifAt(k).branchBase;
    run.currentIndex = truth ? base : base + 2;
    return Outcome(Flow::RepeatEntry);
}

Outcome stmtOnGoto(Interpreter& in, int begin, int end)
{
    auto& buffer = in.buffer();
    auto text = std::string(buffer.view().substr(0, static_cast<size_t>(end)));
    for (std::string_view form : {" COM ", " KEY ", " ERROR ", " STOP ", " TIME$ ", " PEN "}) {
        if (text.find(form) != std::string::npos)
            return in.raise(ErrorId::SyntaxError);
    }
    size_t gotoAt = findOutsideQuotes(text, "GOTO", static_cast<size_t>(begin));
    size_t gosubAt = findOutsideQuotes(text, "GOSUB", static_cast<size_t>(begin));
    bool isGosub = gosubAt < gotoAt;
    size_t keyword = isGosub ? gosubAt : gotoAt;
    if (keyword == std::string::npos)
        return in.raise(ErrorId::SyntaxError);
    expr::Value value;
    TRY_BASIC(expr::evaluateExpression(in, begin, static_cast<int>(keyword), value));
    if (value.isString())
        return in.raise(ErrorId::TypeMismatch);
    int n = expr::integerOf(value);
    if (n < 0 || value.empty)
        return in.raise(ErrorId::SyntaxError);
    in.run().statementCode = 0;
    if (n == 0)
        return kDone;
    // The n-th item of the list after the keyword: digits, or "*" and letters.
    size_t pos = keyword + (isGosub ? 5 : 4);
    int index = 1;
    std::string item;
    for (; pos < text.size(); ++pos) {
        char c = text[pos];
        if (c == ',') {
            if (index == n)
                break;
            ++index;
            item.clear();
            continue;
        }
        if ((c >= '0' && c <= '9') || c == '*' || (!item.empty() && item[0] == '*' && c >= 'A' && c <= 'Z'))
            item += c;
    }
    if (index < n || item.empty())
        return kDone;
    std::string statement = (isGosub ? "GOSUB " : "GOTO ") + item;
    if (!buffer.assign(statement))
        return in.raise(ErrorId::LineBufferOverflow);
    return executeFromKeyword(in, 0, buffer.length());
}

} // namespace tessaly::core
