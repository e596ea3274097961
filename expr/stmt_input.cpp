// INPUT and LINE INPUT from the keyboard, and RANDOMIZE without a seed: the first half prints the
// prompt and waits; the second half splits the typed line and assigns the fields.
#include <algorithm>
#include <string>

#include "core/outcome.h"
#include "core/interpreter.h"
#include "core/text_scan.h"
#include "core/keyword_table.h"
#include "core/run_state.h"
#include "expr/evaluator.h"
#include "expr/statements.h"
#include "expr/variables.h"
#include "expr/function_state.h"
#include "expr/input_state.h"

namespace tessaly::expr {

using core::Flow;
using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

constexpr std::string_view kSeedPrompt = "Random number seed (-32768 to 32768)? ";

// The prompt is printed by the statement itself rather than after it, so that the cell where it
// ends, where the reply starts, can be noted.
Outcome startWaiting(core::Interpreter& in)
{
    showInputPrompt(in);
    return Outcome(Flow::InputWait);
}

// The variable list: names separated by commas at the top level of parentheses.
std::vector<std::string> variableList(std::string_view text)
{
    std::vector<std::string> names;
    core::splitAtTopLevel(text, [](char c) { return c == ','; }, [&](std::string_view piece, char) {
        auto name = core::trimBlanks(piece);
        if (!name.empty())
            names.push_back(name);
        return true;
    });
    return names;
}

std::vector<std::string> splitFields(std::string_view text, size_t count)
{
    std::vector<std::string> fields(count);
    // The fields are the pieces between the commas outside quotes, quotes and all; those past
    // count are dropped.
    size_t start = 0;
    for (size_t field = 0; field < count; ++field) {
        size_t comma = core::findOutsideQuotes(text, ",", start);
        fields[field].assign(text.substr(start, comma == std::string_view::npos ? comma : comma - start));
        if (comma == std::string_view::npos)
            break;
        start = comma + 1;
    }
    return fields;
}

int assignField(core::Interpreter& in, const std::string& name, std::string field)
{
    auto type = in.variables().typeOfName(name);
    field = core::trimBlanks(field);
    if (type == ValueType::String) {
        if (field.empty() || field.front() != '"')
            field.insert(0, 1, '"');
        if (field.size() < 2 || field.back() != '"')
            field += '"';
    } else if (field.empty()) {
        field.assign(1, '0');
    }
    if (!in.buffer().assign(name + "=" + field))
        return in.raise(ErrorId::LineBufferOverflow);
    return stmtLet(in, 0, in.buffer().length()).failed() ? core::kFailed : 0;
}

Outcome completeInput(core::Interpreter& in)
{
    auto& state = in.inputState();
    auto& run = in.run();
    // Line entry has left the reply, cut out of the screen, as the output text.
    std::string typed = std::move(run.outputText);
    run.outputText.clear();
    endInputReply(in);
    // The reply ended the row: what PRINT left on it no longer counts for the next PRINT.
    run.pendingPrintText.clear();
    // The statement is finished: the loop must not wait for it again.
    run.statementCode = 0;
    if (state.kind == InputKind::RandomSeed) {
        Value value;
        if (evaluateText(in, typed, value) < 0 || value.isString() || value.empty) {
            in.error().clear();
            run.statementCode = static_cast<int>(core::Stmt::Input);
            return startWaiting(in);
        }
        int32_t seed = integerOf(value);
        if (seed < -32768 || seed > 32767) {
            run.statementCode = static_cast<int>(core::Stmt::Input);
            return startWaiting(in);
        }
        in.functionState().random.randomize(seed);
        return kDone;
    }
    std::vector<std::string> fields;
    if (state.kind == InputKind::WholeLine)
        fields.assign(state.variables.size(), std::string());
    if (state.kind == InputKind::WholeLine && !fields.empty())
        fields[0] = typed;
    else
        fields = splitFields(typed, state.variables.size());
    for (size_t k = 0; k < state.variables.size(); ++k)
        TRY_BASIC(assignField(in, state.variables[k], fields[k]));
    return kDone;
}

} // namespace

Outcome stmtInput(core::Interpreter& in, int begin, int end)
{
    if (in.run().lastFlow == core::Flow::InputWait)
        return completeInput(in);
    auto& state = in.inputState();
    state = {};
    state.kind = in.run().lineInputMode ? InputKind::WholeLine : InputKind::Fields;
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto first = text.find_first_not_of(' ');
    bool question = true;
    if (first != std::string_view::npos && text[first] == '"') {
        auto close = text.find('"', first + 1);
        if (close == std::string_view::npos)
            return in.raise(ErrorId::SyntaxError);
        state.prompt.assign(text.substr(first + 1, close - first - 1));
        auto after = text.find_first_not_of(' ', close + 1);
        if (after == std::string_view::npos || (text[after] != ';' && text[after] != ','))
            return in.raise(ErrorId::SyntaxError);
        question = text[after] == ';';
        text = text.substr(after + 1);
    }
    if (question)
        state.prompt += "? ";
    state.variables = variableList(text);
    if (state.variables.empty())
        return in.raise(ErrorId::SyntaxError);
    for (const auto& name : state.variables) {
        if (!((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= 'a' && name[0] <= 'z')))
            return in.raise(ErrorId::SyntaxError);
    }
    return startWaiting(in);
}

Outcome randomizeFromKeyboard(core::Interpreter& in)
{
    auto& state = in.inputState();
    state = {};
    state.kind = InputKind::RandomSeed;
    state.prompt = std::string(kSeedPrompt);
    in.run().statementCode = static_cast<int>(core::Stmt::Input);
    return startWaiting(in);
}

} // namespace tessaly::expr
