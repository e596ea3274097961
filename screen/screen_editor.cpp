// The screen editor's key and mouse handling on the row texts and their logical-line links.
#include "screen/screen_editor.h"

#include <algorithm>

#include "core/interpreter.h"
#include "core/run_loop.h"
#include "core/shift_jis.h"
#include "screen/function_keys.h"
#include "screen/keyboard.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

namespace {

constexpr int kMaxLineRows = 4;
constexpr size_t kFourthRowLimit = 15;

bool programRunning(core::Interpreter& in) { return in.isBusy() && !in.isWaitingForInput(); }

// The break keys: BREAK when a program or AUTO runs.
void breakKeys(core::Interpreter& in)
{
    auto& keys = in.keyboard();
    keys.keyCapture = 0;
    if (in.isBusy() || in.run().autoLine > 0)
        in.breakProgram();
}

// The STOP key (PAUSE, or C with CTRL): the STOP trap takes it when it is on (or remembers it
// when stopped); otherwise it breaks as ESC does.
void stopKey(core::Interpreter& in)
{
    if (core::reportEvent(in, core::trap::kStop)) {
        in.keyboard().keyCapture = 0;
        return;
    }
    breakKeys(in);
}

// The logical line grows by the row below the cursor row.
void growLine(TextScreen& screen, int row)
{
    int next = row + 1;
    if (next >= kRows)
        return;
    auto link = screen.link(row);
    if (link.firstRow >= 0) {
        int first = link.firstRow;
        auto head = screen.link(first);
        bool endedHere = head.lastRow == row || head.lastRow < 0;
        screen.setLink(next, {static_cast<int8_t>(first), -1});
        if (endedHere) {
            screen.setRow(next, "");
            screen.setLink(first, {static_cast<int8_t>(first), static_cast<int8_t>(next)});
        }
        return;
    }
    screen.setLink(row, {static_cast<int8_t>(row), static_cast<int8_t>(next)});
    screen.setLink(next, {static_cast<int8_t>(row), -1});
    screen.setRow(next, "");
}

void cursorToNextRow(TextScreen& screen)
{
    int row = screen.cursorRow() + 1;
    if (row > screen.lastTextRow()) {
        screen.ScrollUp();
        row = std::min(screen.cursorRow(), kRows - 1);
        screen.setCursor(0, row);
        return;
    }
    screen.setCursor(0, row);
}

void typeCharacter(core::Interpreter& in, int ch)
{
    auto& screen = in.screen();
    auto& editor = in.editor();
    int row = screen.cursorRow();
    int column = std::max(screen.cursorColumn(), 0);
    std::string text = screen.row(row);
    auto byte = static_cast<char>(ch & 0xFF);
    auto at = static_cast<size_t>(column);
    bool inserted = false;
    if (at >= text.size()) {
        text.resize(at, ' ');
        text += byte;
    } else if (editor.editMode == 1) {
        text[at] = byte;
    } else {
        text.insert(at, 1, byte);
        inserted = true;
    }
    screen.setRow(row, text);
    // A double-byte character is drawn once its second byte has come, over two cells.
    char drawn[2] = {byte, 0};
    std::string_view glyph(drawn, 1);
    int drawColumn = column;
    if (editor.pendingLeadByte != 0) {
        drawn[0] = static_cast<char>(editor.pendingLeadByte >> 8);
        drawn[1] = byte;
        glyph = std::string_view(drawn, 2);
        drawColumn = column - 1;
        editor.pendingLeadByte = 0;
    } else if (core::IsLeadByte(static_cast<uint8_t>(byte))) {
        editor.pendingLeadByte = (ch & 0xFF) << 8;
        glyph = {};
    }
    screen.updateCells(column, row, inserted ? 1 : 0, drawColumn, glyph);

    // A logical line holds at most three full rows and sixteen bytes of a fourth.
    auto link = screen.link(row);
    if (link.firstRow >= 0 && row - link.firstRow == kMaxLineRows - 1 && text.size() > kFourthRowLimit) {
        int number = core::leadingNumber(screen.row(link.firstRow));
        cursorToNextRow(screen);
        in.raiseForLine(core::ErrorId::LineBufferOverflow, number);
        core::showPrompt(in, core::PromptKind::Output);
        return;
    }
    ++column;
    if (column > kColumns - 1) {
        growLine(screen, row);
        cursorToNextRow(screen);
        return;
    }
    screen.setCursor(column, row);
}

void backspace(TextScreen& screen)
{
    int row = screen.cursorRow();
    int column = std::max(screen.cursorColumn() - 1, 0);
    std::string text = screen.row(row);
    bool deleted = static_cast<size_t>(column) < text.size();
    if (deleted)
        text.erase(static_cast<size_t>(column), 1);
    screen.setRow(row, text);
    screen.updateCells(column, row, deleted ? -1 : 0, column, {});
    screen.setCursor(column, row);
}

void enter(core::Interpreter& in)
{
    auto& screen = in.screen();
    in.editor().columnAtEnter = screen.cursorColumn();
    int row = screen.cursorRow();
    // An empty row only moves the cursor down, unless it continues a logical line: after exactly 80
    // typed characters the cursor stands on the empty row that the line grew by.
    auto link = screen.link(row);
    bool continuesLine = link.firstRow >= 0 && link.firstRow < row;
    if (screen.row(row).empty() && !continuesLine) {
        screen.NewLine();
        return;
    }
    std::string line = logicalLineAt(in, row);
    in.lineEntered(line);
}

void deleteAtCursor(TextScreen& screen)
{
    int row = screen.cursorRow();
    std::string text = screen.row(row);
    if (text.size() < 2) {
        screen.setRow(row, "");
        return;
    }
    auto at = static_cast<size_t>(screen.cursorColumn());
    bool deleted = at < text.size();
    if (deleted) {
        text.erase(at, 1);
        text += ' ';
    }
    screen.setRow(row, text);
    screen.updateCells(screen.cursorColumn(), row, deleted ? -1 : 0, 0, {});
}

void padTo(TextScreen& screen, int row, size_t width)
{
    std::string text = screen.row(row);
    if (text.size() < width) {
        text.resize(width, ' ');
        screen.setRow(row, text);
    }
}

} // namespace

