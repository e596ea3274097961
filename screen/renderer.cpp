// Composition of the screen from its planes, and the text plane's drawing.
#include "screen/renderer.h"

#include <algorithm>

#include "core/shift_jis.h"

namespace tessaly::screen {

namespace {

constexpr Pixel kWhite = 0xFFFFFF;
constexpr Pixel kBlack = 0x000000;
constexpr int kKeyBoxWidth = 48;
constexpr int kKeyStride = 64;
constexpr int kKeyLeft = 5;

Rect rowBand(int first, int last)
{
    first = std::clamp(first, 0, kRows - 1);
    last = std::clamp(last, first, kRows - 1);
    return {0, first * kCellHeight, kScreenWidth, (last + 1) * kCellHeight};
}

} // namespace

Renderer::Renderer(const Font& font, const Colours& colours, const FunctionKeys& keys, const GraphicScreen& graphics)
    : m_font(font)
    , m_colours(colours)
    , m_keys(keys)
    , m_graphics(graphics)
{
    setUp();
}

Pixel Renderer::background() const
{
    return m_colours.palette[static_cast<size_t>(std::clamp(m_colours.backgroundInEffect, 0, 15))];
}

void Renderer::setUp()
{
    Pixel fill = background();
    m_composite.fill(m_composite.bounds(), fill);
    m_cells.clearRows(0, kRows - 1, fill);
    m_spare.fill(m_spare.bounds(), fill);
    // A fresh screen: the pages lose the clip of an earlier VIEW.
    for (auto& page : m_pages) {
        page.resetClip();
        page.fill(page.bounds(), fill);
    }
    // Drawn at the first look at the screen: a run that shows nothing reads no glyph.
    m_keyLinePending = true;
    m_windowDamage = m_composite.bounds();
}

void Renderer::drawText(int column, int row, std::string_view bytes)
{
    Pixel colour = kDigitalColours[static_cast<size_t>(std::clamp(m_colours.textColour, 0, 7))];
    m_cells.write(column, row, bytes, colour, background());
}

void Renderer::scrollUp(int top, int bottom)
{
    m_cells.scrollUp(top, bottom - 1, background());
    // The text screen presents the band after scrolling.
}

void Renderer::clearRows(int first, int last)
{
    m_cells.clearRows(first, last, background());
    composeBand(first, last);
}

void Renderer::presentRows(int first, int last)
{
    composeBand(first, last);
}

void Renderer::composeBand(int first, int last)
{
    Rect band = rowBand(first, last);
    composeRect(band.left, band.top, band.right - 1, band.bottom - 1);
}

void Renderer::composeRect(int left, int top, int right, int bottom)
{
    Rect area = Rect {left, top, right + 1, bottom + 1}.intersect(m_composite.bounds());
    if (area.empty())
        return;
    m_dirty = m_dirty.empty() ? area : m_dirty.united(area);
}

void Renderer::flush()
{
    Rect area = m_dirty;
    m_dirty = {};
    if (area.empty()) {
        if (m_keyLinePending) {
            paintFunctionKeyLine();
            Rect keyRow = rowBand(kFunctionKeyRow, kFunctionKeyRow);
            m_windowDamage = m_windowDamage.empty() ? keyRow : m_windowDamage.united(keyRow);
        }
        return;
    }
    bool shown = m_graphics.graphicsSwitch == 0;
    if (shown && m_graphics.displayPageValue == 1)
        m_composite.copyFrom(m_pages[0], area, area.left, area.top);
    else if (shown && m_graphics.displayPageValue == 17)
        m_composite.copyFrom(m_pages[1], area, area.left, area.top);
    else
        m_composite.fill(area, background());
    m_cells.bringUpToDate(m_text, m_font);
    m_composite.copyKeyed(m_text, area, area.left, area.top, background());
    // The function-key line is drawn again where the composed area covered it, or when it was
    // asked for since.
    if (area.bottom > kFunctionKeyRow * kCellHeight || m_keyLinePending) {
        paintFunctionKeyLine();
        area = area.united(rowBand(kFunctionKeyRow, kFunctionKeyRow));
    }
    m_windowDamage = m_windowDamage.empty() ? area : m_windowDamage.united(area);
}

Rect Renderer::takeWindowDamage()
{
    flush();
    Rect damage = m_windowDamage;
    m_windowDamage = {};
    return damage;
}

void Renderer::focusGained()
{
    composeRect(0, 0, kScreenWidth - 1, kScreenHeight - 1);
}

const Plane& Renderer::textPlane()
{
    m_cells.bringUpToDate(m_text, m_font);
    return m_text;
}

void Renderer::shiftCells(int column, int row, int shift, int followingRows)
{
    if (row < 0 || row >= kRows)
        return;
    const int last = std::min(row + followingRows, kRows - 1);
    auto startOf = [&](int r) { return r == row ? column : 0; };
    if (shift > 0) {
        // From the last row up, so that each row's last cell lands on the first cell of the row
        // below after that row has made room.
        for (int r = last; r >= row; --r) {
            if (r < last)
                m_cells.copyCell(kColumns - 1, r, 0, r + 1);
            int start = startOf(r);
            m_cells.move(start, r, kColumns - 1 - start, start + 1, r);
        }
        return;
    }
    for (int r = row; r <= last; ++r) {
        int start = startOf(r);
        m_cells.move(start + 1, r, kColumns - 1 - start, start, r);
        if (r < last)
            m_cells.copyCell(0, r + 1, kColumns - 1, r);
        else
            m_cells.blankCell(kColumns - 1, r, background());
    }
}

void Renderer::redrawRows(const TextScreen& screen)
{
    // Row 24 is drawn from its text only while the function-key line does not cover it.
    int last = m_keys.lineShown ? kFunctionKeyRow - 1 : kRows - 1;
    Pixel fill = background();
    for (int r = 0; r <= last; ++r) {
        std::string_view text = screen.row(r);
        text = text.substr(0, std::min<size_t>(text.size(), kColumns + 1));
        m_cells.clearRows(r, r, fill);
        drawText(0, r, text);
    }
    composeBand(0, kRows - 1);
}

void Renderer::clearGraphics()
{
    // The page drawn on is cleared: inside the VIEW rectangle while a view is set, else wholly;
    // like every drawing, within the page's clip (so the VIEW border stays).
    Plane& page = activePage();
    Rect area = page.bounds();
    if (m_graphics.viewActive)
        area = {m_graphics.viewLeft, m_graphics.viewTop, m_graphics.viewRight + 1, m_graphics.viewBottom + 1};
    page.fill(area, background());
    composeBand(0, kRows - 1);
}

void Renderer::drawFunctionKeyLine()
{
    // Drawn when the composite is next looked at: a fast PRINT loop asks at every scroll.
    m_keyLinePending = true;
}

void Renderer::paintFunctionKeyLine()
{
    m_keyLinePending = false;
    if (!m_keys.lineShown)
        return;
    int y = kFunctionKeyRow * kCellHeight;
    for (size_t k = 0; k < m_keys.texts.size(); ++k) {
        int x = kKeyLeft + kKeyStride * static_cast<int>(k);
        m_composite.fill({x, y, x + kKeyBoxWidth, y + kCellHeight}, kWhite);
        m_font.drawText(m_composite, x, y, m_keys.texts[k], kBlack);
    }
}

} // namespace tessaly::screen
