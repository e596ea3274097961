// The text screen model: storing printed bytes in the rows, the control bytes, wrapping, new lines
// and scrolling of the window. Pixels are drawn by the TextPlane; the stream goes to the TextListener.
#include "screen/text_screen.h"

#include <algorithm>

namespace tessaly::screen {

namespace {


int clampInt(int value, int low, int high) { return std::max(low, std::min(value, high)); }

bool isControl(char c) { return static_cast<uint8_t>(c) < 0x20; }

} // namespace

TextScreen::TextScreen() = default;

void TextScreen::setPlane(TextPlane* plane) { m_plane = plane != nullptr ? plane : &m_nullPlane; }

void TextScreen::setListener(TextListener* listener) { m_listener = listener != nullptr ? listener : &m_nullListener; }

const std::string& TextScreen::row(int r) const
{
    static const std::string kEmpty;
    return onScreen(r) ? m_rows[static_cast<size_t>(r)] : kEmpty;
}

void TextScreen::setRow(int r, std::string text)
{
    if (!onScreen(r))
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

int TextScreen::windowBottom() const
{
    return clampInt(m_scrollBottom, clampInt(m_scrollTop, 0, kRows - 1) + 1, kRows);
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

// Storing follows the bytes, not the cursor: each byte goes to the column after the one before
// it, control bytes included, so a byte that moves the cursor leaves the stored text and the drawn
// text apart. Text printed inside the window keeps to it: a row that would lie below the window
// is stored when the drawing has scrolled the window up to take it, so that text without control
// bytes is stored exactly where it is drawn. From outside the window, what runs past the bottom of
// the screen is not stored.
void TextScreen::storeText(std::string_view bytes)
{
    int column = m_cursorColumn;
    int row = m_cursorRow;
    // A cursor left at column 80 wraps before the first byte, as the drawing does.
    if (column >= kColumns) {
        column = 0;
        ++row;
    }
    const size_t reach = static_cast<size_t>(column) + bytes.size();
    const bool inWindow = m_cursorRow >= m_scrollTop && m_cursorRow <= m_lastTextRow;
    const int lastRow = inWindow ? windowBottom() - 1 : kRows - 1;
    size_t next = 0;
    while (next < bytes.size()) {
        if (row > lastRow) {
            if (inWindow)
                m_storeFeed = {bytes, next, reach};
            return;
        }
        auto run = bytes.substr(next, static_cast<size_t>(kColumns - column));
        storeRun(column, row, run, reach);
        next += run.size();
        column = 0;
        ++row;
    }
}

// A row shorter than the printed text reaches is padded with blanks to 80 columns; a row long
// enough is overwritten in place and keeps its length.
void TextScreen::storeRun(int column, int row, std::string_view run, size_t reach)
{
    if (!onScreen(row) || run.empty())
        return;
    auto& text = m_rows[static_cast<size_t>(row)];
    auto at = static_cast<size_t>(column);
    if (text.size() < reach)
        text.resize(std::max(text.size(), static_cast<size_t>(kColumns)), ' ');
    if (text.size() < at + run.size())
        text.resize(at + run.size(), ' ');
    text.replace(at, run.size(), run);
    m_highestRow = std::max(m_highestRow, std::min(row + 1, kRows - 1));
}

void TextScreen::feedStoredRow(int row)
{
    auto& feed = m_storeFeed;
    if (feed.next >= feed.bytes.size())
        return;
    auto run = feed.bytes.substr(feed.next, kColumns);
    storeRun(0, row, run, feed.reach);
    feed.next += run.size();
}

void TextScreen::drawPiece(std::string_view piece)
{
    m_plane->drawText(m_cursorColumn, m_cursorRow, piece);
    m_listener->textWritten(piece);
    m_cursorColumn += static_cast<int>(piece.size());
}

void TextScreen::Print(std::string_view bytes)
{
    if (bytes.empty())
        return;
    m_cursorRow = clampInt(m_cursorRow, 0, kRows - 1);
    m_cursorColumn = clampInt(m_cursorColumn, 0, kColumns);
    const int startRow = m_cursorRow;
    storeText(bytes);
    // Drawing: pieces between the control bytes, each cut at the end of its row.
    size_t pos = 0;
    while (pos < bytes.size()) {
        size_t end = pos;
        while (end < bytes.size() && !isControl(bytes[end]))
            ++end;
        while (pos < end) {
            // A cursor left at column 80 (LOCATE 80, or a cursor-right) wraps before the next byte.
            if (m_cursorColumn >= kColumns)
                advanceRow();
            size_t length = std::min(end - pos, static_cast<size_t>(kColumns - m_cursorColumn));
            drawPiece(bytes.substr(pos, length));
            pos += length;
            if (m_cursorColumn >= kColumns)
                advanceRow();
        }
        if (pos < bytes.size())
            applyControl(static_cast<uint8_t>(bytes[pos++]));
    }
    m_storeFeed = {};
    m_plane->presentRows(std::min(startRow, m_cursorRow), std::max(startRow, m_cursorRow));
}

void TextScreen::applyControl(uint8_t c)
{
    switch (c) {
    case 7:
        m_listener->bell();
        break;
    case 8:
    case 28:
        // The column stops at 0 so that it always names a cell.
        m_cursorColumn = std::max(m_cursorColumn - 1, 0);
        break;
    case 9:
        m_cursorColumn = (m_cursorColumn / 8 + 1) * 8;
        if (m_cursorColumn >= kColumns)
            return controlToNextRow(0);
        break;
    case 10:
        return controlToNextRow(0);
    case 31:
        // Cursor down: the column stays.
        return controlToNextRow(m_cursorColumn);
    case 11:
        m_cursorColumn = 0;
        m_cursorRow = 0;
        break;
    case 12:
        // Only the pixels are cleared: the row texts and links stay, and come back when the rows
        // are read by the editor or redrawn from their texts.
        m_plane->clearRows(0, kRows - 1);
        m_cursorColumn = 0;
        m_cursorRow = 0;
        break;
    case 13:
        m_cursorColumn = 0;
        break;
    case 29:
        // Column 80 at most: the next byte printed wraps to the next row.
        m_cursorColumn = std::min(m_cursorColumn + 1, kColumns);
        break;
    case 30:
        if (m_cursorRow > 0)
            --m_cursorRow;
        break;
    default:
        return; // other bytes below 0x20 do nothing
    }
    // Any acting control byte that leaves the cursor on the last text row scrolls the window
    // (a CR or a bell there too); the cursor stays on that row.
    if (m_cursorRow == m_lastTextRow)
        scrollWindow();
}

// A control byte that moves to the next row (LF, cursor-down, a TAB past the row's end), landing
// on the given column. Taking the cursor past the last text row scrolls the window as a wrapped
// line does, instead of letting the cursor run below the window and off the screen; landing on the
// last text row scrolls too.
void TextScreen::controlToNextRow(int column)
{
    if (m_cursorRow + 1 > m_lastTextRow) {
        advanceRow();
        m_cursorColumn = column;
        return;
    }
    m_cursorColumn = column;
    ++m_cursorRow;
    m_listener->rowAdvanced();
    if (m_cursorRow == m_lastTextRow)
        scrollWindow();
}

// Column 0 of the next row; past the last text row the window scrolls and the cursor stays on its
// last text row. While scrolling is suppressed the cursor stops at the bottom row of the screen.
void TextScreen::advanceRow()
{
    m_cursorColumn = 0;
    m_cursorRow = std::min(m_cursorRow + 1, kRows);
    m_listener->rowAdvanced();
    if (m_cursorRow > m_lastTextRow)
        scrollWindow();
    m_cursorRow = std::min(m_cursorRow, kRows - 1);
}

void TextScreen::scrollWindow()
{
    if (m_idleCursorRow > m_lastTextRow)
        return;
    ScrollUp();
    if (m_lastTextRow > kFunctionKeyRow - 2) {
        m_plane->drawFunctionKeyLine();
        m_plane->presentRows(kFunctionKeyRow, kFunctionKeyRow);
    }
}

void TextScreen::NewLine() { advanceRow(); }

void TextScreen::ScrollUp()
{
    if (m_idleCursorRow > m_lastTextRow)
        return;
    const int top = clampInt(m_scrollTop, 0, kRows - 1);
    const int bottom = windowBottom();
    for (int r = top; r <= bottom - 2; ++r) {
        auto slot = static_cast<size_t>(r);
        std::swap(m_rows[slot], m_rows[slot + 1]);
        LineLink next = m_links[slot + 1];
        m_links[slot] = {static_cast<int8_t>(next.firstRow < 0 ? -1 : next.firstRow - 1),
            static_cast<int8_t>(next.lastRow < 0 ? -1 : next.lastRow - 1)};
    }
    m_plane->scrollUp(top, bottom);
    m_rows[static_cast<size_t>(bottom - 1)].clear();
    m_links[static_cast<size_t>(bottom - 1)] = {};
    if (m_anchor.row >= top && m_anchor.row < bottom && --m_anchor.row < top)
        m_anchor.row = -1;
    feedStoredRow(bottom - 1);
    m_highestRow = bottom - 1;
    m_cursorRow = bottom - 1;
    if (m_cursorRow > kRows - 2)
        m_cursorRow = m_lastTextRow < kRows - 1 ? kRows - 2 : kRows - 1;
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
    m_listener->textWritten(row);
    m_highestRow = std::max(m_highestRow, m_cursorRow);
}

void TextScreen::WriteLinkedRows(const std::vector<std::string_view>& pieces)
{
    int firstRow = cursorRow();
    int rows = static_cast<int>(pieces.size());
    for (int k = 0; k < rows; ++k) {
        LineLink link {};
        if (rows > 1) {
            link.firstRow = static_cast<int8_t>(firstRow);
            link.lastRow = k == 0 ? static_cast<int8_t>(firstRow + rows - 1) : int8_t {-1};
        }
        WriteRow(pieces[static_cast<size_t>(k)], link);
        int before = cursorRow();
        NewLine();
        // Scrolling moved the line's rows up.
        if (cursorRow() <= before)
            --firstRow;
    }
}

TextScreen::Caret TextScreen::ShowCursor(bool insertMode)
{
    if (m_cursorColumn < 0)
        m_cursorColumn = -m_cursorColumn;
    m_cursorRow = std::max(m_cursorRow, 0);
    m_cursorColumn = std::min(m_cursorColumn, kColumns - 1);
    if (m_cursorRow > kRows - 2)
        m_cursorRow = kRows - 1;
    m_highestRow = std::max(m_highestRow, m_cursorRow);
    int height = static_cast<int>(16 * 0.8 + 0.5);
    if (insertMode)
        height = static_cast<int>(height * 0.75);
    return {8 * m_cursorColumn, 16 * m_cursorRow, 8, height, m_cursorSwitch != 0};
}

void TextScreen::updateCells(int column, int row, int shift, int drawColumn, std::string_view drawn)
{
    if (!onScreen(row))
        return;
    // Rows of the logical line below this one take part, three at most.
    int following = 0;
    LineLink link = m_links[static_cast<size_t>(row)];
    if (link.firstRow >= 0 && onScreen(link.firstRow)) {
        int last = m_links[static_cast<size_t>(link.firstRow)].lastRow;
        following = std::clamp(last - row, 0, std::min(3, kRows - 1 - row));
    }
    if (shift != 0)
        m_plane->shiftCells(clampInt(column, 0, kColumns - 1), row, shift, following);
    if (!drawn.empty())
        m_plane->drawText(clampInt(drawColumn, 0, kColumns - 1), row, drawn);
    m_plane->presentRows(row, row + following);
}

void TextScreen::ClearRows()
{
    const int top = clampInt(m_scrollTop, 0, kRows - 1);
    const int bottom = clampInt(m_scrollBottom, top, kRows);
    for (int r = top; r < bottom; ++r)
        m_rows[static_cast<size_t>(r)].clear();
    if (m_anchor.row >= top && m_anchor.row < bottom)
        m_anchor.row = -1;
    if (bottom > top)
        m_plane->clearRows(top, bottom - 1);
    m_cursorColumn = 0;
    m_cursorRow = 0;
    m_highestRow = -1;
}

} // namespace tessaly::screen
