// RUN, END, STOP, CONT, BEEP, DEF USR, and the statements that do nothing at run time.
// The loop that acts on their results is core/run_loop.cpp.
#include <algorithm>
#include <string>

#include "core/executor.h"
#include "core/interpreter.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "core/keyword_table.h"
#include "core/preparation.h"
#include "core/run_loop.h"
#include "core/statements.h"
#include "expr/evaluator.h"
#include "expr/statements.h"
#include "screen/colours.h"
#include "screen/graphics.h"
#include "screen/screen_editor.h"
#include "io/chain_state.h"
#include "io/file_table.h"

namespace tessaly::core {

namespace {

// RUN's argument as text: upper-cased, without double quotes and blanks.
std::string plainArgument(const expr::Value& value)
{
    std::string text;
    if (value.isString()) {
        text = value.text;
    } else if (!value.empty) {
        text = std::to_string(expr::integerOf(value));
    }
    return upperCased(withoutBytes(text, "\" "));
}

// RUN "file" and RUN "file",R are LOAD with the same arguments; RUN "file" itself keeps the screen
// and runs the program once it is loaded (byRun).
Outcome runAsLoad(Interpreter& in, int begin, int end, bool byRun)
{
    auto& buffer = in.buffer();
    int keyword = begin - 3;
    if (keyword < 0 || !buffer.replace(keyword, 3, "LOAD"))
        return in.raise(ErrorId::SyntaxError);
    in.run().loadStartedByRun = byRun;
    Outcome result = executeFromKeyword(in, keyword, end + 1);
    in.run().loadStartedByRun = false;
    return result;
}

} // namespace

Outcome stmtRun(Interpreter& in, int begin, int end)
{
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    std::string label;
    int lineNumber = 0;
    if (auto star = argument.find('*'); star != std::string_view::npos) {
        label = trimBlanks(argument.substr(star));
    } else if (auto comma = argument.find(','); comma != std::string_view::npos &&
               argument.find('R', comma) != std::string_view::npos) {
        return runAsLoad(in, begin, end, false);
    } else {
        expr::Value value;
        TRY_BASIC(expr::evaluateExpression(in, begin, end, value));
        std::string plain = plainArgument(value);
        if (!plain.empty()) {
            if (!value.isString() && expr::integerOf(value) > 0)
                lineNumber = expr::integerOf(value);
            else if (plain[0] == '*')
                label = plain;
            else
                return runAsLoad(in, begin, end, true);
        }
    }

    return beginRun(in, lineNumber, label);
}

Outcome beginRun(Interpreter& in, int lineNumber, const std::string& label)
{
    auto& run = in.run();
    resetRunTime(in);
    in.chainState().reset();
    in.error().clear();
    run.continueIndex = -1;
    run.editShown = false;
    run.runMode = RunMode::Running;
    run.currentIndex = 0;
    // LOAD ,R and RUN "file" start the run as RUN does, whichever statement asked for it.
    run.statementCode = static_cast<int>(Stmt::Run);
    TRY_BASIC(prepareProgram(in));

    if (lineNumber > 0 || !label.empty()) {
        int target = label.empty() ? in.prepared().findLine(in.program(), lineNumber) : in.prepared().findLabel(label);
        if (target <= 0 || (label.empty() && target > in.program().count())) {
            // Reported at the last line of the program.
            run.currentIndex = in.program().count();
            return in.raise(ErrorId::UndefinedLineNumber);
        }
        run.currentIndex = target;
        return Outcome(Flow::RunFromEntry);
    }
    return kDone;
}

Outcome stmtEnd(Interpreter& in, int, int)
{
    in.run().currentIndex = in.run().endIndex;
    in.run().runMode = RunMode::Ended;
    return kDone;
}

Outcome stmtStop(Interpreter& in, int, int)
{
    in.run().continueIndex = in.run().currentIndex;
    breakProgram(in);
    return kDone;
}

Outcome stmtCont(Interpreter& in, int, int)
{
    continueProgram(in);
    if (in.error().isPending())
        return Failure {};
    return Outcome(Flow::ChainOn);
}

Outcome stmtNothing(Interpreter&, int, int)
{
    return kDone;
}

Outcome stmtUnavailable(Interpreter& in, int, int)
{
    return in.raise(ErrorId::SyntaxError);
}

Outcome stmtBeep(Interpreter& in, int begin, int end)
{
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    if (argument.find_first_not_of(' ') == std::string_view::npos) {
        in.host().stopTimer(TimerId::ContinuousBeep);
        in.host().beep();
        return kDone;
    }
    expr::Value value;
    TRY_BASIC(expr::evaluateExpression(in, begin, end, value));
    if (value.isString())
        return in.raise(ErrorId::SyntaxError);
    switch (expr::integerOf(value)) {
    case 0:
        in.host().stopTimer(TimerId::ContinuousBeep);
        break;
    case 1:
        in.host().startTimer(TimerId::ContinuousBeep, 50);
        break;
    default:
        return in.raise(ErrorId::SyntaxError);
    }
    return kDone;
}

Outcome stmtDefUsr(Interpreter& in, int begin, int end)
{
    auto& buffer = in.buffer();
    char next = buffer.at(begin);
    int digit = 0;
    if (next >= '0' && next <= '9')
        digit = next - '0';
    else if (next != ' ' && next != '=')
        return in.raise(ErrorId::SyntaxError);
    auto equals = buffer.view().substr(0, static_cast<size_t>(end)).find('=', static_cast<size_t>(begin));
    if (equals == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    expr::Value value;
    TRY_BASIC(expr::evaluateExpression(in, static_cast<int>(equals) + 1, end, value));
    if (value.isString())
        return in.raise(ErrorId::TypeMismatch);
    in.usrAddresses()[static_cast<size_t>(digit)] = expr::integerOf(value);
    in.run().outputText.clear();
    return kDone;
}

void resetRunTime(Interpreter& in)
{
    expr::resetVariables(in);
    in.editor().editMode = 1;
    in.files().comPorts().forgetReceives();
    in.eventTraps().resetKeySlots();
    in.stacks().reset();
    in.dataState().reset();
    in.graphics().resetPages();
    in.graphics().draw.reset(in.colours().foregroundColour);
    in.graphics().copyCounter = 0;
}

} // namespace tessaly::core
