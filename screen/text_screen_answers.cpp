// The functions of expressions that the text screen and the keyboard answer: CSRLIN, POS and
// INKEY$. They are handlers of the function lists, defined here beside the state they read.
#include "core/interpreter.h"
#include "core/host.h"
#include "expr/builtin_functions.h"
#include "screen/keyboard.h"
#include "screen/text_screen.h"

namespace tessaly::expr::builtin {

int cursorRow(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.screen().cursorRow(), result);
}

int cursorColumn(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.screen().cursorColumn(), result);
}

int lastKey(core::Interpreter& in, const FunctionCall&, Value& result)
{
    in.host().keyboardRead();
    auto& keys = in.keyboard();
    int key = keys.lastKey;
    keys.lastKey = 0;
    if (key == 0 || key == 16)
        return stringResult("", result);
    return stringResult(std::string(1, static_cast<char>(key & 0xFF)), result);
}

} // namespace tessaly::expr::builtin
