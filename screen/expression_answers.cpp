// The functions of expressions that the graphics screen answers: POINT, MAP, VIEW and WINDOW. They
// are handlers of the function lists, defined here beside the state they read.
#include <array>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "expr/builtin_functions.h"
#include "expr/number_text.h"
#include "screen/colours.h"
#include "screen/graphics.h"
#include "screen/renderer.h"

namespace tessaly::expr::builtin {

namespace {

using core::ErrorId;

// The argument that picks one of four answers (0 to 3); anything else is "Illegal function call in ".
int selector(core::Interpreter& in, const std::vector<Value>& args, size_t k, int& n)
{
    if (k >= args.size() || args[k].isString() || args[k].empty)
        return in.raise(ErrorId::IllegalFunctionCall);
    n = static_cast<int>(core::roundHalfUpTruncated(args[k].number));
    if (n < 0 || n > 3)
        return in.raise(ErrorId::IllegalFunctionCall);
    return 0;
}

Value number(double x)
{
    return Value::makeNumber(RoundToDigits(x, 16), NumberForm::Computed16);
}

// VIEW(n) and WINDOW(n): corner n of left, top, right and bottom.
int corner(core::Interpreter& in, const FunctionCall& call, const std::array<double, 4>& corners, Value& result)
{
    int n = 0;
    TRY_BASIC(selector(in, call.arguments, 0, n));
    result = number(corners[static_cast<size_t>(n)]);
    return 0;
}

} // namespace

// POINT(n): the last point (0 and 1 in world coordinates while a view is set, 2 and 3 on the
// device); POINT(x, y): the colour number seen at a device point, -1 when no palette entry shows it.
int pointColour(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& args = call.arguments;
    if (!call.hasParentheses)
        return in.raise(ErrorId::SyntaxError);
    auto& g = in.graphics();
    if (args.size() == 1) {
        int n = 0;
        TRY_BASIC(selector(in, args, 0, n));
        double value = n == 0 ? (g.viewActive ? g.toWorldX(g.lastX) : g.lastX)
            : n == 1          ? (g.viewActive ? g.toWorldY(g.lastY) : g.lastY)
            : n == 2          ? g.lastX
                              : g.lastY;
        result = number(value);
        return 0;
    }
    if (args.size() != 2 || args[0].isString() || args[1].isString())
        return in.raise(ErrorId::SyntaxError);
    int x = screen::devicePixel(args[0].number);
    int y = screen::devicePixel(args[1].number);
    if (x < g.viewLeft || x > g.viewRight || y < g.viewTop || y > g.viewBottom)
        return in.raise(ErrorId::IllegalFunctionCall);
    auto& colours = in.colours();
    // What is visible, text included; without pixels the screen counts as background.
    screen::Pixel seen = in.renderer() != nullptr ? in.renderer()->composite().pixel(x, y)
                                                  : colours.palette[static_cast<size_t>(colours.backgroundInEffect)];
    int found = -1;
    int count = colours.colourMode == 2 ? 16 : 8;
    for (int k = 0; k < count && found < 0; ++k) {
        if (colours.palette[static_cast<size_t>(k)] == seen)
            found = k;
    }
    result = number(found);
    return 0;
}

// MAP(v, n): a world coordinate on the device (n 0 for x, 1 for y) or a device one in the world (2, 3).
int mapCoordinate(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& args = call.arguments;
    auto& g = in.graphics();
    int n = 0;
    TRY_BASIC(selector(in, args, 1, n));
    if (args[0].isString() || args[0].empty)
        return in.raise(ErrorId::TypeMismatch);
    float v = static_cast<float>(args[0].number);
    double value = n == 0 ? g.toDeviceX(v)
        : n == 1          ? g.toDeviceY(v)
        : n == 2          ? static_cast<float>(g.toWorldX(static_cast<int>(core::roundHalfUpTruncated(args[0].number))))
                          : static_cast<float>(g.toWorldY(static_cast<int>(core::roundHalfUpTruncated(args[0].number))));
    result = number(value);
    return 0;
}

int viewportCorner(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& g = in.graphics();
    return corner(in, call, {static_cast<double>(g.viewLeft), static_cast<double>(g.viewTop),
        static_cast<double>(g.viewRight), static_cast<double>(g.viewBottom)}, result);
}

int windowCorner(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& g = in.graphics();
    return corner(in, call, {g.worldLeft, g.worldTop, g.worldRight, g.worldBottom}, result);
}

} // namespace tessaly::expr::builtin
