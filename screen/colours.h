// Colours of the screen: the digital and analog colour tables, the active palette, and the text,
// background, border and graphics colours that COLOR sets.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tessaly::screen {

using Rgb = uint32_t; // 0xRRGGBB

inline constexpr std::array<Rgb, 8> kDigitalColours = {
    0x000000, 0x0000FF, 0xFF0000, 0xFF00FF, 0x00FF00, 0x00FFFF, 0xFFFF00, 0xFFFFFF};
inline constexpr std::array<Rgb, 16> kAnalogColours = {0x000000, 0x0000FF, 0xFF0000, 0xFF00FF, 0x00FF00, 0x00FFFF,
    0xFFFF00, 0xFFFFFF, 0x777777, 0x0000AA, 0xAA0000, 0xAA00AA, 0x00AA00, 0x00AAAA, 0xAAAA00, 0xAAAAAA};

struct Colours {
    std::array<Rgb, 16> palette = {0x000000, 0x0000FF, 0xFF0000, 0xFF00FF, 0x00FF00, 0x00FFFF, 0xFFFF00, 0xFFFFFF};
    int textColour = 7;
    int backgroundColour = 0;
    int borderColour = 0;
    int foregroundColour = 7; // graphics
    int pointColour = 7;      // graphics, from the text colour
    int storedForeground = 7; // COLOR's fourth argument as given (LINE and CIRCLE without a colour)
    int paintColour = 7;      // the inside of filled boxes and circles, kept between statements
    int colourMode = 0;       // 0 digital 8, 1 analog 8, 2 analog 16
    int colourSwitch = 1;
    int backgroundInEffect = 0;

    // A colour number the figures accept: 0..7, or 0..15 in the 16-colour mode.
    [[nodiscard]] bool isValid(int c) const { return static_cast<unsigned>(c) <= (colourMode == 2 ? 15U : 7U); }

    // The palette as the colour mode loads it.
    void loadPalette()
    {
        palette.fill(0);
        for (size_t k = 0; k < 8; ++k)
            palette[k] = colourMode == 0 ? kDigitalColours[k] : kAnalogColours[k];
        if (colourMode == 2) {
            for (size_t k = 8; k < 16; ++k)
                palette[k] = kAnalogColours[k];
        }
    }
};

// A colour code 0xGRB (green, red, blue): each four-bit level v becomes the eight-bit level 17 v,
// so 0x0FF is magenta and 0xF0F cyan.
[[nodiscard]] constexpr Rgb colourCodeToRgb(uint32_t code)
{
    uint32_t green = (code >> 8) & 0xF;
    uint32_t red = (code >> 4) & 0xF;
    uint32_t blue = code & 0xF;
    return (red * 17) << 16 | (green * 17) << 8 | (blue * 17);
}

} // namespace tessaly::screen
