// LOAD, SAVE and MERGE: programs read from and written to files by statements.
#include <string>

#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/outcome.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "io/basic_path.h"
#include "io/device_transfer.h"
#include "io/program_document.h"
#include "io/program_formats.h"
#include "io/program_merge.h"
#include "screen/text_screen.h"

namespace tessaly::io {

using core::Failure;
using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// The file name of LOAD and SAVE: the text before the first comma, evaluated to a string.
int evaluateFileName(core::Interpreter& in, std::string_view argument, std::string& name)
{
    expr::Value value;
    TRY_BASIC(expr::evaluateText(in, argument, value));
    if (value.empty)
        return in.raise(ErrorId::SyntaxError);
    if (!value.isString())
        return in.raise(ErrorId::TypeMismatch);
    name = ProgramFileName(value.text);
    if (name.empty())
        return in.raise(ErrorId::SyntaxError);
    return 0;
}

// Programs go through a serial port both ways, and to a printer port.
bool namesTransferDevice(std::string_view name, bool save)
{
    return NamesDevice(name, "COM") || (save && NamesDevice(name, "LPT"));
}

} // namespace

Outcome stmtLoad(core::Interpreter& in, int begin, int end)
{
    bool startedByRun = in.run().loadStartedByRun;
    in.run().loadStartedByRun = false;
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    size_t comma = core::findAtTopLevel(argument, 0, [](char c, int depth) { return depth == 0 && c == ','; });
    bool runAfter = comma != std::string_view::npos && argument.find('R', comma) != std::string_view::npos;
    std::string name;
    TRY_BASIC(evaluateFileName(in, argument.substr(0, comma), name));
    if (namesTransferDevice(name, false)) {
        TRY_BASIC(loadThroughDevice(in, name));
        return kDone;
    }
    // The full path is taken first: loading makes the program's folder the current one.
    std::string path = AbsolutePath(HostPath(WithProgramExtension(name)));
    LoadOutcome outcome = LoadProgramDocument(in, path, RaiseAt::Statement);
    if (outcome == LoadOutcome::Failed)
        return Failure {};
    in.host().programLoaded(path);
    if (outcome == LoadOutcome::Cut)
        in.host().setDocumentModified(true);
    if (!startedByRun) {
        // The screen starts afresh, and the prompt takes its first row.
        in.resetScreen();
        in.run().printNewline = true;
    }
    // A file longer than LOAD reads keeps its first 65,535 bytes in the program, but is not run:
    // as for any program that does not fit, the load ends with "Out of memory in ".
    if (outcome == LoadOutcome::Cut)
        return in.raise(ErrorId::OutOfMemory);
    if (runAfter || startedByRun)
        return core::beginRun(in, 0, {});
    return core::endAsAtEnd(in);
}

Outcome stmtSave(core::Interpreter& in, int begin, int end)
{
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    size_t comma = core::findAtTopLevel(argument, 0, [](char c, int depth) { return depth == 0 && c == ','; });
    // Without an option the program is written as line records; ",A" writes plain text.
    uint8_t format = static_cast<uint8_t>(ProgramFileFormat::LineRecords);
    if (comma != std::string_view::npos) {
        auto option = argument.substr(comma + 1);
        if (option.find('A') == std::string_view::npos && option.find('a') == std::string_view::npos)
            return in.raise(ErrorId::SyntaxError);
        format = static_cast<uint8_t>(ProgramFileFormat::Text);
    }
    std::string name;
    TRY_BASIC(evaluateFileName(in, argument.substr(0, comma), name));
    if (namesTransferDevice(name, true)) {
        TRY_BASIC(saveThroughDevice(in, name));
        return kDone;
    }
    in.programFormats().saveFormat = format;
    bool tooLongToLoad = false;
    if (!SaveProgramDocument(in, HostPath(WithProgramExtension(name)), RaiseAt::Statement, &tooLongToLoad))
        return Failure {};
    // The file is written whole, but LOAD would cut it: the user is told at once, as a printed
    // line that does not stop the program.
    if (tooLongToLoad) {
        in.screen().Print(kSavedTooLongToLoad);
        in.screen().NewLine();
    }
    return kDone;
}

Outcome stmtMerge(core::Interpreter& in, int begin, int end)
{
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    std::string name = core::trimBlanks(argument.substr(0, argument.find('\'')));
    if (!name.empty() && name.front() == '"')
        name.erase(0, 1);
    if (!name.empty() && name.back() == '"')
        name.pop_back();
    if (name.empty())
        return in.raise(ErrorId::MissingOperand);
    std::string contents;
    TRY_BASIC(ReadFileForMerge(in, name, contents));
    TRY_BASIC(MergeProgramText(in, contents, false));
    return core::endAsAtEnd(in);
}

} // namespace tessaly::io
