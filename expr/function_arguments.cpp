// The argument readers and result makers that the built-in function handlers share.
#include <cmath>

#include "core/interpreter.h"
#include "expr/builtin_functions.h"
#include "expr/number_text.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

int numberOrZero(core::Interpreter& in, const std::vector<Value>& args, size_t k, double& x)
{
    if (k >= args.size() || args[k].empty) {
        x = 0;
        return 0;
    }
    if (args[k].isString())
        return in.raise(ErrorId::TypeMismatch);
    x = args[k].number;
    return 0;
}

int requiredNumber(core::Interpreter& in, const std::vector<Value>& args, size_t k, double& x)
{
    if (k >= args.size() || args[k].empty)
        return in.raise(ErrorId::SyntaxError);
    if (args[k].isString())
        return in.raise(ErrorId::TypeMismatch);
    x = args[k].number;
    return 0;
}

int requiredString(core::Interpreter& in, const std::vector<Value>& args, size_t k, const std::string*& text)
{
    if (k >= args.size() || !args[k].isString())
        return in.raise(ErrorId::SyntaxError);
    text = &args[k].text;
    return 0;
}

int numberResult(core::Interpreter& in, double x, Value& result)
{
    if (!std::isfinite(x))
        return in.raise(ErrorId::Overflow);
    result.setNumber(RoundToDigits(x, 16), NumberForm::Computed16, ValueType::Double);
    return 0;
}

int numberResult(core::Interpreter& in, double x, Number& result)
{
    if (!std::isfinite(x))
        return in.raise(ErrorId::Overflow);
    result = {RoundToDigits(x, 16), ValueType::Double, NumberForm::Computed16};
    return 0;
}

int stringResult(std::string bytes, Value& result)
{
    result = Value::makeString(std::move(bytes));
    return 0;
}

} // namespace tessaly::expr::builtin
