// PEEK, DEFUSER, SEGPTR, INP and USR: the functions of the memory and the ports, handlers of the
// function lists defined beside the memory they read.
#include <cmath>

#include "core/interpreter.h"
#include "expr/builtin_functions.h"
#include "io/memory.h"
#include "io/user_memory.h"

namespace tessaly::expr::builtin {

namespace {

using core::ErrorId;

void answer(double number, Value& result)
{
    result = Value::makeNumber(number, NumberForm::Computed16);
}

int argument(core::Interpreter& in, const std::vector<Value>& args, double& x)
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

int memoryByte(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double x = 0;
    TRY_BASIC(argument(in, call.arguments, x));
    uint8_t* byte = nullptr;
    TRY_BASIC(io::reachBytes(in, in.memory().segmentBase + static_cast<int64_t>(x), 1, false, byte));
    answer(*byte, result);
    return 0;
}

int userMemoryBase(core::Interpreter&, const FunctionCall&, Value& result)
{
    answer(io::kUserMemoryBase, result);
    return 0;
}

int segmentBase(core::Interpreter& in, const FunctionCall&, Value& result)
{
    // The base that DEF SEG set, as an unsigned 32-bit number.
    answer(static_cast<uint32_t>(in.memory().segmentBase), result);
    return 0;
}

int portByte(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double x = 0;
    TRY_BASIC(argument(in, call.arguments, x));
    if (!in.host().portsAvailable())
        return in.raise(ErrorId::IllegalFunctionCall);
    auto port = static_cast<uint16_t>(static_cast<int64_t>(x) & 0xFFFF);
    answer(in.host().portIn(port), result);
    return 0;
}

// USR and USR0 .. USR9 (the digit of the name picks the routine; the arguments are not used) call
// machine code at the address DEF USR gave. This system runs no machine code: once the address is
// defined the call is refused with "Illegal function call in ", as CALL is.
int userRoutine(core::Interpreter& in, const FunctionCall& call, Value&)
{
    int digit = call.name.size() == 4 ? call.name[3] - '0' : 0;
    if (digit < 0 || digit > 9 || in.usrAddresses()[static_cast<size_t>(digit)] == 1)
        return in.raise(ErrorId::UndefinedUserFunction);
    return in.raise(ErrorId::IllegalFunctionCall);
}

} // namespace tessaly::expr::builtin
