// GOTO and GO TO: the run loop moves to the target that findTarget chose.
#include "core/find_target.h"
#include "core/interpreter.h"
#include "core/statements.h"

namespace tessaly::core {

Outcome stmtGoto(Interpreter& in, int begin, int end)
{
    TRY_BASIC(findTarget(in, begin, end));
    return kDone;
}

} // namespace tessaly::core
