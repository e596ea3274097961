// Key scripts of the headless runner (--keys, --keys-file): UTF-8 text whose characters are typed
// as Shift-JIS bytes, with escapes in braces for the keys that type no character ({ENTER}, {F1},
// {LEFT}, {STOP}, ...), an optional repeat count ({LEFT 3}) and {NOKEY}, a read that finds no key.
// This file only reads the text; typing the strokes is app/headless/scripted_keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::app {

enum class StrokeKind : uint8_t {
    Character, // one byte of typed text (a double-byte character is two strokes)
    Key,       // a key by its virtual-key code (screen/keyboard.h)
    NoKey      // a moment with no key pressed
};

struct KeyStroke {
    StrokeKind kind = StrokeKind::Character;
    int code = 0; // the byte (0..255) or the virtual-key code; 0 for NoKey
    bool operator==(const KeyStroke&) const = default;
};

// Limits: a script holds at most this many strokes (counts included), and its text at most this
// many bytes.
inline constexpr size_t kMaxKeyStrokes = 1'000'000;
inline constexpr size_t kMaxKeyScriptBytes = 4 * 1024 * 1024;
// The largest repeat count of one escape.
inline constexpr int kMaxRepeatCount = 1000;

struct KeyScriptResult {
    bool ok = false;
    std::vector<KeyStroke> strokes; // appended to what was given
    std::string error;              // when not ok: "line L, column C: what is wrong"
};

// Reads the script and appends its strokes to `strokes` (so that several scripts make one).
// A line end (LF, CR LF or CR) is Enter. Escape names may be written in any case.
KeyScriptResult parseKeyScript(std::string_view utf8, std::vector<KeyStroke> strokes = {});

} // namespace tessaly::app
