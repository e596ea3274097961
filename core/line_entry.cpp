// Line entry: upper-casing, CONT, INPUT answers, numbered lines and direct commands.
// The executor stores numbered lines (core/executor.cpp); direct commands run through core/run_loop.
#include "core/line_entry.h"

#include <cmath>
#include <cstdlib>

#include "core/executor.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/rounding.h"
#include "core/run_loop.h"
#include "core/upper_case_pass.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "expr/input_state.h"
#include "screen/text_screen.h"

namespace tessaly::core {

bool isNumberedLine(std::string_view text)
{
    // Read as a number: digits with an optional fraction and exponent, stopping at the first
    // character that does not fit.
    std::string head(text.substr(0, 64));
    char* end = nullptr;
    double value = std::strtod(head.c_str(), &end);
    if (end == head.c_str() || !std::isfinite(value))
        return false;
    // strtod also reads hexadecimal, infinities and leading blanks; a line number is plain decimal.
    size_t first = head.find_first_not_of(' ');
    if (first == std::string::npos)
        return false;
    char lead = head[first];
    if (!(lead == '+' || lead == '-' || lead == '.' || (lead >= '0' && lead <= '9')))
        return false;
    if (head.find_first_of("xXnN", first) < static_cast<size_t>(end - head.c_str()))
        return false;
    return roundHalfUpTruncated(value) > 0;
}

void enterLine(Interpreter& in, std::string_view typed)
{
    auto& screen = in.screen();
    auto& run = in.run();
    auto trimmed = trimBlanks(typed);
    if (trimmed.empty()) {
        screen.NewLine();
        return;
    }
    std::string text(trimmed);
    upperCaseOutsideStrings(text, CaseRules::TypedLine);
    if (!in.buffer().assign(text)) {
        screen.NewLine();
        in.raiseWithoutLine(ErrorId::LineBufferOverflow);
        showPrompt(in, PromptKind::Output);
        return;
    }
    if (text == "CONT") {
        screen.NewLine();
        showPrompt(in, PromptKind::Ok);
        in.continueProgram();
        return;
    }
    if (run.lastFlow == Flow::InputWait) {
        if (run.previousCode == static_cast<int>(Stmt::Input)) {
            // The answer is taken as it stands on the screen, not upper-cased, from where the
            // prompt ended.
            run.outputText = expr::inputReply(in, trimmed);
            screen.setCursor(0, screen.cursorRow());
            screen.NewLine();
            runLoop(in);
            return;
        }
        runDirectCommand(in);
        return;
    }
    if (!isNumberedLine(text)) {
        runDirectCommand(in);
        return;
    }
    if (run.autoLine > 0) {
        autoLineEntered(in, text);
        return;
    }
    storeNumberedLine(in);
}

} // namespace tessaly::core
