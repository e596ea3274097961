// ON ERROR GOTO, RESUME and ERROR. Catching a raised error is done where it is shown
// (core/run_loop.cpp, showPrompt).
#include <string>

#include "core/find_target.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/statements.h"
#include "expr/evaluator.h"

namespace tessaly::core {

Outcome stmtOnErrorGoto(Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto gotoAt = text.find("GOTO", static_cast<size_t>(begin));
    if (gotoAt == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    int operandStart = static_cast<int>(gotoAt) + 4;
    auto operand = jumpOperand(text, operandStart, end);
    if (!operand.empty() && operand[0] != '*' && leadingNumber(operand) == 0 && operand[0] == '0') {
        in.trap().trapTarget = 0;
    } else {
        TRY_BASIC(findTarget(in, operandStart, end));
        in.trap().trapTarget = in.run().jumpTarget;
    }
    in.error().pending = ErrorPending::None;
    return kDone;
}

Outcome stmtResume(Interpreter& in, int begin, int end)
{
    auto& trap = in.trap();
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto operand = text.substr(static_cast<size_t>(begin));
    auto first = operand.find_first_not_of(' ');
    operand = first == std::string_view::npos ? std::string_view {} : operand.substr(first);
    operand = operand.substr(0, operand.find_last_not_of(' ') + 1);
    int entry = 0;
    if (operand == "NEXT") {
        entry = trap.trapReturnIndex + 1;
    } else if (operand.empty() || operand == "0") {
        entry = trap.trapReturnIndex;
    } else {
        TRY_BASIC(findTarget(in, begin, end));
        entry = in.run().jumpTarget;
    }
    in.run().currentIndex = entry - 1;
    in.error().clear();
    trap.inTrapHandler = false;
    trap.trapReturnIndex = 0;
    return kDone;
}

Outcome stmtError(Interpreter& in, int begin, int end)
{
    expr::Value value;
    TRY_BASIC(expr::evaluateExpression(in, begin, end, value));
    int code = 0;
    if (value.isString()) {
        std::string plain;
        for (char c : value.text) {
            if (c != '"')
                plain += c;
        }
        code = leadingNumber(plain);
        if (plain.find_first_not_of(' ') != std::string::npos && plain[plain.find_first_not_of(' ')] == '-')
            code = -1;
    } else {
        code = expr::integerOf(value);
    }
    if (code < 0 || code > 255)
        return in.raise(ErrorId::IllegalFunctionCall);
    return in.raiseUserError(code);
}

} // namespace tessaly::core
