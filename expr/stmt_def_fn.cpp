// DEF FN: keeps a function's definition text for FN calls (expr/user_functions.cpp).
#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "expr/function_state.h"
#include "expr/statements.h"
#include "expr/variables.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

Outcome stmtDefFn(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto stop = text.find_first_of("(=");
    if (stop == std::string_view::npos)
        return in.raise(core::ErrorId::SyntaxError);
    std::string name = core::upperCased(core::withoutBytes(text.substr(0, stop), " "));
    if (name.empty() || name[0] < 'A' || name[0] > 'Z')
        return in.raise(core::ErrorId::SyntaxError);
    if (text.find('=', stop) == std::string_view::npos)
        return in.raise(core::ErrorId::SyntaxError);
    UserFunction function {name, std::string(text.substr(stop)), in.variables().typeOfName(name)};
    auto& functions = in.functionState().userFunctions;
    for (auto& existing : functions) {
        if (existing.name == name) {
            existing = std::move(function);
            return kDone;
        }
    }
    if (static_cast<int>(functions.size()) >= kMaxUserFunctions)
        return in.raise(core::ErrorId::OutOfMemory);
    functions.push_back(std::move(function));
    return kDone;
}

} // namespace tessaly::expr
