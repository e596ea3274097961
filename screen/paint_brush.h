// What fills a region: a solid colour, a hatch of lines, or an 8 x 8 tile built from a string,
// each repeating every 8 pixels from the page origin.
#pragma once

#include <array>
#include <string>

#include "screen/raster.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::screen {

class Brush {
public:
    static Brush solid(Pixel colour);
    [[nodiscard]] Pixel at(int x, int y) const { return m_tile[static_cast<size_t>((y & 7) * 8 + (x & 7))]; }
    [[nodiscard]] const std::array<Pixel, 64>& tile() const { return m_tile; }

private:
    friend int makeBrush(core::Interpreter& in, const std::string& tileText, Brush& brush);
    std::array<Pixel, 64> m_tile {};
};

// The brush of a tile text (the string's bytes): "HS_..." names a hatch, in the colour given after a
// comma (paintColour takes it when valid); any other text is a tile, 3 bytes a row (4 in the
// 16-colour mode). A tile of the wrong length raises "Illegal function call ,strings length not
// multiple 3 in " (or 4). Returns 0 or kFailed.
int makeBrush(core::Interpreter& in, const std::string& tileText, Brush& brush);

} // namespace tessaly::screen
