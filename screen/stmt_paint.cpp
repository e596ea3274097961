// PAINT: the region around a point, up to a border colour, filled with a colour, a hatch or a tile.
#include <cmath>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "screen/colours.h"
#include "screen/figure_arguments.h"
#include "screen/graphics.h"
#include "screen/paint_brush.h"
#include "screen/renderer.h"
#include "screen/statements.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

using core::ErrorId;

Outcome stmtPaint(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto& g = in.graphics();
    auto& colours = in.colours();
    size_t pos = static_cast<size_t>(begin);
    FigurePoint point;
    bool found = false;
    TRY_BASIC(readFigurePoint(in, text, pos, point, found));
    std::vector<std::string> fields;
    if (!found || !argumentsAfter(text, pos, fields))
        return in.raise(ErrorId::SyntaxError);
    g.tileText.clear();
    int paint = -1;
    int border = -1;
    if (!fields.empty() && !fields[0].empty()) {
        expr::Value v;
        TRY_BASIC(expr::evaluateText(in, fields[0], v));
        if (v.isString())
            g.tileText = v.text;
        else if (!v.empty)
            paint = roundHalfAway(v.number);
    }
    if (fields.size() > 1 && !fields[1].empty()) {
        expr::Value v;
        TRY_BASIC(expr::evaluateText(in, fields[1], v));
        if (v.isString())
            return in.raise(ErrorId::TypeMismatch);
        border = roundHalfAway(v.number);
    }

    // STEP counts from the last point, which PAINT leaves where it was.
    int x = 0;
    int y = 0;
    toDevicePoint(g, point, x, y, PointRounding::AddHalfTruncate);
    colours.paintColour = colours.isValid(paint) ? paint : colours.foregroundColour;
    int borderColour = colours.isValid(border) ? border : colours.paintColour;

    Brush brush = Brush::solid(colours.palette[static_cast<size_t>(colours.paintColour)]);
    if (!g.tileText.empty())
        TRY_BASIC(makeBrush(in, g.tileText, brush));
    auto* renderer = in.renderer();
    if (renderer == nullptr)
        return kDone;
    renderer->activePage().floodFillWith(
        x, y, colours.palette[static_cast<size_t>(borderColour)], [&brush](int px, int py) { return brush.at(px, py); });
    renderer->composeRect(0, 0, kScreenWidth - 1, kScreenHeight - 1);
    return kDone;
}

} // namespace tessaly::screen
