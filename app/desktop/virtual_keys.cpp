// The key mapping between Qt and the screen editor's virtual-key codes.
#include "app/desktop/virtual_keys.h"

#include <QKeyEvent>

#include "core/shift_jis.h"

namespace tessaly::desktop {

int virtualKeyFor(int qtKey)
{
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return 'A' + (qtKey - Qt::Key_A);
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return '0' + (qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return 0x70 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace: return 0x08;
    case Qt::Key_Tab: case Qt::Key_Backtab: return 0x09;
    case Qt::Key_Clear: return 0x0C;
    case Qt::Key_Return: case Qt::Key_Enter: return 0x0D;
    case Qt::Key_Shift: return 0x10;
    case Qt::Key_Control: return 0x11;
    case Qt::Key_Alt: return 0x12;
    case Qt::Key_Pause: return 0x13;
    case Qt::Key_CapsLock: return 0x14;
    case Qt::Key_Kana_Lock: case Qt::Key_Katakana: case Qt::Key_Hiragana_Katakana: return 0x15;
    case Qt::Key_Kanji: return 0x19;
    case Qt::Key_Escape: return 0x1B;
    case Qt::Key_Henkan: return 0x1C;
    case Qt::Key_Muhenkan: return 0x1D;
    case Qt::Key_Space: return 0x20;
    case Qt::Key_PageUp: return 0x21;
    case Qt::Key_PageDown: return 0x22;
    case Qt::Key_End: return 0x23;
    case Qt::Key_Home: return 0x24;
    case Qt::Key_Left: return 0x25;
    case Qt::Key_Up: return 0x26;
    case Qt::Key_Right: return 0x27;
    case Qt::Key_Down: return 0x28;
    case Qt::Key_Print: return 0x2C;
    case Qt::Key_Insert: return 0x2D;
    case Qt::Key_Delete: return 0x2E;
    case Qt::Key_Help: return 0x2F;
    case Qt::Key_Meta: return 0x5B;
    case Qt::Key_Menu: return 0x5D;
    case Qt::Key_NumLock: return 0x90;
    case Qt::Key_ScrollLock: return 0x91;
    case Qt::Key_Semicolon: case Qt::Key_Colon: return 0xBA;
    case Qt::Key_Plus: case Qt::Key_Equal: return 0xBB;
    case Qt::Key_Comma: case Qt::Key_Less: return 0xBC;
    case Qt::Key_Minus: case Qt::Key_Underscore: return 0xBD;
    case Qt::Key_Period: case Qt::Key_Greater: return 0xBE;
    case Qt::Key_Slash: case Qt::Key_Question: return 0xBF;
    case Qt::Key_At: case Qt::Key_QuoteLeft: return 0xC0;
    case Qt::Key_BracketLeft: case Qt::Key_BraceLeft: return 0xDB;
    case Qt::Key_Backslash: case Qt::Key_Bar: case Qt::Key_yen: return 0xDC;
    case Qt::Key_BracketRight: case Qt::Key_BraceRight: return 0xDD;
    case Qt::Key_AsciiCircum: case Qt::Key_Apostrophe: return 0xDE;
    default: return 0;
    }
}

std::string shiftJisOf(const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    return core::Utf8ToShiftJis(std::string_view(utf8.constData(), static_cast<size_t>(utf8.size())));
}

std::string characterBytesFor(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Backspace: return "\x08";
    case Qt::Key_Tab: case Qt::Key_Backtab: return "\x09";
    case Qt::Key_Return: case Qt::Key_Enter: return "\x0D";
    case Qt::Key_Escape: return "\x1B";
    case Qt::Key_Delete: case Qt::Key_Insert: return {};
    default: break;
    }
    bool control = (event.modifiers() & Qt::ControlModifier) != 0;
    if (control && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z)
        return std::string(1, static_cast<char>(event.key() - Qt::Key_A + 1));
    QString text = event.text();
    // Text of keys that a Windows window gets no character for (DEL and other controls).
    if (text.isEmpty() || (text.size() == 1 && (text[0].unicode() < 0x20 || text[0].unicode() == 0x7F)))
        return {};
    return shiftJisOf(text);
}

bool isInertAccelerator(const QKeyEvent& event)
{
    auto modifiers = event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier);
    int key = event.key();
    if (modifiers == Qt::ControlModifier)
        return key == Qt::Key_C || key == Qt::Key_V || key == Qt::Key_X || key == Qt::Key_Z || key == Qt::Key_Insert;
    if (modifiers == Qt::ShiftModifier)
        return key == Qt::Key_Insert || key == Qt::Key_Delete;
    if (modifiers == Qt::AltModifier)
        return key == Qt::Key_Backspace;
    return false;
}

} // namespace tessaly::desktop
