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
    FigurePoint point;
    std::vector<std::string> fields;
    TRY_BASIC(readPointAndArguments(in, text, static_cast<size_t>(begin), point, fields));
    g.tileText.clear();
    TileOrNumber fill;
    TRY_BASIC(readTileOrNumber(in, fields, 0, fill));
    int paint = fill.given && !fill.tile && !fill.value.empty ? roundHalfAway(fill.value.number) : -1;
    int border = -1;
    TRY_BASIC(roundedArgument(in, fields, 1, border));

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
