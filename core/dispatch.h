// The handler table: one handler per statement code. Handlers live beside their subsystems;
// this table only points to them.
#pragma once

#include "core/outcome.h"

namespace tessaly::core {

class Interpreter;

// A statement handler gets the position just after its keyword and the statement's end, and tells
// the run loop how the run goes on; a refined statement code goes into RunState::statementCode.
using StatementHandler = Outcome (*)(Interpreter& interpreter, int begin, int end);

[[nodiscard]] StatementHandler handlerFor(int code);

} // namespace tessaly::core
