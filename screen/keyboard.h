// The key state that the break check, INKEY$ and INPUT read: last key, key buffer, capture flag.
// The screen editor fills it; consumers read and clear it.
#pragma once

#include <string>

namespace tessaly::screen {

namespace vk {
inline constexpr int kBackspace = 8, kTab = 9, kEnter = 13, kShift = 16, kControl = 17, kPause = 19;
inline constexpr int kEscape = 27, kPageUp = 33, kPageDown = 34, kHome = 36;
inline constexpr int kLeft = 37, kUp = 38, kRight = 39, kDown = 40, kInsert = 45, kDelete = 46;
inline constexpr int kC = 67, kF1 = 112, kF10 = 121;
} // namespace vk

struct Keyboard {
    int lastKey = 0;
    int lastKeyDown = 0;
    int previousKeyDown = 0;
    int keyCapture = 0;      // 1 or 2 while a statement collects keys
    std::string keyBuffer;   // characters typed for the program, in arrival order
};

} // namespace tessaly::screen
