// The full-screen editor: typing, overwrite and insert, the cursor keys, Enter handing the logical
// line under the cursor to line entry, the function keys and clicks. Keys arrive as plain calls
// with Windows virtual-key codes (the desktop shell and the headless runner map theirs).
#pragma once

#include <string>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::screen {

struct EditorState {
    int editMode = 1;        // 1 overwrite, -1 insert
    int pendingLeadByte = 0; // a Shift-JIS lead byte waiting for its trail byte
    int columnAtEnter = 0;
};

// A character message (typed text, Enter 13, BS 8, TAB 9, Esc 27).
void onChar(core::Interpreter& in, int ch);
// A key-down message with a virtual-key code.
void onKeyDown(core::Interpreter& in, int key);
void onKeyUp(core::Interpreter& in, int key);
// A left click at a pixel of the 640 x 400 screen.
void onLeftButtonDown(core::Interpreter& in, int x, int y);

// The logical line under the cursor as Enter gathers it (rows joined, links repaired).
std::string logicalLineAt(core::Interpreter& in, int row);
// Types function-key text k (1..10) as if its bytes were typed.
void typeFunctionKey(core::Interpreter& in, int k);

} // namespace tessaly::screen
