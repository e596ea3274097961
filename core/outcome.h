// What a statement handler tells the run loop. The statement's code is kept apart, in
// RunState::statementCode (handlers refine it); the outcome only says how the run goes on.
#pragma once

#include <cstdint>

#include "core/basic_error.h"

namespace tessaly::core {

enum class Flow : uint8_t {
    Done,         // the statement is complete; its code decides the rest (a jump, PRINT's newline, END, RUN)
    Failed,       // a BASIC error was raised, or INPUT$ or a serial port is not ready (RunState::waitingFor...)
    ChainOn,      // CONT, WHILE, WEND: the next entry runs at once, nothing else is done
    RepeatEntry,  // IF: the branch entry after currentIndex runs at once
    RunFromEntry, // RUN n, CHAIN: currentIndex already stands before the first entry to run
    InputWait,    // INPUT waits for its line
};

class [[nodiscard]] Outcome {
public:
    // Raising returns a Failure, which a handler passes on as it is.
    constexpr Outcome(Failure) // NOLINT(google-explicit-constructor)
        : m_flow(Flow::Failed)
    {
    }
    constexpr explicit Outcome(Flow flow)
        : m_flow(flow)
    {
    }

    [[nodiscard]] constexpr Flow flow() const { return m_flow; }
    [[nodiscard]] constexpr bool failed() const { return m_flow == Flow::Failed; }

private:
    Flow m_flow;
};

inline constexpr Outcome kDone { Flow::Done };

// A helper's status (kFailed after raising, anything else success) as a statement's outcome.
[[nodiscard]] constexpr Outcome outcomeOf(int status) { return status < 0 ? Outcome(Flow::Failed) : kDone; }

} // namespace tessaly::core

