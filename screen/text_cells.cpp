// Cells of the text plane and the drawing of the ones that changed.
#include "screen/text_cells.h"

#include <algorithm>

#include "core/shift_jis.h"

namespace tessaly::screen {

TextCells::TextCells()
{
    for (size_t r = 0; r < m_order.size(); ++r)
        m_order[r] = static_cast<uint8_t>(r);
}

void TextCells::clearRows(int first, int last, Pixel background)
{
    first = std::clamp(first, 0, kRows - 1);
    last = std::clamp(last, first, kRows - 1);
    // One blank row is kept and copied whole (a scroll clears a row at every line printed).
    if (m_blankRow[0].background != background || m_blankRow[0].part != TextCell::Blank)
        m_blankRow.fill({0, TextCell::Blank, 0, background});
    for (int r = first; r <= last; ++r)
        m_cells[m_order[static_cast<size_t>(r)]] = m_blankRow;
    m_changed = true;
}

void TextCells::write(int column, int row, std::string_view bytes, Pixel colour, Pixel background)
{
    if (row < 0 || row >= kRows)
        return;
    auto put = [&](int c, const TextCell& value) {
        if (c >= 0 && c < kColumns)
            cell(c, row) = value;
    };
    for (size_t k = 0; k < bytes.size() && column + static_cast<int>(k) < kColumns; ++k)
        put(column + static_cast<int>(k), {0, TextCell::Blank, 0, background});
    // The glyphs as the font steps through the bytes.
    int c = column;
    for (size_t pos = 0; pos < bytes.size() && c < kColumns; ++pos) {
        auto byte = static_cast<uint8_t>(bytes[pos]);
        if (core::IsLeadByte(byte) && pos + 1 < bytes.size()) {
            auto code = static_cast<uint16_t>(byte << 8 | static_cast<uint8_t>(bytes[++pos]));
            put(c, {code, TextCell::Whole, colour, background});
            put(c + 1, {code, TextCell::RightHalf, colour, background});
            c += 2;
            continue;
        }
        put(c, {static_cast<uint16_t>(byte == 0xA0 ? ' ' : byte), TextCell::Whole, colour, background});
        ++c;
    }
    m_changed = true;
}

void TextCells::scrollUp(int first, int last, Pixel background)
{
    first = std::clamp(first, 0, kRows - 1);
    last = std::clamp(last, first, kRows - 1);
    std::rotate(m_order.begin() + first, m_order.begin() + first + 1, m_order.begin() + last + 1);
    clearRows(last, last, background);
}

void TextCells::move(int fromColumn, int fromRow, int count, int toColumn, int toRow)
{
    Row& from = m_cells[m_order[static_cast<size_t>(fromRow)]];
    Row& to = m_cells[m_order[static_cast<size_t>(toRow)]];
    fromColumn = std::clamp(fromColumn, 0, kColumns);
    toColumn = std::clamp(toColumn, 0, kColumns);
    count = std::min({count, kColumns - fromColumn, kColumns - toColumn});
    if (count <= 0)
        return;
    if (&from == &to && toColumn > fromColumn)
        std::copy_backward(from.begin() + fromColumn, from.begin() + fromColumn + count, to.begin() + toColumn + count);
    else
        std::copy(from.begin() + fromColumn, from.begin() + fromColumn + count, to.begin() + toColumn);
    m_changed = true;
}

void TextCells::copyCell(int fromColumn, int fromRow, int toColumn, int toRow)
{
    cell(toColumn, toRow) = cell(fromColumn, fromRow);
    m_changed = true;
}

void TextCells::blankCell(int column, int row, Pixel background)
{
    cell(column, row) = {0, TextCell::Blank, 0, background};
    m_changed = true;
}

void TextCells::bringUpToDate(Plane& plane, const Font& font)
{
    if (!m_changed)
        return;
    m_changed = false;
    for (int r = 0; r < kRows; ++r) {
        const Row& row = m_cells[m_order[static_cast<size_t>(r)]];
        Row& shown = m_shown[static_cast<size_t>(r)];
        for (int c = 0; c < kColumns; ++c) {
            const TextCell& wanted = row[static_cast<size_t>(c)];
            if (wanted == shown[static_cast<size_t>(c)])
                continue;
            shown[static_cast<size_t>(c)] = wanted;
            Rect area {c * 8, r * 16, c * 8 + 8, r * 16 + 16};
            plane.fill(area, wanted.background);
            if (wanted.part == TextCell::Blank)
                continue;
            char bytes[2] = {static_cast<char>(wanted.code >> 8), static_cast<char>(wanted.code & 0xFF)};
            std::string_view text = wanted.code > 0xFF ? std::string_view(bytes, 2) : std::string_view(bytes + 1, 1);
            plane.setClip(area);
            font.drawText(plane, wanted.part == TextCell::RightHalf ? area.left - 8 : area.left, area.top, text, wanted.colour);
            plane.resetClip();
        }
    }
}

} // namespace tessaly::screen
