// KEY n, text sets a function-key text; KEY LIST writes the ten texts on the screen.
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/outcome.h"
#include "core/shift_jis.h"
#include "screen/function_keys.h"
#include "screen/statements.h"
#include "screen/text_screen.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

Outcome stmtKeyList(core::Interpreter& in, int, int)
{
    auto& screen = in.screen();
    screen.setCursorSwitch(1);
    screen.setCursor(0, screen.cursorRow());
    for (const auto& text : in.functionKeys().texts) {
        // A long text runs over several rows, 80 bytes each (81 when the 80th starts a double-byte character).
        std::vector<std::string_view> pieces;
        std::string_view rest = text;
        do {
            size_t take = std::min<size_t>(80, rest.size());
            if (take == 80 && rest.size() > 80 && (rest[79] == '\0' || core::IsLeadByte(static_cast<uint8_t>(rest[79]))))
                take = 81;
            pieces.push_back(rest.substr(0, take));
            rest.remove_prefix(take);
        } while (!rest.empty());
        screen.WriteLinkedRows(pieces);
    }
    screen.RedrawRows();
    in.run().statementEcho = 0;
    return kDone;
}

Outcome stmtKey(core::Interpreter& in, int begin, int end)
{
    // KEY LIST is recognised as KEY; its own handler takes it from here.
    auto rest = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto first = rest.find_first_not_of(' ');
    if (first != std::string_view::npos && rest.substr(first).starts_with("LIST")) {
        in.run().statementCode = static_cast<int>(core::Stmt::KeyList);
        return stmtKeyList(in, begin + static_cast<int>(first) + 4, end);
    }
    std::vector<expr::Value> values;
    TRY_BASIC(evaluateStatementArguments(in, begin, end, values));
    int n = argumentOr(values, 0, -1);
    if (n < 1 || n > 10 || values.size() < 2 || !values[1].isString())
        return in.raise(core::ErrorId::SyntaxError);
    in.functionKeys().texts[static_cast<size_t>(n - 1)] = values[1].text;
    return kDone;
}

} // namespace tessaly::screen
