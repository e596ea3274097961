// The common argument splitter of the screen statements: arguments separated by commas or
// semicolons, each evaluated on its own; an empty one leaves its default.
#include <cmath>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "screen/statements.h"

namespace tessaly::screen {

int evaluateStatementArguments(core::Interpreter& in, int begin, int end, std::vector<expr::Value>& values)
{
    values.clear();
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    int failed = 0;
    core::splitAtTopLevel(text, [](char c) { return c == ',' || c == ';'; }, [&](std::string_view piece, char) {
        expr::Value value;
        if (expr::evaluateText(in, piece, value) < 0) {
            failed = core::kFailed;
            return false;
        }
        values.push_back(std::move(value));
        return true;
    });
    if (failed != 0)
        return failed;
    return 0;
}

int argumentOr(const std::vector<expr::Value>& values, size_t k, int omitted)
{
    if (k >= values.size() || values[k].empty || values[k].isString())
        return omitted;
    return wholeArgument(values[k].number);
}

int wholeArgument(double number)
{
    double x = core::roundHalfUpTruncated(number);
    if (x > 2147483647.0 || x < -2147483647.0)
        return x > 0 ? 2147483647 : -2147483647;
    return static_cast<int>(x);
}

} // namespace tessaly::screen
