// CONSOLE top,rows,f,s: the scroll window, the function-key line and the colour switch.
#include "core/interpreter.h"
#include "core/outcome.h"
#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/statements.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

namespace {

// Logical lines cut by the window's edges end at the edge; a line left with one row loses its links.
void cutLinesAtWindow(TextScreen& screen)
{
    int top = screen.scrollTop();
    int last = screen.lastTextRow();
    for (int r = 0; r < kRows; ++r) {
        auto link = screen.link(r);
        if (link.firstRow < 0)
            continue;
        bool outsideBefore = link.firstRow < top && r >= top;
        bool outsideAfter = r > last && link.firstRow <= last;
        if (outsideBefore || outsideAfter)
            screen.setLink(r, {});
    }
    for (int r = 0; r < kRows; ++r) {
        auto link = screen.link(r);
        if (link.firstRow != r)
            continue;
        int end = r;
        while (end + 1 < kRows && screen.link(end + 1).firstRow == r)
            ++end;
        screen.setLink(r, end == r ? LineLink {} : LineLink {static_cast<int8_t>(r), static_cast<int8_t>(end)});
    }
}

} // namespace

Outcome stmtConsole(core::Interpreter& in, int begin, int end)
{
    std::vector<expr::Value> values;
    TRY_BASIC(evaluateStatementArguments(in, begin, end, values));
    bool blankAfter = in.buffer().at(begin) == ' ';
    const int defaults[4] = {0, 24, 1, 1};
    int arguments[4] = {-1, -1, -1, -1};
    for (size_t k = 0; k < 4; ++k) {
        if (blankAfter)
            arguments[k] = defaults[k];
        if (k < values.size() && !values[k].empty)
            arguments[k] = argumentOr(values, k, -1);
    }
    int top = arguments[0];
    int rows = arguments[1];
    int keys = arguments[2];
    int colourSwitch = arguments[3];
    if (top < 0 || top > 24 || rows < 0 || rows > 25 || keys < 0 || keys > 1 || colourSwitch < 0 || colourSwitch > 1)
        return in.raise(core::ErrorId::IllegalFunctionCall);
    auto& screen = in.screen();
    screen.setScrollWindow(top, rows);
    in.functionKeys().lineShown = keys == 1;
    in.colours().colourSwitch = colourSwitch;
    cutLinesAtWindow(screen);
    return kDone;
}

} // namespace tessaly::screen
