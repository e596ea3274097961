// The state DRAW keeps from one string to the next: scale, quarter turns, colours and line style.
#pragma once

#include <cstdint>

namespace tessaly::screen {

struct DrawState {
    float scale = 1.0F;
    int angle = 0;           // quarter turns, 0..3
    int colour = 7;          // C
    int brushColour = 7;     // Z
    bool useBrushColour = false;
    bool styleSet = false;   // Y
    uint16_t style = 0xFFFF;

    // SCREEN and the run-time reset (RUN, NEW, LOAD); the C colour starts as the drawing colour.
    void reset(int foregroundColour) { *this = DrawState {}, colour = foregroundColour; }
};

} // namespace tessaly::screen
