// PEN(n): where the left mouse button was last pressed on the screen (the pen of the PEN trap).
#include "core/event_traps.h"
#include "core/interpreter.h"

namespace tessaly::core {

// PEN(0) is -1 when the button was pressed since the last PEN(0) and 0 otherwise, and forgets the
// press; PEN(1) and PEN(2) are the pixel x and y of the last press, PEN(3) and PEN(4) its text
// column (0..79) and row (0..24), counted as POS and CSRLIN count. Any other n is refused.
int penFunction(Interpreter& in, int n, double& value)
{
    auto& traps = in.eventTraps();
    switch (n) {
    case 0:
        value = traps.penClicked ? -1 : 0;
        traps.penClicked = false;
        return 0;
    case 1: value = traps.penX; return 0;
    case 2: value = traps.penY; return 0;
    case 3: value = traps.penColumn; return 0;
    case 4: value = traps.penRow; return 0;
    default: return in.raise(ErrorId::IllegalFunctionCall);
    }
}

} // namespace tessaly::core
