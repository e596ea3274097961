// LOCATE x,y,s: moves the cursor and switches the caret; out-of-range values are replaced, never refused.
#include "core/interpreter.h"
#include "core/outcome.h"
#include "screen/statements.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

Outcome stmtLocate(core::Interpreter& in, int begin, int end)
{
    std::vector<expr::Value> values;
    TRY_BASIC(evaluateStatementArguments(in, begin, end, values));
    auto& screen = in.screen();
    int x = argumentOr(values, 0, -1);
    int y = argumentOr(values, 1, -1);
    int s = argumentOr(values, 2, -1);
    if (x == -1 && (values.empty() || values[0].empty))
        x = screen.cursorColumn();
    else if (x < 0 || x > 80)
        x = 0;
    if ((y == -1 && (values.size() < 2 || values[1].empty)) || y < 0 || y > 24)
        y = screen.cursorRow();
    if (s < 0 || s > 1)
        s = 1;
    screen.setCursor(x, y);
    screen.setCursorSwitch(s);
    return kDone;
}

} // namespace tessaly::screen
