// The numeric functions that read the interpreter's own state: the light pen, the last error, and
// the names the evaluator reads itself. Those of the cursor are answered in
// screen/text_screen_answers.cpp, those of the graphics screen in screen/expression_answers.cpp,
// those of files, memory and ports in io/expression_answers.cpp.
#include <cmath>

#include "core/event_traps.h"
#include "core/interpreter.h"
#include "expr/builtin_functions.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

int penState(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double selector = 0;
    TRY_BASIC(numberOrZero(in, call.arguments, 0, selector));
    double state = 0;
    TRY_BASIC(core::penFunction(in, static_cast<int>(std::trunc(selector)), state));
    return numberResult(in, state, result);
}

int errorCode(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.error().code, result);
}

int errorLine(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.error().line, result);
}

// FN with no name after it: its argument is read as a number, then the call is refused.
int userFunctionWithoutName(core::Interpreter& in, const FunctionCall& call, Value&)
{
    double x = 0;
    TRY_BASIC(numberOrZero(in, call.arguments, 0, x));
    return in.raise(ErrorId::IllegalFunctionCall);
}

// VARPTR takes its variable, not a value: the evaluator reads it (ArgumentShape::Variable).
int readByEvaluator(core::Interpreter& in, const FunctionCall&, Value&)
{
    return in.raise(ErrorId::IllegalFunctionCall);
}

} // namespace tessaly::expr::builtin
