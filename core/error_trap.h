// ON ERROR GOTO state: the handler entry, where the trapped error happened, and the in-handler flag.
// Catching an error is done when the run loop shows it (core/run_loop.cpp).
#pragma once

namespace tessaly::core {

struct ErrorTrap {
    int trapTarget = 0;       // the handler's entry; 0 when no trap is armed
    int trapReturnIndex = 0;  // the entry that failed; 0 when the error had no line
    bool inTrapHandler = false;
};

} // namespace tessaly::core
