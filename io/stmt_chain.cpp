// CHAIN and COMMON: a program hands over to another, keeping the variables named in COMMON.
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/outcome.h"
#include "core/preparation.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "expr/arrays.h"
#include "expr/variables.h"
#include "io/basic_path.h"
#include "io/chain_state.h"
#include "io/program_document.h"
#include "io/program_merge.h"

namespace tessaly::io {

using core::Flow;
using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

std::string upperTrimmed(std::string_view text) { return core::upperCased(core::trimBlanks(text)); }

// The names of every COMMON list run so far: scalars, and arrays (written with parentheses).
void commonNames(const ChainState& state, std::vector<std::string>& scalars, std::vector<std::string>& arrays)
{
    for (int k = 0; k < state.commonCount; ++k) {
        core::splitAtTopLevel(state.commonLists[static_cast<size_t>(k)], [](char c) { return c == ','; },
            [&](std::string_view piece, char) {
                std::string name = upperTrimmed(piece);
                auto paren = name.find('(');
                if (paren != std::string::npos)
                    arrays.push_back(core::trimBlanks(name.substr(0, paren)));
                else if (!name.empty())
                    scalars.push_back(name);
                return true;
            });
    }
}

// Where the chained program starts: the first line numbered number or above, or a label.
int startOf(core::Interpreter& in, const std::string& start)
{
    auto& prepared = in.prepared();
    if (start.find('*') != std::string::npos)
        return prepared.findLabel(core::trimBlanks(start.substr(start.find('*'))));
    int number = core::leadingNumber(start);
    auto& store = in.program();
    for (int line = 1; line <= store.count(); ++line) {
        if (store.numberAt(line) >= number)
            return prepared.findLine(store, store.numberAt(line));
    }
    return 0;
}

} // namespace

Outcome stmtCommon(core::Interpreter& in, int begin, int end)
{
    auto& state = in.chainState();
    if (state.commonCount >= kMaxCommonStatements)
        return in.raise(ErrorId::OutOfMemory);
    state.commonLists[static_cast<size_t>(state.commonCount++)] =
        std::string(in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin)));
    return kDone;
}

Outcome stmtChain(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    size_t quote = text.find('"');
    if (quote == std::string_view::npos)
        return in.raise(ErrorId::MissingOperand);
    bool merge = upperTrimmed(text.substr(0, quote)) == "MERGE";
    // The name runs to the next comma; then the start, ALL, and DELETE from-to.
    std::vector<std::string> fields;
    auto rest = text.substr(quote + 1);
    for (;;) {
        size_t comma = rest.find(',');
        fields.emplace_back(core::trimBlanks(rest.substr(0, comma)));
        if (comma == std::string_view::npos)
            break;
        rest.remove_prefix(comma + 1);
    }
    std::string name = fields[0];
    if (!name.empty() && name.back() == '"')
        name.pop_back();
    name = core::trimBlanks(name);
    if (name.empty())
        return in.raise(ErrorId::MissingOperand);
    std::string start = fields.size() > 1 ? fields[1] : std::string();
    bool keepAll = fields.size() > 2 && upperTrimmed(fields[2]) == "ALL";
    std::string deletion;
    for (size_t k = 2; k < fields.size(); ++k) {
        std::string field = upperTrimmed(fields[k]);
        if (core::trimBlanks(field.substr(0, field.find_first_of("0123456789"))) == "DELETE")
            deletion = field.substr(6);
    }

    std::string contents;
    TRY_BASIC(ReadFileForMerge(in, name, contents));
    std::vector<std::string> scalars;
    std::vector<std::string> arrays;
    commonNames(in.chainState(), scalars, arrays);
    if (!merge)
        in.program().clear();
    if (!keepAll) {
        // Open files would stay open here; the variables go, except those of COMMON.
        in.variables().resetKeeping(scalars);
        in.arrays().resetKeeping(arrays);
    }
    if (!deletion.empty()) {
        auto dash = deletion.find('-');
        int from = core::leadingNumber(deletion.substr(0, dash));
        int to = dash == std::string::npos ? from : core::leadingNumber(deletion.substr(dash + 1));
        if (from > to)
            return in.raise(ErrorId::SyntaxError);
        TRY_BASIC(core::deleteLines(in, from, to));
    }
    TRY_BASIC(MergeProgramText(in, contents, true));
    in.host().programLoaded(AbsolutePath(HostPath(name)));
    in.host().setDocumentModified(false);

    // The chained program runs at once, from its start.
    auto& run = in.run();
    in.stacks().reset();
    in.dataState().reset();
    run.runMode = core::RunMode::Running;
    run.currentIndex = 0;
    run.statementCode = static_cast<int>(core::Stmt::Run);
    TRY_BASIC(core::prepareProgram(in));
    if (start.empty())
        return kDone;
    int target = startOf(in, start);
    if (target <= 0) {
        if (start.find('*') != std::string::npos)
            return in.raise(ErrorId::UndefinedLabel);
        // No line at or after the number: the program ends at once.
        return core::endAsAtEnd(in);
    }
    run.currentIndex = target;
    return Outcome(Flow::RunFromEntry);
}

} // namespace tessaly::io
