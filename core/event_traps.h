// Event traps: ON KEY, ON STOP, ON TIME$, ON PEN and ON COM GOSUB. Each event source has a slot
// with its handler's entry and a mode; an event whose trap is on performs a GOSUB between two
// statements, one that comes while its trap is stopped is remembered until the trap is on again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tessaly::core {

class Interpreter;

namespace trap {
inline constexpr int kTime = 0;      // the ON TIME$ alarm
inline constexpr int kFirstKey = 1;  // F1; F10 is slot 10
inline constexpr int kStop = 11;     // PAUSE, or C with CTRL
inline constexpr int kPen = 12;      // the left mouse button
inline constexpr int kFirstCom = 13; // serial input, five slots
inline constexpr int kComSlotCount = 5;
inline constexpr int kSlots = 18;
} // namespace trap
// Each slot has its own bit in the run state's pending-event word, below the BREAK bit.
static_assert(trap::kSlots < 31);

enum class TrapMode : uint8_t { NotSet = 0, On = 1, Off = 2, Stopped = 3 };

struct TrapSlot {
    int target = 0;  // the handler's entry; 0 none; negative: an event came while stopped
    TrapMode mode = TrapMode::NotSet;
};

struct EventTraps {
    std::array<TrapSlot, trap::kSlots> sources {};
    // Some function-key trap is on (or stopped, so that the key it remembers can arrive): keys
    // reach a running program.
    bool keyTrapsActive = false;
    bool comTrapOn = false;
    int penColumn = 0;           // the cell of the last left click
    int penRow = 0;
    int penX = 0;                // its pixel
    int penY = 0;
    bool penClicked = false;     // a left click came since the last PEN(0)

    // The run-time reset (RUN, NEW, CLEAR) forgets the function-key traps.
    void resetKeySlots()
    {
        for (int k = 0; k < 10; ++k)
            sources[static_cast<size_t>(trap::kFirstKey + k)] = {};
        keyTrapsActive = false;
    }
    // Whether a serial-input trap (the five slots from kFirstCom) is on; asked at every idle call,
    // so kept by updateComTrapOn whenever a slot is switched.
    [[nodiscard]] bool anyComTrapOn() const { return comTrapOn; }
    void updateComTrapOn()
    {
        comTrapOn = false;
        for (int k = 0; k < trap::kComSlotCount; ++k)
            comTrapOn = comTrapOn || sources[static_cast<size_t>(trap::kFirstCom + k)].mode == TrapMode::On;
    }
    void updateKeyTrapsActive()
    {
        keyTrapsActive = false;
        for (int k = 0; k < 10; ++k) {
            auto mode = sources[static_cast<size_t>(trap::kFirstKey + k)].mode;
            keyTrapsActive = keyTrapsActive || mode == TrapMode::On || mode == TrapMode::Stopped;
        }
    }
};

// Performs the trap's GOSUB from outside a statement; kFailed with "Out of memory in " when the
// GOSUB stack is full. Only the run loop calls it, between two entries.
[[nodiscard]] int fireTrap(Interpreter& in, int slot);

// An event arrived: true when its trap took it (marked to fire at the run loop's next yield
// point, or remembered while stopped); false when the event should have its ordinary effect
// (typing the key, BREAK). Traps take events only while a program runs; in direct mode every key
// types and the STOP key does what BREAK does.
bool reportEvent(Interpreter& in, int slot);

// Marks the trap of slot to fire at the run loop's next yield point.
void markTrapDue(Interpreter& in, int slot);
// PEN(n), the state of the last left click (core/pen_function.cpp); kFailed for an unknown n.
int penFunction(Interpreter& in, int n, double& value);

} // namespace tessaly::core
