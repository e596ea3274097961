// The screen editor's side of INPUT, LINE INPUT and RANDOMIZE: the prompt printed where the reply
// will be typed, and the reply taken from the screen when Enter is pressed. The screen carries the
// cell where the reply starts along when it scrolls.
#include <algorithm>
#include <string>

#include "core/interpreter.h"
#include "core/run_state.h"
#include "core/text_scan.h"
#include "expr/input_state.h"
#include "screen/keyboard.h"
#include "screen/text_screen.h"

namespace tessaly::expr {

void showInputPrompt(core::Interpreter& in)
{
    auto& run = in.run();
    auto& screen = in.screen();
    run.outputText += in.inputState().prompt;
    screen.Print(run.outputText);
    run.outputText.clear();
    screen.setAnchor({screen.cursorColumn(), screen.cursorRow()});
    in.keyboard().keyBuffer.clear();
}

void endInputReply(core::Interpreter& in)
{
    in.keyboard().keyBuffer.clear();
    in.screen().setAnchor({});
}

std::string inputReply(core::Interpreter& in, std::string_view enteredLine)
{
    const auto& screen = in.screen();
    const int last = screen.cursorRow();
    const auto link = screen.link(last);
    const int first = link.firstRow >= 0 && link.firstRow <= last ? link.firstRow : last;
    const auto start = screen.anchor();
    if (start.row >= first && start.row <= last) {
        // Whatever stands before that cell on its row (the prompt, and what PRINT left there) is
        // not part of the reply, even when it wrapped or the user typed over it.
        std::string reply;
        for (int r = start.row; r <= last; ++r) {
            std::string_view text = screen.row(r);
            if (r == start.row)
                text.remove_prefix(std::min(text.size(), static_cast<size_t>(start.column)));
            reply += text;
        }
        return core::trimBlanks(reply);
    }
    // Enter on another logical line than the prompt's (the cursor moved away, or the prompt was
    // scrolled out of the window): that line is the reply, less the prompt when it begins with it,
    // so that an earlier prompt and answer can be entered again.
    std::string reply = core::trimBlanks(enteredLine);
    std::string prompt = core::trimBlanks(in.inputState().prompt);
    if (reply.starts_with(prompt))
        reply.erase(0, prompt.size());
    return core::trimBlanks(reply);
}

} // namespace tessaly::expr
