// LINE: a line, a box or a filled box on the active page, in a colour and an optional line style.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/rounding.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
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

namespace {

using core::ErrorId;
using core::outcomeOf;

enum class LineShape : uint8_t { Line, Box, FilledBox };

// LINE as written: [[STEP](x1, y1)]-[STEP](x2, y2) [, colour [, B or BF [, style or tile]]].
struct LineFigure {
    FigurePoint first;
    bool hasFirst = false; // without it the line starts at the last point
    FigurePoint second;
    int colour = 0;
    LineShape shape = LineShape::Line;
    TileOrNumber style;
};

// The two points: the first may be left out, the dash and the second may not.
int readLinePoints(core::Interpreter& in, std::string_view text, size_t& pos, LineFigure& line)
{
    bool hasSecond = false;
    TRY_BASIC(readFigurePoint(in, text, pos, line.first, line.hasFirst));
    size_t dash = text.find_first_not_of(' ', pos);
    if (dash == std::string_view::npos || text[dash] != '-')
        return in.raise(ErrorId::SyntaxError);
    pos = dash + 1;
    TRY_BASIC(readFigurePoint(in, text, pos, line.second, hasSecond));
    if (!hasSecond)
        return in.raise(ErrorId::SyntaxError);
    return 0;
}

int readLineFigure(core::Interpreter& in, int begin, int end, LineFigure& line)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t pos = static_cast<size_t>(begin);
    TRY_BASIC(readLinePoints(in, text, pos, line));
    // The arguments after the points: colour, B or BF, and a style (or a tile string).
    std::vector<std::string> fields;
    if (!argumentsAfter(text, pos, fields))
        return in.raise(ErrorId::SyntaxError);
    // A colour left blank is the current one; with no arguments at all, the one COLOR stored.
    auto& colours = in.colours();
    line.colour = fields.empty() ? colours.storedForeground : colours.foregroundColour;
    TRY_BASIC(roundedArgument(in, fields, 0, line.colour));
    if (fields.size() > 1) {
        std::string upper = core::upperCased(fields[1]);
        line.shape = upper.find("BF") != std::string::npos ? LineShape::FilledBox
            : upper.find('B') != std::string::npos        ? LineShape::Box
                                                          : LineShape::Line;
    }
    return readTileOrNumber(in, fields, 2, line.style);
}

// The figure on the active page, between the device corners (sorted for a box).
int drawLineFigure(core::Interpreter& in, const LineFigure& line, const std::array<int, 4>& corners, uint16_t pattern)
{
    auto& colours = in.colours();
    auto* renderer = in.renderer();
    auto [x1, y1, x2, y2] = corners;
    Plane& page = renderer->activePage();
    Pixel pen = colours.palette[static_cast<size_t>(colours.foregroundColour)];
    if (line.shape == LineShape::Line) {
        page.line(x1, y1, x2, y2, pen, pattern);
    } else {
        page.line(x1, y1, x1, y2, pen, pattern);
        page.line(x1, y2, x2, y2, pen, pattern);
        page.line(x2, y2, x2, y1, pen, pattern);
        page.line(x2, y1, x1, y1, pen, pattern);
        if (line.shape == LineShape::FilledBox) {
            int seedX = static_cast<int>(core::roundHalfUpTruncated((x1 + x2) * 0.5));
            int seedY = static_cast<int>(core::roundHalfUpTruncated((y1 + y2) * 0.5));
            Brush brush = Brush::solid(colours.palette[static_cast<size_t>(colours.paintColour)]);
            if (line.style.tile)
                TRY_BASIC(makeBrush(in, in.graphics().tileText, brush));
            page.floodFillWith(seedX, seedY, pen, [&brush](int px, int py) { return brush.at(px, py); });
        }
    }
    renderer->composeRect(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2));
    return 0;
}

} // namespace

std::vector<int> lineStyleToDashes(uint32_t style)
{
    std::vector<int> dashes;
    bool drawing = true;
    int run = 0;
    for (int bit = 15; bit >= 0; --bit) {
        bool set = (style >> bit) & 1U;
        if (set != drawing) {
            dashes.push_back(run);
            drawing = set;
            run = 0;
        }
        ++run;
    }
    dashes.push_back(run);
    if (drawing)
        dashes.push_back(0);
    return dashes;
}

Outcome stmtLine(core::Interpreter& in, int begin, int end)
{
    LineFigure line;
    TRY_BASIC(readLineFigure(in, begin, end, line));
    auto& g = in.graphics();
    auto& colours = in.colours();
    // A STEP second point counts from the first one.
    int x1 = g.lastX, y1 = g.lastY, x2 = 0, y2 = 0;
    if (line.hasFirst)
        toDevicePoint(g, line.first, x1, y1);
    g.lastX = x1;
    g.lastY = y1;
    toDevicePoint(g, line.second, x2, y2);
    g.lastX = x2;
    g.lastY = y2;
    if (line.shape != LineShape::Line) {
        if (x1 > x2)
            std::swap(x1, x2);
        if (y1 > y2)
            std::swap(y1, y2);
    }
    bool styleGiven = line.style.given && !line.style.tile;
    long long styleValue = styleGiven ? roundHalfAway(line.style.value.number) : line.colour;
    if (colours.isValid(line.colour))
        colours.foregroundColour = line.colour;
    if (line.shape == LineShape::FilledBox && styleValue >= 0 && styleValue <= 15 &&
        colours.isValid(static_cast<int>(styleValue)))
        colours.paintColour = static_cast<int>(styleValue);
    uint16_t pattern = 0xFFFF;
    if (styleGiven && line.shape != LineShape::FilledBox && styleValue > 0) {
        if (styleValue > 65535)
            return in.raise(ErrorId::IllegalFunctionCall);
        pattern = static_cast<uint16_t>(styleValue);
    }
    if (in.renderer() == nullptr)
        return kDone;
    return outcomeOf(drawLineFigure(in, line, {x1, y1, x2, y2}, pattern));
}

Outcome stmtLineParen(core::Interpreter& in, int begin, int end)
{
    // "LINE(" takes its parenthesis with it: the first point starts on it.
    return stmtLine(in, begin - 1, end);
}

} // namespace tessaly::screen
