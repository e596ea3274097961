// SCREEN, VIEW, WINDOW, PSET, PRESET and the POINT statement (the functions POINT, MAP, VIEW and
// WINDOW are screen/expression_answers.cpp). Figures are drawn on the active page at once and the
// rectangle they touched recomposed.
#include <algorithm>
#include <cmath>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "screen/colours.h"
#include "screen/figure_arguments.h"
#include "screen/graphics.h"
#include "screen/renderer.h"
#include "screen/statements.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// A point written [STEP](x, y) followed by more arguments after a comma.
struct PointArguments {
    bool step = false;
    double x = 0, y = 0;
    std::vector<expr::Value> rest; // the arguments after the point
};

int readPoint(core::Interpreter& in, int begin, int end, PointArguments& point)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t pos = static_cast<size_t>(begin);
    FigurePoint read;
    bool found = false;
    TRY_BASIC(readFigurePoint(in, text, pos, read, found));
    if (!found)
        return in.raise(ErrorId::SyntaxError);
    point.step = read.step;
    point.x = read.x;
    point.y = read.y;
    // Further arguments follow the point after a comma (the second corner of VIEW follows a dash).
    size_t comma = text.find_first_not_of(' ', pos);
    if (comma != std::string_view::npos && text[comma] == ',')
        TRY_BASIC(evaluateStatementArguments(in, static_cast<int>(comma) + 1, end, point.rest));
    return 0;
}

// Two corners written (x1, y1)-(x2, y2), as VIEW and WINDOW take them.
int readCorners(core::Interpreter& in, int begin, int end, PointArguments& first, PointArguments& second)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    TRY_BASIC(readPoint(in, begin, end, first));
    auto dash = text.find('-', core::matchingParen(text, text.find('(', static_cast<size_t>(begin))));
    if (dash == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    return readPoint(in, static_cast<int>(dash) + 1, end, second);
}

// The device point of a [STEP](x, y), which becomes the last point.
void placePoint(core::Interpreter& in, const PointArguments& point, int& px, int& py)
{
    auto& g = in.graphics();
    toDevicePoint(g, {point.step, point.x, point.y}, px, py);
    g.lastX = px;
    g.lastY = py;
}

Outcome setPixel(core::Interpreter& in, int begin, int end, int defaultColour)
{
    PointArguments point;
    TRY_BASIC(readPoint(in, begin, end, point));
    return plotPixel(in, {point.step, point.x, point.y}, argumentOr(point.rest, 0, 20), defaultColour);
}

} // namespace

// givenColour: the colour argument as a whole number, 20 (not a colour) when there is none.
Outcome plotPixel(core::Interpreter& in, const FigurePoint& point, int givenColour, int defaultColour)
{
    int px = 0;
    int py = 0;
    auto& g = in.graphics();
    toDevicePoint(g, point, px, py);
    g.lastX = px;
    g.lastY = py;
    auto& colours = in.colours();
    colours.foregroundColour = defaultColour;
    if (colours.isValid(givenColour))
        colours.foregroundColour = givenColour;
    if (auto* renderer = in.renderer()) {
        renderer->activePage().setPixel(px, py, colours.palette[static_cast<size_t>(colours.foregroundColour)]);
        renderer->composeRect(px - 1, py - 1, px, py);
    }
    return kDone;
}

Outcome stmtPset(core::Interpreter& in, int begin, int end) { return setPixel(in, begin, end, in.colours().pointColour); }

Outcome stmtPreset(core::Interpreter& in, int begin, int end)
{
    return setPixel(in, begin, end, in.colours().backgroundColour);
}

Outcome stmtPoint(core::Interpreter& in, int begin, int end)
{
    PointArguments point;
    TRY_BASIC(readPoint(in, begin, end, point));
    int px = 0;
    int py = 0;
    placePoint(in, point, px, py);
    return kDone;
}

