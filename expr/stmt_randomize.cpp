// RANDOMIZE n: seeds the random numbers of RND.
#include "core/interpreter.h"
#include "core/outcome.h"
#include "expr/evaluator.h"
#include "expr/function_state.h"
#include "expr/statements.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

Outcome stmtRandomize(core::Interpreter& in, int begin, int end)
{
    Value value;
    TRY_BASIC(evaluateExpression(in, begin, end, value));
    // Without a number the seed is asked for on the screen.
    if (value.empty)
        return randomizeFromKeyboard(in);
    if (value.isString())
        return in.raise(core::ErrorId::TypeMismatch);
    int32_t seed = integerOf(value);
    if (seed < -32768 || seed > 32767)
        return in.raise(core::ErrorId::IllegalFunctionCall);
    in.functionState().random.randomize(seed);
    return kDone;
}

} // namespace tessaly::expr
