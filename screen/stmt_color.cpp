// COLOR t,b,r,f,m and COLOR =(p,k): the colours of text, background, border and graphics, the colour
// mode and single palette entries.
#include "core/interpreter.h"
#include "core/outcome.h"
#include "expr/evaluator.h"
#include "screen/colours.h"
#include "screen/graphics.h"
#include "screen/statements.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

namespace {

constexpr int kOmitted = -1;

bool given(const std::vector<expr::Value>& values, size_t k)
{
    return k < values.size() && !values[k].empty;
}

Outcome setPaletteEntry(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto open = text.find('(', static_cast<size_t>(begin));
    auto close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return in.raise(core::ErrorId::SyntaxError);
    std::vector<expr::Value> values;
    TRY_BASIC(expr::evaluateArguments(in, text.substr(open + 1, close - open - 1), values));
    int p = argumentOr(values, 0, kOmitted);
    int k = argumentOr(values, 1, kOmitted);
    auto& colours = in.colours();
    int highestEntry = colours.colourMode == 2 ? 15 : 7;
    if (values.size() != 2 || p < 0 || p > highestEntry || k < 0)
        return in.raise(core::ErrorId::SyntaxError);
    if (colours.colourMode == 0) {
        if (k > 7)
            return in.raise(core::ErrorId::SyntaxError);
        colours.palette[static_cast<size_t>(p)] = kDigitalColours[static_cast<size_t>(k)];
        return kDone;
    }
    Rgb rgb = colourCodeToRgb(static_cast<uint32_t>(k));
    if (k > 0xFFF || rgb > 0xFFFFFF)
        return in.raise(core::ErrorId::SyntaxError);
    colours.palette[static_cast<size_t>(p)] = rgb;
    return kDone;
}

} // namespace

Outcome stmtColor(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto first = text.find_first_not_of(' ');
    if (first != std::string_view::npos && text[first] == '=')
        return setPaletteEntry(in, begin + static_cast<int>(first) + 1, end);
    std::vector<expr::Value> values;
    TRY_BASIC(evaluateStatementArguments(in, begin, end, values));
    auto& colours = in.colours();
    int mode = colours.colourMode;
    if (given(values, 4)) {
        mode = argumentOr(values, 4, kOmitted);
        if (mode < 0 || mode > 2)
            return in.raise(core::ErrorId::SyntaxError);
    }
    int wide = mode == 2 ? 15 : 7;
    const int limits[4] = {7, wide, 7, wide};
    int settings[4] = {colours.textColour, colours.backgroundColour, colours.borderColour, colours.foregroundColour};
    for (size_t k = 0; k < 4; ++k) {
        if (!given(values, k))
            continue;
        int value = argumentOr(values, k, kOmitted);
        if (value < 0 || value > limits[k])
            return in.raise(core::ErrorId::SyntaxError);
        settings[k] = value;
    }
    bool modeChanged = mode != colours.colourMode;
    colours.colourMode = mode;
    colours.textColour = settings[0];
    colours.pointColour = settings[0];
    colours.backgroundColour = settings[1];
    colours.borderColour = settings[2];
    colours.foregroundColour = settings[3];
    colours.storedForeground = settings[3];
    if (modeChanged || mode == 2)
        colours.loadPalette();
    // COLOR shows the graphics again, page 0 drawn on and shown.
    in.graphics().resetPages();
    return kDone;
}

} // namespace tessaly::screen