Outcome stmtScreen(core::Interpreter& in, int begin, int end)
{
    std::vector<expr::Value> values;
    TRY_BASIC(evaluateStatementArguments(in, begin, end, values));
    // Without a comma after the mode nothing happens.
    if (values.size() < 2)
        return kDone;
    auto& g = in.graphics();
    int mode = in.colours().colourMode;
    int screenSwitch = argumentOr(values, 1, -1);
    if (screenSwitch == 0 || screenSwitch == 1)
        g.graphicsSwitch = 0;
    else if (screenSwitch == 2 || screenSwitch == 3)
        g.graphicsSwitch = 2;
    int active = argumentOr(values, 2, -1);
    if (active == 0 || active == 1)
        g.activePage = active;
    int display = argumentOr(values, 3, -1);
    bool none = mode == 2 ? (display == 0 || display == 16 || display == 32 || display == 48)
                          : (display == 0 || display == 8 || display == 16 || display == 24);
    if (none)
        g.displayPageValue = 0;
    else if (display == 1)
        g.displayPageValue = 1;
    else if (display == (mode == 2 ? 33 : 17))
        g.displayPageValue = 17;
    g.resetView();
    g.draw.reset(in.colours().foregroundColour);
    // The page keeps the clip of the last VIEW: only the next VIEW replaces it.
    if (auto* renderer = in.renderer())
        renderer->composeRect(0, 0, kScreenWidth - 1, kScreenHeight - 1);
    return kDone;
}

Outcome stmtView(core::Interpreter& in, int begin, int end)
{
    PointArguments first;
    PointArguments second;
    TRY_BASIC(readCorners(in, begin, end, first, second));
    int x1 = roundHalfAway(first.x), y1 = roundHalfAway(first.y);
    int x2 = roundHalfAway(second.x), y2 = roundHalfAway(second.y);
    if (!(x1 < x2 && y1 < y2 && x1 >= 0 && y1 >= 0 && x2 < kScreenWidth && y2 < kScreenHeight))
        return in.raise(ErrorId::IllegalFunctionCall);
    auto& g = in.graphics();
    g.viewLeft = x1;
    g.viewTop = y1;
    g.viewRight = x2;
    g.viewBottom = y2;
    g.viewActive = true;
    if (g.windowSet) {
        g.scaleX = g.worldWidth() / g.viewWidth();
        g.scaleY = g.worldHeight() / g.viewHeight();
    } else {
        g.worldLeft = static_cast<float>(x1);
        g.worldTop = static_cast<float>(y1);
        g.worldRight = static_cast<float>(x2);
        g.worldBottom = static_cast<float>(y2);
        g.scaleX = g.scaleY = 1.0;
    }
    g.lastX = static_cast<int>(g.worldLeft);
    g.lastY = static_cast<int>(g.worldTop);
    auto& colours = in.colours();
    int fill = argumentOr(second.rest, 0, -1);
    int border = argumentOr(second.rest, 1, -1);
    g.viewFillColour = colours.isValid(fill) ? fill : -1;
    g.viewBorderColour = colours.isValid(border) ? border : -1;
    if (auto* renderer = in.renderer()) {
        auto& page = renderer->activePage();
        page.resetClip();
        if (g.viewFillColour >= 0)
            page.fill({x1, y1, x2, y2}, colours.palette[static_cast<size_t>(g.viewFillColour)]);
        if (g.viewBorderColour >= 0) {
            Pixel colour = colours.palette[static_cast<size_t>(g.viewBorderColour)];
            page.line(x1 - 1, y1 - 1, x1 - 1, y2 + 1, colour);
            page.line(x1 - 1, y2 + 1, x2 + 1, y2 + 1, colour);
            page.line(x2 + 1, y2 + 1, x2 + 1, y1 - 1, colour);
            page.line(x2 + 1, y1 - 1, x1 - 1, y1 - 1, colour);
        }
        renderer->composeRect(x1 - 1, y1 - 1, x2 + 1, y2 + 1);
        // Later drawing on this page stays within x1-1..x2-1 and y1-1..y2-1 until the next VIEW.
        page.setClip({x1 - 1, y1 - 1, x2, y2});
    }
    return kDone;
}

Outcome stmtWindow(core::Interpreter& in, int begin, int end)
{
    PointArguments first;
    PointArguments second;
    TRY_BASIC(readCorners(in, begin, end, first, second));
    if (!(second.x > first.x && second.y > first.y))
        return in.raise(ErrorId::IllegalFunctionCall);
    auto& g = in.graphics();
    g.worldLeft = static_cast<float>(first.x);
    g.worldTop = static_cast<float>(first.y);
    g.worldRight = static_cast<float>(second.x);
    g.worldBottom = static_cast<float>(second.y);
    g.viewActive = true;
    g.windowSet = true;
    g.scaleX = g.worldWidth() / g.viewWidth();
    g.scaleY = g.worldHeight() / g.viewHeight();
    g.lastX = devicePixel(first.x);
    g.lastY = devicePixel(first.y);
    return kDone;
}

} // namespace tessaly::screen
