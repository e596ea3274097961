// The parts of GOSUB and RETURN that the statements read from their text and the compiled ones
// share: entering the subroutine once the target is found, and leaving it.
#pragma once

#include "core/outcome.h"

namespace tessaly::core {

class Interpreter;

// GOSUB after its target was found (RunState::jumpTarget): the return address pushed and the run
// moved to the target; "Out of memory in " when the stack is full.
Outcome enterSubroutine(Interpreter& interpreter);
// RETURN: the return address popped and the run moved back; "RETURN without gosub in " when none.
Outcome leaveSubroutine(Interpreter& interpreter);

} // namespace tessaly::core
