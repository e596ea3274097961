// The window timers for a host without a window: timer 1 (the ON TIME$ alarm) and timer 2 (the
// continuous BEEP) run on the steady clock; the runner delivers a due timer between two
// statements, or while it waits for input, as the window's timer message would.
#pragma once

#include <array>

#include "app/headless/standard_input.h"
#include "core/host.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::app {

class HeadlessTimers {
public:
    void start(core::TimerId id, int periodMs);
    void stop(core::TimerId id);
    // When the next timer is due; none while no timer runs.
    [[nodiscard]] Deadline nextDue() const;
    // Calls Interpreter::onTimer once for each timer whose time has come.
    void deliverDue(core::Interpreter& interpreter);

private:
    struct Timer {
        bool running = false;
        Clock::duration period {};
        Clock::time_point due {};
    };
    static size_t slot(core::TimerId id) { return id == core::TimerId::TimeAlarm ? 0 : 1; }

    std::array<Timer, 2> m_timers {};
};

} // namespace tessaly::app
