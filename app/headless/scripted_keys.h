// The headless runner's key script: read from the --keys and --keys-file options, then typed into
// the interpreter one stroke at a time through the same key entry points as the window's keys
// (onKeyDown, onChar, onKeyUp), when the program reads the keyboard or the screen editor waits.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/headless/key_script.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::app {

// One key option: the script text itself (--keys) or the name of a file that holds it (--keys-file).
struct KeySource {
    const char* text = nullptr;
    bool isFile = false;
};

class ScriptedKeys {
public:
    // Reads every source in order into one script. On failure `error` is one line without
    // "tessaly: " (the file that cannot be read, or where the script is wrong).
    bool load(const std::vector<KeySource>& sources, std::string& error);

    // The program reads the keyboard (INKEY$, INPUT$): the next stroke is typed now. ESC is held
    // until typeHeld, between two statements: in the window it breaks the program before its next
    // statement instead of being read. False when the script is used up.
    bool typeForProgram(core::Interpreter& in);
    // Between two statements: an ESC that a read took is typed now.
    void typeHeld(core::Interpreter& in);
    // The screen editor waits for a key (the prompt, an INPUT's line): the next stroke, if any.
    std::optional<KeyStroke> take();

    // Types a stroke as the window types its key: key down, the character the key gives (Enter,
    // ESC, BS, TAB), key up; a character alone; nothing for a moment with no key.
    static void type(core::Interpreter& in, KeyStroke stroke);

private:
    std::vector<KeyStroke> m_strokes;
    size_t m_next = 0;
    bool m_heldEscape = false;
};

// The rows of the logical line that Enter at the cursor hands over, as Shift-JIS texts, for the
// runner's echo: from the line's first row to the cursor row, blanks at the end removed; a double-byte character that a row end cut stays
// whole at the end of the earlier row, as the runner echoes typed lines. Empty when Enter only moves the cursor down.
std::vector<std::string> rowsEnterTakes(core::Interpreter& in);

} // namespace tessaly::app
