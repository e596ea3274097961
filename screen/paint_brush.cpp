// Hatches and tiles.
#include "screen/paint_brush.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/interpreter.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "screen/colours.h"
#include "screen/renderer.h"

namespace tessaly::screen {

namespace {

enum Hatch { Horizontal = 0, Vertical = 1, ForwardDiagonal = 2, BackwardDiagonal = 3, Cross = 4, DiagonalCross = 5 };

// Whether pixel (x, y) of the 8 x 8 cell lies on a line of the hatch.
bool onHatch(int hatch, int x, int y)
{
    bool horizontal = y == 7;
    bool vertical = x == 0;
    bool forward = x == y;     // falling to the right
    bool backward = x + y == 7; // rising to the right
    switch (hatch) {
    case Horizontal: return horizontal;
    case Vertical: return vertical;
    case ForwardDiagonal: return forward;
    case BackwardDiagonal: return backward;
    case Cross: return horizontal || vertical;
    default: return forward || backward;
    }
}

} // namespace

Brush Brush::solid(Pixel colour)
{
    Brush brush;
    brush.m_tile.fill(colour);
    return brush;
}

int makeBrush(core::Interpreter& in, const std::string& tileText, Brush& brush)
{
    auto& colours = in.colours();
    std::string upper = core::upperCased(tileText);
    if (upper.find("HS_") != std::string::npos) {
        auto comma = upper.find(',');
        if (comma != std::string::npos) {
            std::string number = upper.substr(comma + 1);
            while (!number.empty() && (number.front() == '(' || number.front() == ' '))
                number.erase(0, 1);
            int colour = std::atoi(number.c_str());
            colours.paintColour = colours.isValid(colour) ? colour : colours.foregroundColour;
        } else {
            colours.paintColour = colours.foregroundColour;
        }
        static constexpr std::pair<const char*, int> kStyles[] = {{"HS_BDIAGONAL", BackwardDiagonal},
            {"HS_CROSS", Cross}, {"HS_DIAGCROSS", DiagonalCross}, {"HS_FDIAGONAL", ForwardDiagonal},
            {"HS_HORIZONTAL", Horizontal}, {"HS_VERTICAL", Vertical}};
        int hatch = Horizontal;
        for (const auto& [name, style] : kStyles) {
            if (upper.find(name) != std::string::npos) {
                hatch = style;
                break;
            }
        }
        // The gaps between the lines take the background colour.
        Pixel line = colours.palette[static_cast<size_t>(colours.paintColour)];
        Pixel gap = colours.palette[static_cast<size_t>(std::clamp(colours.backgroundInEffect, 0, 15))];
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x)
                brush.m_tile[static_cast<size_t>(y * 8 + x)] = onHatch(hatch, x, y) ? line : gap;
        return 0;
    }
    const std::string& bytes = tileText;
    const size_t planes = colours.colourMode == 2 ? 4 : 3;
    if (bytes.empty() || bytes.size() % planes != 0)
        return in.raise(planes == 4 ? core::ErrorId::IllegalStringLength : core::ErrorId::IllegalStringLength3);
    // Only eight rows exist; fewer rows repeat in order.
    size_t rows = std::min<size_t>(bytes.size() / planes, 8);
    for (size_t y = 0; y < 8; ++y) {
        size_t group = (y % rows) * planes;
        for (int x = 0; x < 8; ++x) {
            int index = 0;
            for (size_t p = 0; p < planes; ++p)
                index |= ((static_cast<uint8_t>(bytes[group + p]) >> x) & 1) << p;
            brush.m_tile[y * 8 + static_cast<size_t>(x)] = colours.palette[static_cast<size_t>(index)];
        }
    }
    // The tile plane holds the last tile built, as the pattern the brush repeats.
    if (auto* renderer = in.renderer()) {
        Plane& tile = renderer->tilePlane();
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x)
                tile.setPixel(x, y, brush.at(x, y));
    }
    return 0;
}

} // namespace tessaly::screen
