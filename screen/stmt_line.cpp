// LINE: a line, a box or a filled box on the active page, in a colour and an optional line style.
#include <algorithm>
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
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto& g = in.graphics();
    auto& colours = in.colours();
    size_t pos = static_cast<size_t>(begin);
    FigurePoint first;
    FigurePoint second;
    bool hasFirst = false;
    bool hasSecond = false;
    TRY_BASIC(readFigurePoint(in, text, pos, first, hasFirst));
    size_t dash = text.find_first_not_of(' ', pos);
    if (dash == std::string_view::npos || text[dash] != '-')
        return in.raise(ErrorId::SyntaxError);
    pos = dash + 1;
    TRY_BASIC(readFigurePoint(in, text, pos, second, hasSecond));
    if (!hasSecond)
        return in.raise(ErrorId::SyntaxError);

    // The arguments after the points: colour, B or BF, and a style (or a tile string).
    std::vector<std::string> fields;
    if (!argumentsAfter(text, pos, fields))
        return in.raise(ErrorId::SyntaxError);
    int lineColour = colours.storedForeground;
    if (!fields.empty()) {
        if (fields[0].empty()) {
            lineColour = colours.foregroundColour;
        } else {
            expr::Value value;
            TRY_BASIC(expr::evaluateText(in, fields[0], value));
            if (value.isString())
                return in.raise(ErrorId::TypeMismatch);
            lineColour = roundHalfAway(value.number);
        }
    }
    int mode = 0;
    if (fields.size() > 1) {
        std::string upper = core::upperCased(fields[1]);
        mode = upper.find("BF") != std::string::npos ? 2 : upper.find('B') != std::string::npos ? 1 : 0;
    }
    bool styleGiven = false;
    bool tile = false;
    long long styleValue = lineColour;
    if (fields.size() > 2 && !fields[2].empty()) {
        expr::Value value;
        TRY_BASIC(expr::evaluateText(in, fields[2], value));
        // A string is the tile (or hatch) that a filled box is painted with.
        if (value.isString()) {
            g.tileText = value.text;
            tile = true;
        } else {
            styleValue = roundHalfAway(value.number);
            styleGiven = true;
        }
    }

    // A STEP second point counts from the first one.
    int x1 = g.lastX, y1 = g.lastY, x2 = 0, y2 = 0;
    if (hasFirst)
        toDevicePoint(g, first, x1, y1);
    g.lastX = x1;
    g.lastY = y1;
    toDevicePoint(g, second, x2, y2);
    g.lastX = x2;
    g.lastY = y2;
    if (mode != 0) {
        if (x1 > x2)
            std::swap(x1, x2);
        if (y1 > y2)
            std::swap(y1, y2);
    }
    if (colours.isValid(lineColour))
        colours.foregroundColour = lineColour;
    if (mode == 2 && styleValue >= 0 && styleValue <= 15 && colours.isValid(static_cast<int>(styleValue)))
        colours.paintColour = static_cast<int>(styleValue);
    uint16_t pattern = 0xFFFF;
    if (styleGiven && mode != 2 && styleValue > 0) {
        if (styleValue > 65535)
            return in.raise(ErrorId::IllegalFunctionCall);
        pattern = static_cast<uint16_t>(styleValue);
    }

    auto* renderer = in.renderer();
    if (renderer == nullptr)
        return kDone;
    Plane& page = renderer->activePage();
    Pixel pen = colours.palette[static_cast<size_t>(colours.foregroundColour)];
    if (mode == 0) {
        page.line(x1, y1, x2, y2, pen, pattern);
    } else {
        page.line(x1, y1, x1, y2, pen, pattern);
        page.line(x1, y2, x2, y2, pen, pattern);
        page.line(x2, y2, x2, y1, pen, pattern);
        page.line(x2, y1, x1, y1, pen, pattern);
        if (mode == 2) {
            int seedX = static_cast<int>(core::roundHalfUpTruncated((x1 + x2) * 0.5));
            int seedY = static_cast<int>(core::roundHalfUpTruncated((y1 + y2) * 0.5));
            Brush brush = Brush::solid(colours.palette[static_cast<size_t>(colours.paintColour)]);
            if (tile)
                TRY_BASIC(makeBrush(in, g.tileText, brush));
            page.floodFillWith(seedX, seedY, pen, [&brush](int px, int py) { return brush.at(px, py); });
        }
    }
    renderer->composeRect(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2));
    return kDone;
}

Outcome stmtLineParen(core::Interpreter& in, int begin, int end)
{
    // "LINE(" takes its parenthesis with it: the first point starts on it.
    return stmtLine(in, begin - 1, end);
}

} // namespace tessaly::screen
