// The common argument splitter of the screen statements: arguments separated by commas or
// semicolons, each evaluated on its own; an empty one leaves its default.
#include <cmath>

#include "core/interpreter.h"
#include "expr/evaluator.h"
#include "screen/statements.h"

namespace tessaly::screen {

int evaluateStatementArguments(core::Interpreter& in, int begin, int end, std::vector<expr::Value>& values)
{
    values.clear();
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    int depth = 0;
    bool quoted = false;
    size_t start = 0;
    for (size_t pos = 0; pos <= text.size(); ++pos) {
        char c = pos < text.size() ? text[pos] : ',';
        if (c == '"')
            quoted = !quoted;
        if (quoted)
            continue;
        if (c == '(')
            ++depth;
        else if (c == ')')
            --depth;
        if (depth != 0 || (c != ',' && c != ';'))
            continue;
        expr::Value value;
        TRY_BASIC(expr::evaluateText(in, text.substr(start, pos - start), value));
        values.push_back(std::move(value));
        start = pos + 1;
    }
    return 0;
}

int argumentOr(const std::vector<expr::Value>& values, size_t k, int omitted)
{
    if (k >= values.size() || values[k].empty || values[k].isString())
        return omitted;
    double x = std::trunc(values[k].number + 0.5);
    if (x > 2147483647.0 || x < -2147483647.0)
        return x > 0 ? 2147483647 : -2147483647;
    return static_cast<int>(x);
}

} // namespace tessaly::screen
