// CLS: clears the text window (1), the graphics page (2) or both (3).
#include "core/interpreter.h"
#include "core/outcome.h"
#include "screen/colours.h"
#include "screen/statements.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

void clearScreen(core::Interpreter& in, int n)
{
    auto& screen = in.screen();
    auto& colours = in.colours();
    if (n == 1 || n == 3) {
        screen.ClearRows();
        for (int r = screen.scrollTop(); r <= screen.lastTextRow(); ++r)
            screen.setLink(r, {});
        screen.setCursor(0, 0);
        screen.saveCursor();
    }
    if (n == 2)
        screen.setCursor(0, 0);
    if (n >= 2 && n <= 3) {
        colours.backgroundInEffect = colours.backgroundColour;
        screen.clearGraphics();
    }
}

Outcome stmtCls(core::Interpreter& in, int begin, int end)
{
    std::vector<expr::Value> values;
    TRY_BASIC(evaluateStatementArguments(in, begin, end, values));
    clearScreen(in, argumentOr(values, 0, 1));
    return kDone;
}

} // namespace tessaly::screen