std::string logicalLineAt(core::Interpreter& in, int row)
{
    auto& screen = in.screen();
    std::string current = screen.row(row);
    auto last = current.find_last_not_of(' ');
    current.erase(last == std::string::npos ? 0 : last + 1);
    screen.setRow(row, current);
    std::string line;
    auto link = screen.link(row);
    if (link.firstRow >= 0 && link.firstRow <= row) {
        int first = link.firstRow;
        for (int r = row + 1; r < kRows && screen.link(r).firstRow == first; ++r)
            screen.setLink(r, {});
        screen.setLink(first, {static_cast<int8_t>(first), static_cast<int8_t>(row)});
        for (int r = first; r < row; ++r) {
            line += screen.row(r);
            if (r != first)
                screen.setLink(r, {static_cast<int8_t>(first), -1});
        }
        if (row != first)
            screen.setLink(row, {static_cast<int8_t>(first), -1});
        line += current;
    } else {
        screen.setLink(row, {static_cast<int8_t>(row), static_cast<int8_t>(row)});
        for (int r = row + 1; r < kRows; ++r) {
            auto below = screen.link(r);
            if (below.firstRow < 0 || below.firstRow >= r)
                break;
            screen.setLink(r, {});
        }
        line = current;
    }
    auto first = line.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    auto lastChar = line.find_last_not_of(' ');
    return line.substr(first, lastChar - first + 1);
}

void onChar(core::Interpreter& in, int ch)
{
    auto& keys = in.keyboard();
    keys.lastKey = ch;
    if (keys.keyCapture == 1 || keys.keyCapture == 2) {
        keys.keyBuffer += static_cast<char>(ch & 0xFF);
        return;
    }
    if (in.isWaitingForInput()) {
        in.screen().setCursor(std::max(in.screen().cursorColumn(), 0), in.screen().cursorRow());
        keys.keyBuffer += static_cast<char>(ch & 0xFF);
    } else if (programRunning(in)) {
        return;
    }
    switch (ch) {
    case vk::kBackspace:
        backspace(in.screen());
        return;
    case vk::kTab:
        return;
    case vk::kEnter:
        enter(in);
        return;
    case vk::kEscape:
        breakKeys(in);
        return;
    default:
        typeCharacter(in, ch);
        return;
    }
}

void typeFunctionKey(core::Interpreter& in, int k)
{
    if (k < 1 || k > 10)
        return;
    int column = in.screen().cursorColumn();
    if (column < 0 || column > 79)
        return;
    std::string text = in.functionKeys().texts[static_cast<size_t>(k - 1)];
    for (char c : text)
        onChar(in, static_cast<unsigned char>(c));
}

