// The functions of expressions that the graphics screen answers: POINT, MAP, VIEW and WINDOW. They
// are handlers of the function lists, defined here beside the state they read.
#include "core/interpreter.h"
#include "expr/builtin_functions.h"
#include "screen/statements.h"

namespace tessaly::expr::builtin {

namespace {

int graphics(core::Interpreter& in, screen::GraphicsFunction function, const FunctionCall& call, Value& result)
{
    return screen::graphicsFunction(in, function, call.arguments, call.hasParentheses, result);
}

} // namespace

int pointColour(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::Point, call, result);
}

int mapCoordinate(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::Map, call, result);
}

int viewportCorner(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::View, call, result);
}

int windowCorner(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::Window, call, result);
}

} // namespace tessaly::expr::builtin
