// PAINT: the region around a point, up to a border colour, filled with a colour, a hatch or a tile.
#include <cmath>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "screen/paint_brush.h"
#include "screen/renderer.h"
#include "screen/statements.h"

namespace tessaly::screen {

namespace {

using core::ErrorId;

bool colourValid(const Colours& colours, int c) { return static_cast<unsigned>(c) <= (colours.colourMode == 2 ? 15U : 7U); }

} // namespace

int stmtPaint(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto& g = in.graphics();
    auto& colours = in.colours();
    size_t open = text.find('(', static_cast<size_t>(begin));
    if (open == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    std::string before = core::trimBlanks(text.substr(static_cast<size_t>(begin), open - static_cast<size_t>(begin)));
    bool step = before == "STEP";
    if (!before.empty() && !step)
        return in.raise(ErrorId::SyntaxError);
    size_t close = core::matchingParen(text, open);
    if (close == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    std::vector<expr::Value> point;
    TRY_BASIC(expr::evaluateArguments(in, text.substr(open + 1, close - open - 1), point));
    if (point.size() != 2 || point[0].empty || point[1].empty)
        return in.raise(ErrorId::SyntaxError);
    if (point[0].isString() || point[1].isString())
        return in.raise(ErrorId::TypeMismatch);
    std::vector<std::string> fields;
    size_t comma = text.find_first_not_of(' ', close + 1);
    if (comma != std::string_view::npos) {
        if (text[comma] != ',')
            return in.raise(ErrorId::SyntaxError);
        core::splitAtTopLevel(text.substr(comma + 1), [](char c) { return c == ','; }, [&](std::string_view piece, char) {
            fields.push_back(core::trimBlanks(piece));
            return true;
        });
    }
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

    int x = 0;
    int y = 0;
    if (g.viewActive) {
        x = step ? g.toDeviceDistanceX(point[0].number) : g.toDeviceX(point[0].number);
        y = step ? g.toDeviceDistanceY(point[1].number) : g.toDeviceY(point[1].number);
    } else {
        x = deviceCoordinate(point[0].number + 0.5);
        y = deviceCoordinate(point[1].number + 0.5);
    }
    // STEP counts from the last point, which PAINT leaves where it was.
    if (step) {
        x += g.lastX;
        y += g.lastY;
    }
    colours.paintColour = colourValid(colours, paint) ? paint : colours.foregroundColour;
    int borderColour = colourValid(colours, border) ? border : colours.paintColour;

    Brush brush = Brush::solid(colours.palette[static_cast<size_t>(colours.paintColour)]);
    if (!g.tileText.empty())
        TRY_BASIC(makeBrush(in, g.tileText, brush));
    auto* renderer = in.renderer();
    if (renderer == nullptr)
        return in.run().statementCode;
    renderer->activePage().floodFillWith(
        x, y, colours.palette[static_cast<size_t>(borderColour)], [&brush](int px, int py) { return brush.at(px, py); });
    renderer->composeRect(0, 0, kScreenWidth - 1, kScreenHeight - 1);
    return in.run().statementCode;
}

} // namespace tessaly::screen
