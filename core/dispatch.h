// The handler table: one handler per statement code. Handlers live beside their subsystems;
// this table only points to them.
#pragma once

namespace tessaly::core {

class Interpreter;

// A statement handler gets the position just after its keyword and the statement's end, and returns
// kFailed after raising an error, or the statement code (possibly refined) or a special result.
using StatementHandler = int (*)(Interpreter&, int begin, int end);

[[nodiscard]] StatementHandler handlerFor(int code);

} // namespace tessaly::core
