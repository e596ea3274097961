#include "io/program_text.h"

#include <algorithm>

#include "core/char_class.h"
#include "core/interpreter.h"
#include "core/program_store.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "io/program_file.h"

namespace tessaly::io {

using core::ErrorId;

namespace {

std::string_view lineOf(const core::ProgramStore& store, int entry) { return store.textAt(entry); }

// Shows an error raised while taking lines in, as an error of a typed line is shown.
void showRefusal(core::Interpreter& in, core::StoreOutcome outcome, int number)
{
    if (outcome == core::StoreOutcome::LineTooLong)
        in.raiseForLine(ErrorId::LineBufferOverflow, number);
    else
        in.raiseForLine(ErrorId::OutOfMemory, 0);
    in.showPendingError();
}

} // namespace

std::string ProgramText(core::ProgramStore& store)
{
    // The Text program file is exactly that text.
    return ProgramFile::Write(ProgramFileFormat::Text, store).value_or(std::string());
}

std::string LinesInRange(const core::ProgramStore& store, int start, int end)
{
    std::string text;
    for (int entry = 1; entry <= store.count() && store.numberAt(entry) <= end; ++entry)
        if (store.numberAt(entry) >= start)
            text += lineOf(store, entry);
    return text;
}

std::vector<std::string> TextLines(std::string_view text)
{
    std::vector<std::string> lines;
    size_t at = 0;
    while (at < text.size()) {
        size_t end = text.find_first_of("\r\n", at);
        if (end == std::string_view::npos)
            end = text.size();
        lines.emplace_back(text.substr(at, std::min(end - at, kTextLineBytes)));
        at = end;
        if (at < text.size() && text[at] == '\r')
            ++at;
        if (at < text.size() && text[at] == '\n')
            ++at;
    }
    return lines;
}

bool EnterProgramLines(core::Interpreter& in, const std::vector<std::string>& lines, LineSource source)
{
    bool fromDialog = source == LineSource::ListDialog;
    for (const std::string& given : lines) {
        // The store holds a line from its digits on.
        std::string line = fromDialog ? core::trimBlanks(given) : given.substr(std::min(given.find_first_not_of(' '), given.size()));
        if (fromDialog)
            core::rewriteQuestionMarks(line, core::QuestionMarks::OutsideQuotes);
        core::upperCaseOutsideStrings(line, core::CaseRules::TypedLine);
        size_t digits = 0;
        while (digits < line.size() && core::isDigit(line[digits]))
            ++digits;
        int32_t number = core::leadingNumber(line);
        if (number < 1 || (!fromDialog && number > core::kHighestLineNumber))
            continue;
        if (number > core::kHighestLineNumber) {
            in.raiseForLine(ErrorId::OutOfMemory, 0);
            in.showPendingError();
            return false;
        }
        auto outcome = in.program().enterLine(line, std::string_view(line).substr(0, digits), false);
        core::programEdited(in);
        if (outcome != core::StoreOutcome::Stored) {
            showRefusal(in, outcome, number);
            if (fromDialog)
                return false;
        }
    }
    return true;
}

} // namespace tessaly::io
