// The parts of GOSUB, RETURN and IF that the statements read from their text and the compiled ones
// share: entering the subroutine once the target is found, leaving it, and IF's branch.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/outcome.h"

namespace tessaly::core {

class Interpreter;

// GOSUB after its target was found (RunState::jumpTarget): the return address pushed and the run
// moved to the target; "Out of memory in " when the stack is full.
Outcome enterSubroutine(Interpreter& interpreter);
// RETURN: the return address popped and the run moved back; "RETURN without gosub in " when none.
Outcome leaveSubroutine(Interpreter& interpreter);
// Where IF's condition ends in the statement: at " THEN" or " GOTO" outside quotes, else at end.
[[nodiscard]] size_t ifConditionEnd(std::string_view statement, int begin, int end);
// IF once its condition is known: on to the THEN or the ELSE branch entry.
Outcome takeIfBranch(Interpreter& interpreter, bool truth);
// The same for an IF that runs again and again: known keeps the IF found (-1 at first).
Outcome takeIfBranch(Interpreter& interpreter, bool truth, int& known);

} // namespace tessaly::core
