// The planes behind the screen (composite, text plane, two graphics pages, the spare plane and the
// 8 x 8 tile plane) and their composition:
// the page on display, then the text plane with the background colour seen through, then the
// function-key line. The text screen draws through it as its TextPlane.
#pragma once

#include <array>

#include "screen/colours.h"
#include "screen/font.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "screen/raster.h"
#include "screen/text_cells.h"
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
    void redrawRows(const TextScreen& screen) override;
    void shiftCells(int column, int row, int shift, int followingRows) override;

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
    // The text plane with every cell drawn as it now stands.
    [[nodiscard]] const Plane& textPlane();
    Plane& page(int k) { return m_pages[static_cast<size_t>(k & 1)]; }
    Plane& activePage() { return page(m_graphics.activePage); }
    // Marks the rectangle of device pixels (inclusive corners) for composition; it is composed when
    // the composite is next looked at, so that many changes cost one composition.
    void composeRect(int left, int top, int right, int bottom);
    // Composes what is marked.
    void flush();

    // What the window must copy again since the last call: every area composed meanwhile (empty
    // when nothing changed). The window shell asks after each turn of its event loop.
    [[nodiscard]] Rect takeWindowDamage();
    // The window came back to the front: the whole screen is composed again from the planes
    // (no figure is drawn a second time).
    void focusGained();

    // Staging plane for screen images written to files, and the tile of PAINT patterns.
    Plane& sparePlane() { return m_spare; }
    [[nodiscard]] const Font& font() const { return m_font; }
    Plane& tilePlane() { return m_tile; }

private:
    [[nodiscard]] Pixel background() const;
    void paintFunctionKeyLine();

    const Font& m_font;
    const Colours& m_colours;
    const FunctionKeys& m_keys;
    const GraphicScreen& m_graphics;
    Rect m_dirty;
    bool m_keyLinePending = false;
    Rect m_windowDamage;
    Plane m_composite;
    TextCells m_cells; // the truth of the text plane, drawn on m_text when it is looked at
    Plane m_text;
    std::array<Plane, 2> m_pages;
    Plane m_spare;
    Plane m_tile {8, 8, 0xFFFFFF};
};

} // namespace tessaly::screen
