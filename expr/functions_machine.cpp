// The numeric functions that read the machine's state: the cursor, the graphics screen, files,
// memory and ports, the light pen, the last error; USR, and the names the evaluator reads itself.
#include <cmath>

#include "core/event_traps.h"
#include "core/interpreter.h"
#include "expr/builtin_functions.h"
#include "io/file_functions.h"
#include "io/memory.h"
#include "screen/statements.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

namespace {

int graphics(core::Interpreter& in, screen::GraphicsFunction function, const FunctionCall& call, Value& result)
{
    return screen::graphicsFunction(in, function, call.arguments, call.hasParentheses, result);
}

int memory(core::Interpreter& in, io::MemoryFunction function, const FunctionCall& call, Value& result)
{
    return io::memoryFunction(in, function, call.arguments, result);
}

// EOF, LOF and LOC of the file whose number is the first argument.
int fileAnswer(core::Interpreter& in, io::FileQuery query, const FunctionCall& call, Value& result)
{
    double number = 0;
    TRY_BASIC(numberOrZero(in, call.arguments, 0, number));
    double answer = 0;
    TRY_BASIC(io::queryFile(in, query, static_cast<int>(std::trunc(number)), answer));
    return numberResult(in, answer, result);
}

} // namespace

int cursorRow(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.screen().cursorRow(), result);
}

int cursorColumn(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.screen().cursorColumn(), result);
}

int pointColour(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::Point, call, result);
}

int mapCoordinate(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::Map, call, result);
}

int viewportCorner(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::View, call, result);
}

int windowCorner(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return graphics(in, screen::GraphicsFunction::Window, call, result);
}

int fileAtEnd(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return fileAnswer(in, io::FileQuery::AtEnd, call, result);
}

int fileLength(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return fileAnswer(in, io::FileQuery::Length, call, result);
}

int filePosition(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return fileAnswer(in, io::FileQuery::Position, call, result);
}

int memoryByte(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return memory(in, io::MemoryFunction::Peek, call, result);
}

int userMemoryBase(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return memory(in, io::MemoryFunction::Defuser, call, result);
}

int segmentBase(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return memory(in, io::MemoryFunction::Segptr, call, result);
}

int portByte(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return memory(in, io::MemoryFunction::Inp, call, result);
}

int penState(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double selector = 0;
    TRY_BASIC(numberOrZero(in, call.arguments, 0, selector));
    double state = 0;
    TRY_BASIC(core::penFunction(in, static_cast<int>(std::trunc(selector)), state));
    return numberResult(in, state, result);
}

int errorCode(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.error().code, result);
}

int errorLine(core::Interpreter& in, const FunctionCall&, Value& result)
{
    return numberResult(in, in.error().line, result);
}

// USR and USR0 .. USR9: the digit of the name picks the routine; the arguments are not used.
int userRoutine(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return io::usrFunction(in, call.name.size() == 4 ? call.name[3] - '0' : 0, result);
}

// FN with no name after it: its argument is read as a number, then the call is refused.
int userFunctionWithoutName(core::Interpreter& in, const FunctionCall& call, Value&)
{
    double x = 0;
    TRY_BASIC(numberOrZero(in, call.arguments, 0, x));
    return in.raise(ErrorId::IllegalFunctionCall);
}

// VARPTR takes its variable, not a value: the evaluator reads it (ArgumentShape::Variable).
int readByEvaluator(core::Interpreter& in, const FunctionCall&, Value&)
{
    return in.raise(ErrorId::IllegalFunctionCall);
}

} // namespace tessaly::expr::builtin
