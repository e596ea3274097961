// OUT port, value: a byte to one of the machine's I/O ports, through the host.
#include <cmath>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "io/memory.h"

namespace tessaly::io {

using core::kDone;
using core::Outcome;

// The host decides whether ports can be reached (the window: the machine's ports where the system
// grants access; the headless runner and tests: a simulated port space). Where it grants none, OUT
// and INP raise "Illegal function call in ": a program that drives hardware cannot go on sensibly
// without it.
Outcome stmtOut(core::Interpreter& in, int begin, int end)
{
    if (!in.host().portsAvailable())
        return in.raise(core::ErrorId::IllegalFunctionCall);
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto comma = core::findAtTopLevel(text, 0, [](char c, int depth) { return depth == 0 && c == ','; });
    if (comma == std::string_view::npos)
        return in.raise(core::ErrorId::IllegalFunctionCall);
    expr::Value port;
    expr::Value value;
    TRY_BASIC(expr::evaluateText(in, text.substr(0, comma), port));
    TRY_BASIC(expr::evaluateText(in, text.substr(comma + 1), value));
    if (port.isString() || value.isString())
        return in.raise(core::ErrorId::TypeMismatch);
    if (port.empty || value.empty)
        return in.raise(core::ErrorId::SyntaxError);
    double number = std::trunc(port.number);
    // Ports run from 0 to 32,767.
    if (!(number >= 0 && number < 32768))
        return in.raise(core::ErrorId::IllegalFunctionCall);
    in.host().portOut(static_cast<uint16_t>(number), static_cast<uint8_t>(expr::integerOf(value) & 0xFF));
    return kDone;
}

} // namespace tessaly::io
