// The 80 x 25 text screen model: row texts, logical-line links, cursor, scroll window.
// Pixels are left to a TextPlane (the rendering side); the model never draws by itself.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::screen {

class TextScreen;

inline constexpr int kColumns = 80;
inline constexpr int kRows = 25;
inline constexpr int kRowSlots = 40;
inline constexpr int kFunctionKeyRow = 24;

// A row that belongs to a multi-row logical line carries the line's first row; the first row
// also carries the line's last row. -1 in both: the row stands alone.
struct LineLink {
    int8_t firstRow = -1;
    int8_t lastRow = -1;
};

// The pixel side of the text screen. The model calls it in the order things happen;
// a plane that draws nothing is valid (the headless runner without a screenshot).
class TextPlane {
public:
    virtual ~TextPlane() = default;
    // Fills the cells from (column,row) with the background colour and draws the bytes there.
    virtual void drawText(int column, int row, std::string_view bytes) { (void)column, (void)row, (void)bytes; }
    // Moves the pixel rows top+1..bottom-1 up one row and clears row bottom-1.
    virtual void scrollUp(int top, int bottom) { (void)top, (void)bottom; }
    // Clears rows first..last (inclusive) to the background colour.
    virtual void clearRows(int first, int last) { (void)first, (void)last; }
    // Composes and shows rows first..last (inclusive).
    virtual void presentRows(int first, int last) { (void)first, (void)last; }
    virtual void drawFunctionKeyLine() {}
    // Fills the graphics pages with the background colour (CLS 2 and 3).
    virtual void clearGraphics() {}
    // Draws every text row again from the row texts and shows the whole screen.
    virtual void redrawRows(const TextScreen& screen) { (void)screen; }
    // Moves the cells of row from column to the end one cell right (shift 1) or left (shift -1);
    // the cell crossing a row end moves to or from the first cell of the next of followingRows
    // rows. A cell left empty at the end is cleared. The cells keep their colours.
    virtual void shiftCells(int column, int row, int shift, int followingRows)
    {
        (void)column, (void)row, (void)shift, (void)followingRows;
    }
};

// What leaves the text screen as a stream: the headless runner turns it into standard output.
class TextListener {
public:
    virtual ~TextListener() = default;
    // Bytes written at the cursor by Print, a message or a prompt (Shift-JIS).
    virtual void textWritten(std::string_view bytes) { (void)bytes; }
    // The cursor moved on to a following row (end of a line, a wrap, a line feed).
    virtual void rowAdvanced() {}
    // Byte 7 was printed.
    virtual void bell() {}
};

class TextScreen {
public:
    TextScreen();

    void setPlane(TextPlane* plane);
    void setListener(TextListener* listener);

    // Stores the bytes in the rows one after another from the cursor, control bytes included, 80
    // to a row; draws them from the cursor, the control bytes moving it instead of being drawn;
    // wraps at column 80 and scrolls the window past lastTextRow.
    void Print(std::string_view bytes);
    // Column 0 of the next row, scrolling the window when that passes lastTextRow.
    void NewLine();
    // Scrolls the window rows up by one (nothing while idleCursorRow is past lastTextRow).
    void ScrollUp();
    // Draws text at (column,row) without storing it, then puts the cursor at column 0 of the next row.
    void PrintLineAt(int column, int row, std::string_view text);
    // Replaces the cursor row with text (at most 81 bytes) and its link, as a listing writes it.
    // The row is drawn by the RedrawRows that ends the listing.
    void WriteRow(std::string_view text, LineLink link);
    // Writes the pieces of one program or key line on rows from the cursor, as WriteRow does, each
    // followed by NewLine; the rows of a line that takes several are linked (the first row also
    // names the last), scrolling taken into account.
    void WriteLinkedRows(const std::vector<std::string_view>& pieces);
    // Draws rows 0..23 (0..24 without the function-key line) from their texts, control bytes as
    // glyphs, and shows the whole screen.
    void RedrawRows() { m_plane->redrawRows(*this); }
    // Where the caret stands: the cursor brought back onto the screen, 8 pixels wide, 13 high in
    // overwrite mode and 9 in insert mode; shown only while the cursor switch is on.
    struct Caret {
        int x, y, width, height;
        bool visible;
    };
    Caret ShowCursor(bool insertMode);
    // The pixels after an edit at (column, row): the cells from there to the end of the logical
    // line move by shift (1 insert, -1 delete, 0 none), then drawn (the new character) is drawn
    // from drawColumn; the rows touched are shown.
    void updateCells(int column, int row, int shift, int drawColumn, std::string_view drawn);
    // CLS 2 and 3: the graphics pages are cleared.
    void clearGraphics() { m_plane->clearGraphics(); }
    // Empties the window's rows; cursorColumn 0, highestRow -1. The cursor row is left at 0 (not
    // -1) so that it always names a screen row; the caller places the cursor afterwards.
    void ClearRows();

