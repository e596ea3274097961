// The statement executor: digits, labels, recognition, refinements, assignment without LET.
// Handlers themselves live beside their subsystems and are reached through core/dispatch.
#include "core/executor.h"

#include <cstring>

#include "core/char_class.h"
#include "core/dispatch.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/run_loop.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "screen/text_screen.h"

namespace tessaly::core {

namespace {

int skipBlanks(const StatementBuffer& buffer, int pos, int end)
{
    while (pos < end && buffer.at(pos) == ' ')
        ++pos;
    return pos;
}

// The statement text with every blank removed begins with prefix.
bool startsWithoutBlanks(std::string_view text, std::string_view prefix)
{
    size_t matched = 0;
    for (char c : text) {
        if (matched == prefix.size())
            break;
        if (c == ' ')
            continue;
        if (c != prefix[matched])
            return false;
        ++matched;
    }
    return matched == prefix.size();
}

// ON, OFF or STOP after the keyword, outside quotes: 1, 2 or 3; 0 when none stands there.
int switchMode(std::string_view text, int from)
{
    auto modeAt = [&](size_t pos) {
        auto rest = text.substr(pos);
        return rest.starts_with("ON") ? 1 : rest.starts_with("OFF") ? 2 : rest.starts_with("STOP") ? 3 : 0;
    };
    size_t at = findOutsideQuotesIf(text, static_cast<size_t>(from), [&](size_t pos) { return modeAt(pos) != 0; });
    return at == std::string_view::npos ? 0 : modeAt(at);
}

Outcome assignmentOrSyntaxError(Interpreter& in, int start, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    bool hasEquals = findOutsideQuotes(text, "=", static_cast<size_t>(start)) != std::string_view::npos;
    if (!hasEquals)
        return in.raise(ErrorId::SyntaxError);
    int pos = start;
    while (pos < end && !isLetter(in.buffer().at(pos)))
        ++pos;
    if (pos >= end)
        return in.raise(ErrorId::SyntaxError);
    in.run().statementCode = static_cast<int>(Stmt::Let);
    return handlerFor(static_cast<int>(Stmt::Let))(in, pos, end);
}

// The "?" of the stored entry becomes "PRINT " and the entry is taken into the buffer again.
int rewriteQuestionMark(Interpreter& in, int& pos, int& end)
{
    int entry = in.run().currentIndex;
    if (!ProgramStore::isValidEntry(entry))
        return in.raise(ErrorId::SyntaxError);
    if (rewriteQuestionMarks(in.program().mutableText(entry), QuestionMarks::FirstOnly) == 0)
        return in.raise(ErrorId::SyntaxError);
    TRY_BASIC(loadEntryIntoBuffer(in, entry));
    pos = 0;
    end = in.buffer().length();
    return 0;
}

constexpr int codeOf(Stmt code) { return static_cast<int>(code); }

// "#" after the keyword (blanks skipped) makes the file form of a statement: pos moves to the "#".
bool takesFileForm(const StatementBuffer& buffer, int& pos, int end)
{
    int at = skipBlanks(buffer, pos, end);
    if (buffer.at(at) != '#')
        return false;
    pos = at;
    return true;
}

// PRINT and LPRINT: PRINT #, and the USING forms.
int refinePrint(Interpreter& in, int code, int& pos, int end)
{
    auto& buffer = in.buffer();
    char next = buffer.at(pos);
    if (!(pos >= end || next == ' ' || next == '"' || next == '('))
        return in.raise(ErrorId::SyntaxError);
    if (takesFileForm(buffer, pos, end))
        return codeOf(Stmt::PrintFile);
    int at = skipBlanks(buffer, pos, end);
    if (at > pos && buffer.view().substr(0, static_cast<size_t>(end)).substr(static_cast<size_t>(at)).starts_with("USING")) {
        pos = at + 5;
        return codeOf(code == codeOf(Stmt::Print) ? Stmt::PrintUsing : Stmt::LprintUsing);
    }
    return code;
}

// LINE followed by INPUT anywhere after it is LINE INPUT (of a file when a "#" follows).
int refineLine(Interpreter& in, int code, int& pos, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto input = text.find("INPUT", static_cast<size_t>(pos));
    if (input == std::string_view::npos)
        return code;
    pos = static_cast<int>(input) + 5;
    if (text.find('#', input) != std::string_view::npos)
        return codeOf(Stmt::LineInputFile);
    in.run().lineInputMode = true;
    return codeOf(Stmt::Input);
}

int refineInput(Interpreter& in, int code, int& pos, int end)
{
    char next = in.buffer().at(pos);
    if (!in.run().lineInputMode && !(next == ' ' || next == '"')) {
        in.run().statementCode = 0;
        return in.raise(ErrorId::SyntaxError);
    }
    return takesFileForm(in.buffer(), pos, end) ? codeOf(Stmt::InputFile) : code;
}

// ON ERROR GOTO, ON KEY GOSUB and the other trap forms, written with or without blanks.
int refineOn(std::string_view text, int code)
{
    static constexpr std::pair<std::string_view, Stmt> kForms[] = {
        {"ONERRORGOTO", Stmt::OnErrorGoto}, {"ONKEYGOSUB", Stmt::OnKeyGosub},
        {"ONSTOPGOSUB", Stmt::OnStopGosub}, {"ONTIME$", Stmt::OnTimeGosub},
        {"ONPEN", Stmt::OnPenGosub},        {"ONCOM", Stmt::OnComGosub},
    };
    for (const auto& [prefix, form] : kForms) {
        if (startsWithoutBlanks(text, prefix))
            return codeOf(form);
    }
    return code;
}

// KEY, STOP and TIME$ followed by ON, OFF or STOP switch their event source.
int refineSwitch(Interpreter& in, std::string_view text, int code, int pos)
{
    int mode = switchMode(text, pos);
    if (mode == 0)
        return code;
    in.run().switchMode = mode;
    if (code == codeOf(Stmt::Key))
        return codeOf(Stmt::KeySwitch);
    return codeOf(code == codeOf(Stmt::Stop) ? Stmt::StopSwitch : Stmt::TimeSwitch);
}

// The checks and code changes that look past the keyword. Returns the (possibly new) code,
// or kFailed after raising.
int refine(Interpreter& in, int code, int& pos, int end)
{
    auto& buffer = in.buffer();
    auto text = buffer.view().substr(0, static_cast<size_t>(end));
    switch (static_cast<Stmt>(code)) {
    case Stmt::Print:
    case Stmt::Lprint:
        return refinePrint(in, code, pos, end);
    case Stmt::Line:
        return refineLine(in, code, pos, end);
    case Stmt::LineInput:
        if (takesFileForm(buffer, pos, end))
            return codeOf(Stmt::LineInputFile);
        in.run().lineInputMode = true;
        return codeOf(Stmt::Input);
    case Stmt::Input:
        return refineInput(in, code, pos, end);
    case Stmt::Write:
        return takesFileForm(buffer, pos, end) ? codeOf(Stmt::WriteFile) : code;
    case Stmt::On:
        return refineOn(text, code);
    case Stmt::Get:
    case Stmt::Put: {
        int at = skipBlanks(buffer, pos, end);
        if (buffer.at(at) != '@' && buffer.at(at) != '(')
            return code;
        return codeOf(code == codeOf(Stmt::Get) ? Stmt::GetImage : Stmt::PutImage);
    }
    case Stmt::Key:
    case Stmt::Stop:
    case Stmt::TimeStatement:
        return refineSwitch(in, text, code, pos);
    default:
        return code;
    }
}

Outcome storeLine(Interpreter& in, const std::string& numberText, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    auto outcome = in.program().enterLine(text, numberText);
    programEdited(in);
    switch (outcome) {
    case StoreOutcome::Stored:
        return kDone;
    case StoreOutcome::NumberOutOfRange:
        return in.raiseForLine(ErrorId::OutOfMemory, 0);
    case StoreOutcome::LineTooLong:
        return in.raiseForLine(ErrorId::LineBufferOverflow, leadingNumber(numberText));
    case StoreOutcome::StoreFull:
        return in.raiseForLine(ErrorId::OutOfMemory, 0);
    }
    return Failure {};
}

} // namespace

void storeNumberedLine(Interpreter& in)
{
    bool failed = executeStatement(in, 0, in.buffer().length()).failed();
    // The cursor moves on; no "OK" follows a stored line, but an error is shown at once.
    in.screen().NewLine();
    if (failed || in.error().isPending())
        showPrompt(in, PromptKind::Output);
}

Outcome executeFromKeyword(Interpreter& in, int begin, int end)
{
    auto& run = in.run();
    int pos = begin;
    for (int restarts = 0; restarts < 8; ++restarts) {
        auto recognized = keywordTable().recognizeStatement(in.buffer().view().substr(0, static_cast<size_t>(end)), pos);
        if (recognized.code == 0)
            return assignmentOrSyntaxError(in, pos, end);
        pos = recognized.position;
        int code = recognized.code;
        if (code == static_cast<int>(Stmt::Let))
            continue; // recognition starts again after LET
        if (code == static_cast<int>(Stmt::Question)) {
            TRY_BASIC(rewriteQuestionMark(in, pos, end));
            continue;
        }
        run.statementCode = code;
        code = refine(in, code, pos, end);
        if (code < 0)
            return Failure {};
        run.statementCode = code;
        return handlerFor(code)(in, pos, end);
    }
    return in.raise(ErrorId::SyntaxError);
}

Outcome executeStatement(Interpreter& in, int begin, int end)
{
    auto& run = in.run();
    auto& buffer = in.buffer();
    if (run.lastFlow == Flow::InputWait) {
        run.statementCode = static_cast<int>(Stmt::Input);
        return handlerFor(run.statementCode)(in, begin, end);
    }
    run.lineInputMode = false;
    int pos = skipBlanks(buffer, begin, end);
    if (isDigit(buffer.at(pos))) {
        int digits = pos;
        for (; pos < end && buffer.at(pos) != ' '; ++pos) {
            // A digit glued to the text after it, as in 10PRINT.
            if (!isDigit(buffer.at(pos)))
                return in.raiseWithoutLine(ErrorId::SyntaxErrorAtEntry);
        }
        if (run.runMode != RunMode::Running) {
            auto numberText = buffer.view().substr(static_cast<size_t>(digits), static_cast<size_t>(pos - digits));
            return storeLine(in, std::string(numberText), end);
        }
    }
    pos = skipBlanks(buffer, pos, end);
    if (buffer.at(pos) == '*') {
        run.statementCode = 0;
        return kDone;
    }
    if (buffer.at(pos) == '=')
        return assignmentOrSyntaxError(in, pos, end);
    return executeFromKeyword(in, pos, end);
}

} // namespace tessaly::core
