// PEEK, DEFUSER, SEGPTR, INP and USR: the functions of the memory and the ports.
#include <cmath>

#include "core/interpreter.h"
#include "io/memory.h"
#include "io/user_memory.h"

namespace tessaly::io {

namespace {

using core::ErrorId;

void answer(double number, expr::Value& result)
{
    result = expr::Value::makeNumber(number, expr::NumberForm::Computed16);
}

int argument(core::Interpreter& in, const std::vector<expr::Value>& args, double& x)
{
    if (args.empty() || args[0].empty)
        return in.raise(ErrorId::SyntaxError);
    if (args[0].isString())
        return in.raise(ErrorId::TypeMismatch);
    x = std::trunc(args[0].number);
    if (!(x > -4294967296.0 && x < 4294967296.0))
        return in.raise(ErrorId::IllegalFunctionCall);
    return 0;
}

} // namespace

int memoryFunction(core::Interpreter& in, MemoryFunction function, const std::vector<expr::Value>& args,
    expr::Value& result)
{
    double x = 0;
    switch (function) {
    case MemoryFunction::Peek: {
        TRY_BASIC(argument(in, args, x));
        uint8_t* byte = nullptr;
        TRY_BASIC(reachBytes(in, in.memory().segmentBase + static_cast<int64_t>(x), 1, false, byte));
        answer(*byte, result);
        return 0;
    }
    case MemoryFunction::Defuser:
        answer(kUserMemoryBase, result);
        return 0;
    case MemoryFunction::Segptr:
        // The base that DEF SEG set, as an unsigned 32-bit number.
        answer(static_cast<uint32_t>(in.memory().segmentBase), result);
        return 0;
    case MemoryFunction::Inp: {
        TRY_BASIC(argument(in, args, x));
        if (!in.host().portsAvailable())
            return in.raise(ErrorId::IllegalFunctionCall);
        auto port = static_cast<uint16_t>(static_cast<int64_t>(x) & 0xFFFF);
        answer(in.host().portIn(port), result);
        return 0;
    }
    }
    return in.raise(ErrorId::IllegalFunctionCall);
}

// USR calls machine code at the address DEF USR gave. This system runs no machine code: once the
// address is defined the call is refused with "Illegal function call in ", as CALL is.
int usrFunction(core::Interpreter& in, int digit, expr::Value& result)
{
    (void)result;
    if (digit < 0 || digit > 9 || in.usrAddresses()[static_cast<size_t>(digit)] == 1)
        return in.raise(ErrorId::UndefinedUserFunction);
    return in.raise(ErrorId::IllegalFunctionCall);
}

} // namespace tessaly::io