    // Row texts (0..24); a row may be shorter than 80 bytes. Outside 0..24 a row reads as empty,
    // a link as -1, and writes are ignored.
    [[nodiscard]] const std::string& row(int r) const;
    void setRow(int r, std::string text);
    [[nodiscard]] LineLink link(int r) const { return onScreen(r) ? m_links[static_cast<size_t>(r)] : LineLink {}; }
    void setLink(int r, LineLink link)
    {
        if (onScreen(r))
            m_links[static_cast<size_t>(r)] = link;
    }

    [[nodiscard]] int cursorColumn() const { return m_cursorColumn; }
    [[nodiscard]] int cursorRow() const { return m_cursorRow; }
    void setCursor(int column, int row);
    [[nodiscard]] int savedColumn() const { return m_savedColumn; }
    [[nodiscard]] int savedRow() const { return m_savedRow; }
    void saveCursor() { m_savedColumn = m_cursorColumn, m_savedRow = m_cursorRow; }
    [[nodiscard]] int highestRow() const { return m_highestRow; }
    [[nodiscard]] int cursorSwitch() const { return m_cursorSwitch; }
    void setCursorSwitch(int on) { m_cursorSwitch = on; }

    void setIdleCursorRow(int row) { m_idleCursorRow = row; }

    // A cell that the rows carry along when the window scrolls (where the reply to an INPUT
    // starts). Row -1: none, or scrolled out of the window or cleared.
    struct Cell {
        int column = 0;
        int row = -1;
    };
    void setAnchor(Cell cell) { m_anchor = cell; }
    [[nodiscard]] Cell anchor() const { return m_anchor; }

    // The scroll window (CONSOLE).
    [[nodiscard]] int scrollTop() const { return m_scrollTop; }
    [[nodiscard]] int scrollBottom() const { return m_scrollBottom; }
    [[nodiscard]] int lastTextRow() const { return m_lastTextRow; }
    // Sets the window; the caller has checked top 0..24 and rows 0..25.
    void setScrollWindow(int top, int rows);

private:
    static bool onScreen(int r) { return r >= 0 && r < kRows; }
    // The first row below the scroll window, the window holding at least one row.
    [[nodiscard]] int windowBottom() const;
    void advanceRow();            // the cursor moves on to a following row, scrolling as needed
    void scrollWindow();          // ScrollUp, then the function-key line when the window reaches it
    void applyControl(uint8_t c); // one control byte of Print
    void controlToNextRow(int column);
    // Draws bytes (no control bytes, not past column 80) at the cursor and moves it on.
    void drawPiece(std::string_view piece);
    // The storing half of Print; rows below a scrolling window wait in m_storeFeed.
    void storeText(std::string_view bytes);
    // Stores a run of bytes at (column,row); reach is where the printed text ends (start column
    // plus length), a row shorter than that is padded with blanks to 80 columns first.
    void storeRun(int column, int row, std::string_view run, size_t reach);
    // After a scroll during Print: the window's last row takes the next row of printed text.
    void feedStoredRow(int row);

    std::array<std::string, kRowSlots> m_rows;
    std::array<LineLink, kRows> m_links;
    int m_cursorColumn = 0;
    int m_cursorRow = 0;
    int m_savedColumn = 0;
    int m_savedRow = 0;
    int m_highestRow = 0;
    int m_cursorSwitch = 1;
    int m_idleCursorRow = 0;
    int m_scrollTop = 0;
    int m_scrollRows = 25;
    int m_scrollBottom = 25;
    int m_lastTextRow = 23;
    Cell m_anchor;
    // The printed bytes still to be stored once the window has scrolled them into reach (only
    // while Print runs): next is the first of them, reach as for storeRun.
    struct StoreFeed {
        std::string_view bytes;
        size_t next = 0;
        size_t reach = 0;
    } m_storeFeed;
    TextPlane m_nullPlane;
    TextListener m_nullListener;
    TextPlane* m_plane = &m_nullPlane;
    TextListener* m_listener = &m_nullListener;
};

} // namespace tessaly::screen