void onKeyDown(core::Interpreter& in, int key)
{
    auto& screen = in.screen();
    auto& keys = in.keyboard();
    auto& editor = in.editor();
    int savedRow = screen.cursorRow();
    keys.previousKeyDown = keys.lastKeyDown;
    keys.lastKeyDown = key;
    switch (key) {
    case vk::kBackspace: case vk::kTab: case vk::kPause: case vk::kHome: case vk::kLeft: case vk::kUp:
    case vk::kRight: case vk::kDown: case vk::kDelete:
        editor.editMode = 1;
        break;
    case vk::kInsert:
        editor.editMode = -editor.editMode;
        break;
    default:
        break;
    }
    if (key != vk::kControl && key != vk::kPause)
        keys.lastKey = key;
    // A running program takes keys only while some function-key trap is on.
    if (programRunning(in) && !in.eventTraps().keyTrapsActive && key != vk::kControl && key != vk::kPause)
        return;
    int column = screen.cursorColumn();
    int row = screen.cursorRow();
    switch (key) {
    case vk::kTab: {
        std::string text = screen.row(row) + "    ";
        screen.setRow(row, text);
        screen.setCursor(column + 4, savedRow);
        break;
    }
    case vk::kPause:
        stopKey(in);
        break;
    case vk::kHome:
        screen.setCursor(0, 0);
        break;
    case vk::kLeft:
        if (column > 0) {
            screen.setCursor(column - 1, row);
        } else if (row > 0) {
            padTo(screen, row - 1, kColumns);
            screen.setCursor(kColumns - 1, row - 1);
        }
        break;
    case vk::kUp:
        screen.setCursor(column, std::max(savedRow - 1, 0));
        break;
    case vk::kRight:
        if (column + 1 > kColumns - 1) {
            if (row < 23)
                screen.setCursor(0, row + 1);
            else
                screen.setCursor(kColumns - 1, row);
        } else {
            padTo(screen, row, static_cast<size_t>(column + 1));
            screen.setCursor(column + 1, row);
        }
        break;
    case vk::kDown:
        if (savedRow < 23)
            screen.setCursor(std::min(column, kColumns - 1), savedRow + 1);
        break;
    case vk::kDelete:
        deleteAtCursor(screen);
        break;
    default:
        if (key >= vk::kF1 && key <= vk::kF10 && !core::reportEvent(in, core::trap::kFirstKey + key - vk::kF1))
            typeFunctionKey(in, key - vk::kF1 + 1);
        break;
    }
    if (in.error().isPending()) {
        screen.NewLine();
        core::showPrompt(in, core::PromptKind::Output);
    }
}

void onKeyUp(core::Interpreter& in, int key)
{
    auto& keys = in.keyboard();
    if (keys.lastKeyDown == vk::kControl && key == vk::kC) {
        keys.lastKeyDown = vk::kC;
        stopKey(in);
        return;
    }
    keys.lastKeyDown = key;
}

void onLeftButtonDown(core::Interpreter& in, int x, int y)
{
    auto& screen = in.screen();
    int column = std::clamp(x / 8, 0, kColumns - 1);
    int row = y / 16;
    if (y < 0) {
        screen.setCursor(column, 0);
        return;
    }
    row = std::min(row, kRows - 1);
    in.eventTraps().penColumn = column;
    in.eventTraps().penRow = row;
    in.eventTraps().penX = x;
    in.eventTraps().penY = y;
    in.eventTraps().penClicked = true;
    core::reportEvent(in, core::trap::kPen);
    if (row == kFunctionKeyRow && in.functionKeys().lineShown) {
        for (int k = 0; k < 10; ++k) {
            // Label k spans 8(8k+1)-2 < x < 8(8k+7)-2.
            if (x > 8 * (8 * k + 1) - 2 && x < 8 * (8 * k + 7) - 2) {
                if (static_cast<size_t>(screen.cursorColumn()) > screen.row(screen.cursorRow()).size())
                    padTo(screen, screen.cursorRow(), static_cast<size_t>(screen.cursorColumn()));
                typeFunctionKey(in, k + 1);
                return;
            }
        }
    }
    padTo(screen, row, static_cast<size_t>(column));
    screen.setCursor(column, row);
}

} // namespace tessaly::screen
