// The planes behind the screen (composite, text plane, two graphics pages) and their composition:
// the page on display, then the text plane with the background colour seen through, then the
// function-key line. The text screen draws through it as its TextPlane.
#pragma once

#include <array>

#include "screen/colours.h"
#include "screen/font.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "screen/raster.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

inline constexpr int kCellWidth = 8;
inline constexpr int kCellHeight = 16;

class Renderer final : public TextPlane {
public:
    Renderer(const Font& font, const Colours& colours, const FunctionKeys& keys, const GraphicScreen& graphics);

    // TextPlane
    void drawText(int column, int row, std::string_view bytes) override;
    void scrollUp(int top, int bottom) override;
    void clearRows(int first, int last) override;
    void presentRows(int first, int last) override;
    void drawFunctionKeyLine() override;

    // Rebuilds the composite band of text rows first..last.
    void composeBand(int first, int last);
    // Fills both graphics pages with the background colour in effect.
    void clearGraphics() override;
    // Fills every plane with the background colour and draws the function-key line.
    void setUp();

    // What the window shows, composed up to date.
    [[nodiscard]] const Plane& composite()
    {
        flush();
        return m_composite;
    }
    [[nodiscard]] const Plane& textPlane() const { return m_text; }
    Plane& page(int k) { return m_pages[static_cast<size_t>(k & 1)]; }
    Plane& activePage() { return page(m_graphics.activePage); }
    // Marks the rectangle of device pixels (inclusive corners) for composition; it is composed when
    // the composite is next looked at, so that many changes cost one composition.
    void composeRect(int left, int top, int right, int bottom);
    // Composes what is marked.
    void flush();

private:
    [[nodiscard]] Pixel background() const;

    const Font& m_font;
    const Colours& m_colours;
    const FunctionKeys& m_keys;
    const GraphicScreen& m_graphics;
    Rect m_dirty;
    Plane m_composite;
    Plane m_text;
    std::array<Plane, 2> m_pages;
};

} // namespace tessaly::screen
