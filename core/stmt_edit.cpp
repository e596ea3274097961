// DELETE, AUTO, EDIT and NEW: the commands that change the stored program or offer a line to edit.
// AUTO's handling of each entered line is autoLineEntered, called by line entry.
#include <string>

#include "core/executor.h"
#include "core/interpreter.h"
#include "core/text_scan.h"
#include "core/keyword_table.h"
#include "core/run_loop.h"
#include "core/statements.h"
#include "screen/text_screen.h"

namespace tessaly::core {

namespace {

// The argument text of a range (up to a colon, apostrophe or line end), split at "-".
void rangeTexts(std::string_view argument, std::string& from, std::string& to)
{
    argument = argument.substr(0, argument.find_first_of(":'\r\n"));
    auto dash = argument.find('-');
    if (dash == std::string_view::npos) {
        from = trimBlanks(argument);
        to = from;
        return;
    }
    from = trimBlanks(argument.substr(0, dash));
    to = trimBlanks(argument.substr(dash + 1));
}

} // namespace

int deleteLines(Interpreter& in, int from, int to)
{
    auto& store = in.program();
    int count = store.count();
    if (from < 1) {
        if (to < 1)
            return in.raise(ErrorId::SyntaxError);
        from = count > 0 ? store.numberAt(1) : 1;
    }
    if (to < 1)
        to = count > 0 ? store.numberAt(count) : 0;
    // A range that runs backwards deletes nothing and says so.
    if (from > to)
        return in.raise(ErrorId::IllegalFunctionCall);
    for (int line = store.count(); line >= 1; --line) {
        int number = store.numberAt(line);
        if (number >= from && number <= to)
            store.removeLine(line);
    }
    programEdited(in);
    return 0;
}

Outcome stmtDelete(Interpreter& in, int begin, int end)
{
    std::string from;
    std::string to;
    rangeTexts(in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin)), from, to);
    TRY_BASIC(deleteLines(in, leadingNumber(from), leadingNumber(to)));
    return kDone;
}

Outcome stmtAuto(Interpreter& in, int begin, int end)
{
    auto& run = in.run();
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    argument = argument.substr(0, argument.find_first_of(":'\r\n"));
    auto comma = argument.find(',');
    int start = leadingNumber(argument.substr(0, comma));
    int step = comma == std::string_view::npos ? 0 : leadingNumber(argument.substr(comma + 1));
    if (start < 1)
        start = 10;
    if (step < 1)
        step = 10;
    run.outputText = std::to_string(start) + " ";
    in.screen().setCursor(0, in.screen().cursorRow());
    run.autoLine = start;
    run.autoStep = step;
    return kDone;
}

void autoLineEntered(Interpreter& in, std::string_view text)
{
    auto& run = in.run();
    auto& screen = in.screen();
    std::string number = std::to_string(run.autoLine);
    run.autoLine += run.autoStep;
    if (trimBlanks(text).size() <= number.size()) {
        // A row holding only its number ends AUTO.
        screen.NewLine();
        run.autoLine = 0;
        run.printNewline = true;
        showPrompt(in, PromptKind::Break);
        return;
    }
    if (run.autoLine > 65529) {
        screen.NewLine();
        in.raiseForLine(ErrorId::OutOfMemoryAuto, 0);
        showPrompt(in, PromptKind::Output);
        run.autoLine -= run.autoStep;
        return;
    }
    if (!in.buffer().assign(text)) {
        screen.NewLine();
        in.raiseForLine(ErrorId::LineBufferOverflow, leadingNumber(number));
        showPrompt(in, PromptKind::Output);
    } else {
        storeNumberedLine(in);
    }
    // The next number replaces the row: stored, written to the stream, and drawn over the whole row.
    std::string next = std::to_string(run.autoLine) + " ";
    int row = screen.cursorRow();
    screen.WriteRow(next, screen.link(row));
    std::string cells = next;
    cells.resize(screen::kColumns, ' ');
    screen.updateCells(0, row, 0, 0, cells);
    screen.setCursor(static_cast<int>(next.size()), row);
}

Outcome stmtEdit(Interpreter& in, int begin, int end)
{
    auto& run = in.run();
    run.editShown = true;
    int number = leadingNumber(trimBlanks(in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin))));
    auto& store = in.program();
    for (int line = 1; line <= store.count(); ++line) {
        if (store.numberAt(line) != number)
            continue;
        std::string_view text = store.textAt(line);
        while (!text.empty() && (text.back() == '\r' || text.back() == '\n'))
            text.remove_suffix(1);
        run.outputText.assign(text);
        break;
    }
    return kDone;
}

void programEdited(Interpreter& in)
{
    in.host().setDocumentModified(true);
    in.run().canContinue = false;
    in.run().continueIndex = -1;
}

void forgetProgram(Interpreter& in)
{
    in.program().clear();
    resetRunTime(in);
    auto& prepared = in.prepared();
    prepared.labels.clear();
    prepared.truncateIfs(0);
    prepared.programIfCount = 0;
    prepared.preparedHighWater = 0;
    in.run().canContinue = false;
    in.run().continueIndex = -1;
}

Outcome stmtNew(Interpreter& in, int, int)
{
    forgetProgram(in);
    programEdited(in);
    // A program that runs NEW has nothing left to run.
    return endAsAtEnd(in);
}

Outcome endAsAtEnd(Interpreter& in)
{
    in.run().runMode = RunMode::Ended;
    in.run().statementCode = static_cast<int>(Stmt::End);
    return kDone;
}

} // namespace tessaly::core
