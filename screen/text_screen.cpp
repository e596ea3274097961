// The text screen model: storing printed bytes in the rows, the control bytes, wrapping, new lines
// and scrolling of the window. Pixels are drawn by the TextPlane; the stream goes to the TextListener.
#include "screen/text_screen.h"

#include <algorithm>

namespace tessaly::screen {

namespace {

int clampInt(int value, int low, int high) { return std::max(low, std::min(value, high)); }

bool isActionControl(uint8_t c)
{
    switch (c) {
    case 7: case 8: case 9: case 10: case 11: case 12: case 13: case 28: case 29: case 30: case 31:
        return true;
    default:
        return false;
    }
}

} // namespace

TextScreen::TextScreen() = default;

void TextScreen::setPlane(TextPlane* plane) { m_plane = plane != nullptr ? plane : &m_nullPlane; }

void TextScreen::setListener(TextListener* listener) { m_listener = listener != nullptr ? listener : &m_nullListener; }

void TextScreen::setRow(int r, std::string text)
{
    if (r < 0 || r >= kRows)
        return;
    if (text.size() > kColumns * 4)
        text.resize(kColumns * 4);
    m_rows[static_cast<size_t>(r)] = std::move(text);
}

void TextScreen::setCursor(int column, int row)
{
    m_cursorColumn = clampInt(column, 0, kColumns);
    m_cursorRow = clampInt(row, 0, kRows - 1);
}

void TextScreen::setScrollWindow(int top, int rows)
{
    m_scrollTop = clampInt(top, 0, kRows - 1);
    m_scrollRows = clampInt(rows, 0, kRows);
    m_scrollBottom = std::min(m_scrollTop + m_scrollRows, kRows);
    m_lastTextRow = m_scrollRows > 0 ? m_scrollBottom - 1 : m_scrollBottom;
    if (m_lastTextRow < 0 || m_lastTextRow > kRows - 1)
        m_lastTextRow = kRows - 1;
}

void TextScreen::storeByte(uint8_t c)
{
    auto& row = m_rows[static_cast<size_t>(m_cursorRow)];
    auto column = static_cast<size_t>(m_cursorColumn);
    if (row.size() <= column)
        row.resize(kColumns > column ? kColumns : column + 1, ' ');
    row[column] = static_cast<char>(c);
    m_highestRow = std::max(m_highestRow, std::min(m_cursorRow + 1, kRows - 1));
}

// The cursor moves on to the next row; past lastTextRow the window scrolls and the cursor stays
// on the window's last text row. The cursor row never leaves the screen.
void TextScreen::advanceRow()
{
    m_cursorColumn = 0;
    ++m_cursorRow;
    m_listener->rowAdvanced();
    if (m_cursorRow > m_lastTextRow) {
        ScrollUp();
        m_cursorRow = std::min(m_cursorRow, kRows - 1);
        if (m_cursorRow > m_lastTextRow && m_idleCursorRow <= m_lastTextRow)
            m_cursorRow = m_lastTextRow;
    }
}

void TextScreen::Print(std::string_view bytes)
{
    m_cursorRow = clampInt(m_cursorRow, 0, kRows - 1);
    m_cursorColumn = clampInt(m_cursorColumn, 0, kColumns - 1);
    int firstRow = m_cursorRow;
    size_t pos = 0;
    while (pos < bytes.size()) {
        // A piece: the printable bytes up to the next control byte or the end of the row.
        size_t start = pos;
        int pieceColumn = m_cursorColumn;
        int pieceRow = m_cursorRow;
        while (pos < bytes.size() && static_cast<uint8_t>(bytes[pos]) >= 0x20 && m_cursorColumn < kColumns) {
            storeByte(static_cast<uint8_t>(bytes[pos]));
            ++m_cursorColumn;
            ++pos;
        }
        if (pos > start) {
            auto piece = bytes.substr(start, pos - start);
            m_plane->drawText(pieceColumn, pieceRow, piece);
            m_listener->textWritten(piece);
        }
        if (m_cursorColumn >= kColumns) {
            advanceRow();
            continue;
        }
        if (pos < bytes.size()) {
            // Control bytes are not stored: the row texts hold what the screen shows.
            applyControl(static_cast<uint8_t>(bytes[pos]));
            ++pos;
        }
    }
    m_plane->presentRows(std::min(firstRow, m_cursorRow), m_cursorRow);
}

void TextScreen::applyControl(uint8_t c)
{
    if (!isActionControl(c))
        return;
    switch (c) {
    case 7:
        m_listener->bell();
        break;
    case 8:
    case 28:
        m_cursorColumn = std::max(m_cursorColumn - 1, 0);
        break;
    case 9:
        m_cursorColumn = (m_cursorColumn / 8 + 1) * 8;
        if (m_cursorColumn >= kColumns)
            return controlToNextRow();
        break;
    case 10:
    case 31:
        return controlToNextRow();
    case 11:
        m_cursorColumn = 0;
        m_cursorRow = 0;
        break;
    case 12:
        // The screen is cleared; its rows go with the pixels.
        for (int r = m_scrollTop; r < m_scrollBottom; ++r) {
            m_rows[static_cast<size_t>(r)].clear();
            m_links[static_cast<size_t>(r)] = {};
        }
        m_plane->clearRows(0, kRows - 1);
        m_cursorColumn = 0;
        m_cursorRow = 0;
        break;
    case 13:
        m_cursorColumn = 0;
        break;
    case 29:
        if (++m_cursorColumn >= kColumns)
            return controlToNextRow();
        break;
    case 30:
        if (m_cursorRow > 0)
            --m_cursorRow;
        break;
    default:
        break;
    }
    // A control byte that leaves the cursor on the last text row scrolls the window.
    if (m_cursorRow == m_lastTextRow)
        ScrollUp();
}

// A control byte that moves to the next row. Past the last text row the window scrolls as for a
// wrapped line, so that the cursor stays on the screen.
void TextScreen::controlToNextRow()
{
    if (m_cursorRow + 1 > m_lastTextRow) {
        advanceRow();
        return;
    }
    m_cursorColumn = 0;
    ++m_cursorRow;
    m_listener->rowAdvanced();
    if (m_cursorRow == m_lastTextRow)
        ScrollUp();
}

void TextScreen::NewLine()
{
    advanceRow();
}

void TextScreen::ScrollUp()
{
    if (m_idleCursorRow > m_lastTextRow)
        return;
    int top = m_scrollTop;
    int bottom = std::max(m_scrollBottom, top + 1);
    for (int r = top; r <= bottom - 2; ++r) {
        m_rows[static_cast<size_t>(r)] = std::move(m_rows[static_cast<size_t>(r + 1)]);
        LineLink next = m_links[static_cast<size_t>(r + 1)];
        m_links[static_cast<size_t>(r)] = {static_cast<int8_t>(next.firstRow < 0 ? -1 : next.firstRow - 1),
            static_cast<int8_t>(next.lastRow < 0 ? -1 : next.lastRow - 1)};
    }
    m_plane->scrollUp(top, bottom);
    m_rows[static_cast<size_t>(bottom - 1)].clear();
    m_links[static_cast<size_t>(bottom - 1)] = {};
    m_highestRow = bottom - 1;
    int row = bottom - 1;
    if (row > 23)
        row = m_lastTextRow < 24 ? 23 : 24;
    m_cursorRow = row;
    m_plane->presentRows(top, bottom - 1);
}

void TextScreen::PrintLineAt(int column, int row, std::string_view text)
{
    m_cursorRow = clampInt(row, 0, kRows - 1);
    m_plane->drawText(clampInt(column, 0, kColumns - 1), m_cursorRow, text);
    m_listener->textWritten(text);
    m_plane->presentRows(0, kRows - 1);
    advanceRow();
}

void TextScreen::WriteRow(std::string_view text, LineLink link)
{
    m_cursorRow = clampInt(m_cursorRow, 0, kRows - 1);
    auto& row = m_rows[static_cast<size_t>(m_cursorRow)];
    row.assign(text.substr(0, kColumns + 1));
    m_links[static_cast<size_t>(m_cursorRow)] = link;
    m_plane->drawText(0, m_cursorRow, row);
    m_listener->textWritten(row);
    m_highestRow = std::max(m_highestRow, m_cursorRow);
}

TextScreen::Caret TextScreen::ShowCursor(bool insertMode)
{
    if (m_cursorColumn < 0)
        m_cursorColumn = -m_cursorColumn;
    m_cursorRow = std::max(m_cursorRow, 0);
    m_cursorColumn = std::min(m_cursorColumn, kColumns - 1);
    if (m_cursorRow > 23)
        m_cursorRow = kRows - 1;
    m_highestRow = std::max(m_highestRow, m_cursorRow);
    int height = static_cast<int>(16 * 0.8 + 0.5);
    if (insertMode)
        height = static_cast<int>(height * 0.75);
    return {8 * m_cursorColumn, 16 * m_cursorRow, 8, height, m_cursorSwitch != 0};
}

void TextScreen::redrawRow(int r)
{
    if (r < 0 || r >= kRows)
        return;
    std::string text = m_rows[static_cast<size_t>(r)].substr(0, kColumns);
    text.resize(kColumns, ' ');
    m_plane->drawText(0, r, text);
    m_plane->presentRows(r, r);
}

void TextScreen::ClearRows()
{
    for (int r = m_scrollTop; r < m_scrollBottom; ++r)
        m_rows[static_cast<size_t>(r)].clear();
    m_plane->clearRows(m_scrollTop, std::max(m_scrollTop, m_scrollBottom - 1));
    m_cursorColumn = 0;
    // The caller places the cursor; until then it stands at the top of the screen.
    m_cursorRow = 0;
    m_highestRow = -1;
}

} // namespace tessaly::screen
