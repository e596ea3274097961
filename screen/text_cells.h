// The text plane as cells: for each of the 80 x 25 cells, the glyph drawn there (or none) with the
// colour it was drawn in and the background it was drawn on. Printing, scrolling and moving cells
// change cells only; the pixels of the plane are drawn when someone looks at them, and then only
// for the cells that differ from what the plane shows. The pixels are those of drawing every
// change at once: a cell is filled with its background and its glyph drawn in its colour, a
// two-cell glyph's halves each clipped to their own cell.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "screen/font.h"
#include "screen/raster.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

struct TextCell {
    enum Part : uint8_t { Blank, Whole, RightHalf }; // Whole: a one-cell glyph or a left half
    uint16_t code = 0;  // a byte, or lead x 256 + trail
    Part part = Blank;
    Pixel colour = 0;
    Pixel background = 0;
    bool operator==(const TextCell&) const = default;
};

class TextCells {
public:
    TextCells();

    // Blank cells on the background over rows first..last (clamped to the screen).
    void clearRows(int first, int last, Pixel background);
    // The cells from (column, row) on, one a byte, blanked and given the glyphs of the bytes (a
    // lead byte with a byte after it makes one glyph over two cells); 0xA0 alone shows as a blank.
    void write(int column, int row, std::string_view bytes, Pixel colour, Pixel background);
    // Rows first+1..last move up one row and row last becomes blank.
    void scrollUp(int first, int last, Pixel background);
    // Cell moves within the plane, as whole cells: from (fromColumn, fromRow) count cells to
    // (toColumn, toRow), within one row each.
    void move(int fromColumn, int fromRow, int count, int toColumn, int toRow);
    void copyCell(int fromColumn, int fromRow, int toColumn, int toRow);
    void blankCell(int column, int row, Pixel background);

    // Draws on plane the cells that changed since the plane last showed them.
    void bringUpToDate(Plane& plane, const Font& font);

private:
    using Row = std::array<TextCell, kColumns>;
    TextCell& cell(int column, int row) { return m_cells[m_order[static_cast<size_t>(row)]][static_cast<size_t>(column)]; }

    std::array<Row, kRows> m_cells;
    std::array<uint8_t, kRows> m_order {}; // screen row -> row of m_cells, so that a scroll moves no cells
    std::array<Row, kRows> m_shown;        // what the plane shows, by screen row
    Row m_blankRow {};                     // blank cells on the last background cleared to
    bool m_changed = false;
};

} // namespace tessaly::screen
