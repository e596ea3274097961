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

// One argument evaluated to a number; an empty argument leaves value as it is.
int numberArgument(core::Interpreter& in, const std::vector<std::string>& fields, size_t k, double& value)
{
    if (k >= fields.size() || fields[k].empty())
        return 0;
    expr::Value v;
    TRY_BASIC(expr::evaluateText(in, fields[k], v));
    if (v.isString())
        return in.raise(ErrorId::TypeMismatch);
    if (!v.empty)
        value = v.number;
    return 0;
}

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

} // namespace

Outcome stmtCircle(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto& g = in.graphics();
    auto& colours = in.colours();
    size_t pos = static_cast<size_t>(begin);
    FigurePoint centre;
    bool found = false;
    TRY_BASIC(readFigurePoint(in, text, pos, centre, found));
    // r, colour, start, end, ratio, F, paint colour or tile.
    std::vector<std::string> fields;
    if (!found || !argumentsAfter(text, pos, fields))
        return in.raise(ErrorId::SyntaxError);
    if (fields.empty() || fields[0].empty())
        return in.raise(ErrorId::SyntaxError);
    double r = 0;
    double colourValue = colours.storedForeground;
    double start = 0;
    double finish = kFullTurn;
    double ratio = 1.0;
    TRY_BASIC(numberArgument(in, fields, 0, r));
    TRY_BASIC(numberArgument(in, fields, 1, colourValue));
    TRY_BASIC(numberArgument(in, fields, 2, start));
    TRY_BASIC(numberArgument(in, fields, 3, finish));
    TRY_BASIC(numberArgument(in, fields, 4, ratio));
    bool fill = fields.size() > 5 && (fields[5].find('F') != std::string::npos || fields[5].find('f') != std::string::npos);
    int paintGiven = -1;
    bool tile = false;
    if (fields.size() > 6 && !fields[6].empty()) {
        expr::Value v;
        TRY_BASIC(expr::evaluateText(in, fields[6], v));
        // A string is the tile (or hatch) that a filled figure is painted with.
        if (v.isString()) {
            g.tileText = v.text;
            tile = true;
        } else if (!v.empty) {
            paintGiven = roundHalfAway(v.number);
        }
    }

    int colour = roundHalfAway(colourValue);
    colours.paintColour = colours.isValid(colour) ? colour : colours.paintColour;
    if (colours.isValid(colour))
        colours.foregroundColour = colour;
    if (paintGiven >= 0 && colours.isValid(paintGiven))
        colours.paintColour = paintGiven;
    if (std::fabs(finish) > kFullTurn || std::fabs(start) > kFullTurn)
        return in.raise(ErrorId::SyntaxError);

    EllipseBox box;
    toDevicePoint(g, centre, box.cx, box.cy);
    g.lastX = box.cx;
    g.lastY = box.cy;
    if (g.viewActive) {
        box.rx = ratio <= 1 ? g.toDeviceDistanceX(r) : g.toDeviceDistanceX(r / ratio);
        box.ry = ratio <= 1 ? g.toDeviceDistanceY(r * ratio) : g.toDeviceDistanceY(r);
    } else {
        int radius = devicePixel(r);
        box.rx = ratio <= 1 ? radius : devicePixelHalfUp(radius / ratio);
        box.ry = ratio <= 1 ? devicePixelHalfUp(radius * ratio) : radius;
    }
    if (box.rx < 0)
        return in.raise(ErrorId::SyntaxError);

    AngleRange range;
    range.whole = std::fabs(finish - start) >= kFullTurn;
    range.start = std::fabs(start);
    range.end = std::fabs(finish);

    auto* renderer = in.renderer();
    if (renderer == nullptr)
        return kDone;
    Plane& page = renderer->activePage();
    Pixel pen = colours.palette[static_cast<size_t>(colours.foregroundColour)];
    int startX = box.cx + box.rx, startY = box.cy, endX = startX, endY = startY;
    if (!range.whole && box.ry > 0 && box.rx > 0) {
        pointAt(box, start, startX, startY);
        pointAt(box, finish, endX, endY);
    }
    if (fill) {
        Brush brush = Brush::solid(colours.palette[static_cast<size_t>(colours.paintColour)]);
        if (tile)
            TRY_BASIC(makeBrush(in, g.tileText, brush));
        fillEllipse(page, box, range, brush);
    }
    drawEllipseOutline(page, box, range, pen);
    if (start < 0 || (fill && !range.whole))
        page.line(box.cx, box.cy, startX, startY, pen);
    if (finish < 0 || (fill && !range.whole))
        page.line(box.cx, box.cy, endX, endY, pen);
    renderer->composeRect(box.cx - box.rx, box.cy - box.ry, box.cx + box.rx, box.cy + box.ry);
    return kDone;
}

} // namespace tessaly::screen
