#include "app/desktop/list_commands.h"

#include <QApplication>
#include <QClipboard>
#include <algorithm>
#include <string>

#include "app/desktop/document_prompts.h"
#include "core/interpreter.h"
#include "core/program_store.h"
#include "core/shift_jis.h"
#include "core/statements.h"
#include "io/program_text.h"

namespace tessaly::desktop {

namespace {

constexpr qsizetype kListEditCharacters = 65536;

void toClipboard(const std::string& shiftJis)
{
    QApplication::clipboard()->setText(QString::fromStdString(core::ShiftJisToUtf8(shiftJis)));
}

void warnIfOver64k(DocumentPrompts& prompts, const std::string& text)
{
    if (text.size() > io::kProgramTextWarningSize)
        prompts.tell(QString::fromLatin1(io::kProgramSizeOver64k));
}

// The program is about to change: a run stops first, as BREAK stops it, so that no statement runs
// on lines that have moved.
void stopRun(core::Interpreter& in)
{
    if (in.isBusy())
        in.breakProgram();
}

// Every stored line as it stands, without the CR LF that ProgramText gives a line lacking it.
std::string storedLines(const core::ProgramStore& store)
{
    std::string text;
    for (int entry = 1; entry <= store.count(); ++entry)
        text += store.textAt(entry);
    return text;
}

// The clipboard's text in Shift-JIS. Characters without a Shift-JIS form are pasted as "?", and
// the user is told how many there were; so are lines cut at the line limit.
std::string clipboardShiftJis(DocumentPrompts& prompts, size_t& cutLines)
{
    std::string utf8 = QApplication::clipboard()->text().toStdString();
    std::string text = core::Utf8ToShiftJis(utf8);
    // "?" converts to itself and is no byte of a double-byte character: the "?" added are the
    // characters that did not convert.
    auto marks = [](const std::string& s) { return std::count(s.begin(), s.end(), '?'); };
    auto unconverted = marks(text) - marks(utf8);
    if (unconverted > 0)
        prompts.tell(QStringLiteral("Shift-JIS にない文字 %1 個を ? として貼り付けました。").arg(unconverted));
    cutLines = 0;
    for (const auto& line : io::TextLines(text))
        cutLines += line.size() == io::kTextLineBytes ? 1 : 0;
    return text;
}

} // namespace

void copyAllList(core::Interpreter& in, DocumentPrompts& prompts)
{
    std::string text = io::ProgramText(in.program());
    warnIfOver64k(prompts, text);
    toClipboard(text);
}

void cutAllList(core::Interpreter& in, DocumentPrompts& prompts)
{
    if (!prompts.confirm(QStringLiteral("全リストの切り取り・クリップボードにコピーをします。")))
        return;
    stopRun(in);
    toClipboard(storedLines(in.program()));
    core::forgetProgram(in);
    core::programEdited(in);
}

void deleteAllList(core::Interpreter& in, DocumentPrompts& prompts)
{
    if (!prompts.confirm(QStringLiteral("全リストの削除をします。")))
        return;
    stopRun(in);
    core::programEdited(in);
    core::forgetProgram(in);
}

void pasteList(core::Interpreter& in, DocumentPrompts& prompts, PasteKind kind)
{
    size_t cutLines = 0;
    std::string text = clipboardShiftJis(prompts, cutLines);
    warnIfOver64k(prompts, text);
    stopRun(in);
    core::programEdited(in);
    if (kind == PasteKind::ReplaceAll)
        core::forgetProgram(in);
    io::EnterProgramLines(in, io::TextLines(text), io::LineSource::Paste);
    if (cutLines > 0)
        prompts.tell(QStringLiteral("%1 バイトを超える %2 行は %1 バイトまでにしました。").arg(io::kTextLineBytes).arg(cutLines));
}

void rangeOfList(core::Interpreter& in, DocumentPrompts& prompts, RangeCommand command)
{
    static constexpr const char* kCaptions[] = {
        "リストの部分コピー", "リストの切り取り・クリップボードにコピーをします。", "リストの削除をします。"};
    QString caption = QString::fromUtf8(kCaptions[static_cast<int>(command)]);
    int start = 1;
    int end = core::kHighestLineNumber;
    for (;;) {
        if (!prompts.lineRange(caption, start, end))
            return;
        if (start <= end)
            break;
        prompts.tell(QStringLiteral("Begin > End , let re_input."));
    }
    if (command == RangeCommand::Copy)
        QApplication::clipboard()->clear();
    if (command != RangeCommand::Delete)
        toClipboard(io::LinesInRange(in.program(), start, end));
    if (command == RangeCommand::Copy)
        return;
    stopRun(in);
    if (core::deleteLines(in, start, end) < 0)
        in.showPendingError();
}

void editList(core::Interpreter& in, DocumentPrompts& prompts)
{
    stopRun(in);
    for (;;) {
        std::string text = io::ProgramText(in.program());
        warnIfOver64k(prompts, text);
        QString listing = QString::fromStdString(core::ShiftJisToUtf8(text));
        ListEditMode mode = ListEditMode::Replace;
        ListEditAnswer answer = prompts.editListing(listing, mode);
        if (answer == ListEditAnswer::Cancel)
            return;
        // The field holds at most 65,536 characters, as the dialog's edit field does.
        if (listing.size() > kListEditCharacters) {
            listing.truncate(kListEditCharacters);
            prompts.tell(QStringLiteral("%1 文字を超えた分は取り込みませんでした。").arg(kListEditCharacters));
        }
        core::programEdited(in);
        if (mode == ListEditMode::Replace)
            core::forgetProgram(in);
        if (!io::EnterProgramLines(in, io::TextLines(core::Utf8ToShiftJis(listing.toStdString())), io::LineSource::ListDialog))
            return;
        if (answer == ListEditAnswer::Ok)
            return;
        if (answer == ListEditAnswer::Renum)
            in.runStatementCommand("RENUM 10");
    }
}

} // namespace tessaly::desktop
