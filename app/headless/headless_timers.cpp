// Timers on the steady clock, delivered by the runner.
#include "app/headless/headless_timers.h"

#include <algorithm>

#include "core/interpreter.h"

namespace tessaly::app {

void HeadlessTimers::start(core::TimerId id, int periodMs)
{
    // A window timer's shortest period is one tick: a zero period must not spin.
    auto& timer = m_timers[slot(id)];
    timer.running = true;
    timer.period = std::chrono::milliseconds(std::max(periodMs, 1));
    timer.due = Clock::now() + timer.period;
}

void HeadlessTimers::stop(core::TimerId id) { m_timers[slot(id)].running = false; }

Deadline HeadlessTimers::nextDue() const
{
    Deadline next;
    for (const auto& timer : m_timers) {
        if (timer.running && (!next || timer.due < *next))
            next = timer.due;
    }
    return next;
}

void HeadlessTimers::deliverDue(core::Interpreter& interpreter)
{
    if (!nextDue())
        return;
    auto now = Clock::now();
    for (auto id : {core::TimerId::TimeAlarm, core::TimerId::ContinuousBeep}) {
        auto& timer = m_timers[slot(id)];
        if (!timer.running || timer.due > now)
            continue;
        // A periodic timer runs on from now; the handler may stop it (the alarm stops itself).
        timer.due = now + timer.period;
        interpreter.onTimer(id);
    }
}

} // namespace tessaly::app
