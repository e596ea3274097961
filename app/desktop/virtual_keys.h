// Keys of the desktop as the screen editor knows them: Qt key codes to the Windows virtual-key
// codes, and the characters a key press types as Shift-JIS bytes.
#pragma once

#include <QString>
#include <string>

class QKeyEvent;

namespace tessaly::desktop {

// The virtual-key code of a Qt key; 0 for a key the editor does not know.
int virtualKeyFor(int qtKey);

// The bytes a key press hands to the character handler, as a Windows window receives them:
// printable text, BS (8), TAB (9), Enter (13), ESC (27) and Ctrl with a letter (1..26); the
// cursor and function keys, Insert and Delete type nothing.
std::string characterBytesFor(const QKeyEvent& event);

// Committed text (typed or from an input method) as Shift-JIS bytes.
std::string shiftJisOf(const QString& text);

// The key combinations bound to the copy, paste, cut and undo accelerators: they do nothing.
bool isInertAccelerator(const QKeyEvent& event);

} // namespace tessaly::desktop
