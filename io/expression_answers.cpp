// The functions of expressions that files answer: EOF, LOF and LOC (handlers of the function lists),
// VARPTR's address and the bytes INPUT$ takes. They are defined here, beside the state they read;
// expressions declare them. PEEK, DEFUSER, SEGPTR, INP and USR are io/memory_functions.cpp.
#include <cmath>

#include "core/interpreter.h"
#include "expr/builtin_functions.h"
#include "io/file_functions.h"
#include "io/file_table.h"
#include "io/memory.h"

namespace tessaly::expr::builtin {

namespace {

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

int addressOfVariable(core::Interpreter& in, std::string_view name, bool isArray, const std::vector<int32_t>& subscripts,
    uint32_t& address)
{
    return io::variableAddress(in, name, isArray, subscripts, address);
}

int bytesOfFile(core::Interpreter& in, double file, size_t count, std::string& taken)
{
    file = std::trunc(file);
    int number = file >= 0 && file <= io::kHighestFileNumber ? static_cast<int>(file) : 0;
    return io::readFileBytes(in, number, count, taken);
}

int bytesTyped(core::Interpreter& in, size_t count, std::string& taken)
{
    return io::takeTypedKeys(in, count, taken);
}

} // namespace tessaly::expr::builtin
