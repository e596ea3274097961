// CIRCLE: circles, ellipses, arcs and sectors, outlined or filled, on the active page.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "screen/colours.h"
#include "screen/ellipse.h"
#include "screen/figure_arguments.h"
#include "screen/graphics.h"
#include "screen/renderer.h"
#include "screen/statements.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// The value of pi the system uses, and a full turn.
constexpr double kPi = 3.141592653;
constexpr double kFullTurn = 2 * kPi;

// The point of the ellipse at angle |a|, counted upwards on the screen.
void pointAt(const EllipseBox& box, double angle, int& x, int& y)
{
    double a = std::fabs(angle);
    double c = std::cos(a);
    double s = std::sin(a);
    double radius = 1.0 / std::sqrt(c * c / (static_cast<double>(box.rx) * box.rx) + s * s / (static_cast<double>(box.ry) * box.ry));
    x = box.cx + devicePixel(c * radius);
    y = box.cy - devicePixel(s * radius);
}

// CIRCLE as written: (x, y), r [, colour [, start [, end [, ratio [, F [, paint colour or tile]]]]]].
struct CircleFigure {
    FigurePoint centre;
    double radius = 0;
    double colour = 0;
    double start = 0;
    double finish = kFullTurn;
    double ratio = 1.0;
    bool fill = false;
    TileOrNumber paint;
};

int readCircleFigure(core::Interpreter& in, int begin, int end, CircleFigure& circle)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    std::vector<std::string> fields;
    TRY_BASIC(readPointAndArguments(in, text, static_cast<size_t>(begin), circle.centre, fields));
    if (fields.empty() || fields[0].empty())
        return in.raise(ErrorId::SyntaxError);
    circle.colour = in.colours().storedForeground;
    TRY_BASIC(numberArgument(in, fields, 0, circle.radius));
    TRY_BASIC(numberArgument(in, fields, 1, circle.colour));
    TRY_BASIC(numberArgument(in, fields, 2, circle.start));
    TRY_BASIC(numberArgument(in, fields, 3, circle.finish));
    TRY_BASIC(numberArgument(in, fields, 4, circle.ratio));
    circle.fill =
        fields.size() > 5 && (fields[5].find('F') != std::string::npos || fields[5].find('f') != std::string::npos);
    return readTileOrNumber(in, fields, 6, circle.paint);
}

// The ellipse's box on the device: its centre becomes the last point.
EllipseBox circleBox(GraphicScreen& g, const CircleFigure& circle)
{
    EllipseBox box;
    toDevicePoint(g, circle.centre, box.cx, box.cy);
    g.lastX = box.cx;
    g.lastY = box.cy;
    double r = circle.radius;
    double ratio = circle.ratio;
    if (g.viewActive) {
        box.rx = ratio <= 1 ? g.toDeviceDistanceX(r) : g.toDeviceDistanceX(r / ratio);
        box.ry = ratio <= 1 ? g.toDeviceDistanceY(r * ratio) : g.toDeviceDistanceY(r);
    } else {
        int radius = devicePixel(r);
        box.rx = ratio <= 1 ? radius : devicePixelHalfUp(radius / ratio);
        box.ry = ratio <= 1 ? devicePixelHalfUp(radius * ratio) : radius;
    }
    return box;
}

// The figure on the active page: the outline, filled first when F was given, and the radii that a
// negative angle or a filled sector asks for.
int drawCircleFigure(core::Interpreter& in, const CircleFigure& circle, const EllipseBox& box)
{
    auto& colours = in.colours();
    auto* renderer = in.renderer();
    AngleRange range;
    range.whole = std::fabs(circle.finish - circle.start) >= kFullTurn;
    range.start = std::fabs(circle.start);
    range.end = std::fabs(circle.finish);
    Plane& page = renderer->activePage();
    Pixel pen = colours.palette[static_cast<size_t>(colours.foregroundColour)];
    int startX = box.cx + box.rx, startY = box.cy, endX = startX, endY = startY;
    if (!range.whole && box.ry > 0 && box.rx > 0) {
        pointAt(box, circle.start, startX, startY);
        pointAt(box, circle.finish, endX, endY);
    }
    if (circle.fill) {
        Brush brush = Brush::solid(colours.palette[static_cast<size_t>(colours.paintColour)]);
        if (circle.paint.tile)
            TRY_BASIC(makeBrush(in, in.graphics().tileText, brush));
        fillEllipse(page, box, range, brush);
    }
    drawEllipseOutline(page, box, range, pen);
    if (circle.start < 0 || (circle.fill && !range.whole))
        page.line(box.cx, box.cy, startX, startY, pen);
    if (circle.finish < 0 || (circle.fill && !range.whole))
        page.line(box.cx, box.cy, endX, endY, pen);
    renderer->composeRect(box.cx - box.rx, box.cy - box.ry, box.cx + box.rx, box.cy + box.ry);
    return 0;
}

} // namespace

Outcome stmtCircle(core::Interpreter& in, int begin, int end)
{
    CircleFigure circle;
    TRY_BASIC(readCircleFigure(in, begin, end, circle));
    auto& colours = in.colours();
    const auto& paint = circle.paint;
    int paintGiven = paint.given && !paint.tile && !paint.value.empty ? roundHalfAway(paint.value.number) : -1;
    int colour = roundHalfAway(circle.colour);
    colours.paintColour = colours.isValid(colour) ? colour : colours.paintColour;
    if (colours.isValid(colour))
        colours.foregroundColour = colour;
    if (paintGiven >= 0 && colours.isValid(paintGiven))
        colours.paintColour = paintGiven;
    if (std::fabs(circle.finish) > kFullTurn || std::fabs(circle.start) > kFullTurn)
        return in.raise(ErrorId::SyntaxError);
    EllipseBox box = circleBox(in.graphics(), circle);
    if (box.rx < 0)
        return in.raise(ErrorId::SyntaxError);
    if (in.renderer() == nullptr)
        return kDone;
    return core::outcomeOf(drawCircleFigure(in, circle, box));
}

} // namespace tessaly::screen
