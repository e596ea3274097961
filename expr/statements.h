// What the statements about values share: the handlers other statements run (LET for INPUT and
// PEN, PRINT and WRITE for their file forms), targets of assignments, RANDOMIZE's question.
#pragma once

#include "core/outcome.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

core::Outcome stmtLet(core::Interpreter& interpreter, int begin, int end);        // expr/stmt_let.cpp
core::Outcome stmtPrint(core::Interpreter& interpreter, int begin, int end);      // expr/stmt_print.cpp
core::Outcome stmtLprint(core::Interpreter& interpreter, int begin, int end);
core::Outcome stmtWrite(core::Interpreter& interpreter, int begin, int end);      // expr/stmt_write.cpp
core::Outcome stmtInput(core::Interpreter& interpreter, int begin, int end);      // expr/stmt_input.cpp
core::Outcome stmtPrintUsing(core::Interpreter& interpreter, int begin, int end); // expr/stmt_print_using.cpp
core::Outcome stmtLprintUsing(core::Interpreter& interpreter, int begin, int end);
// RANDOMIZE without a seed asks for it on the screen.
core::Outcome randomizeFromKeyboard(core::Interpreter& interpreter);

// A variable or array element written in a statement: its name and, for an element, its subscripts.
struct Target {
    std::string name;
    std::vector<int32_t> subscripts;
    bool isElement = false;
    ValueType type = ValueType::Single;
};

enum class StoreStatus : uint8_t;
enum class ArrayStatus : uint8_t;

// The errors of a store that failed: Ok gives 0, the others raise their error (kFailed). Ok is the
// zero of both statuses, told apart here without a call (a store is part of most statements).
int raiseStoreError(core::Interpreter& interpreter, StoreStatus status);
int raiseArrayError(core::Interpreter& interpreter, ArrayStatus status);
inline int storeStatusError(core::Interpreter& interpreter, StoreStatus status)
{
    return status == StoreStatus {} ? 0 : raiseStoreError(interpreter, status);
}
inline int arrayStatusError(core::Interpreter& interpreter, ArrayStatus status)
{
    return status == ArrayStatus {} ? 0 : raiseArrayError(interpreter, status);
}

// Reads a target (name, optional subscripts in parentheses) from the statement buffer at pos;
// pos moves past it. Returns 0 or kFailed.
int parseTarget(core::Interpreter& in, int& pos, int end, Target& target);
int readTarget(core::Interpreter& in, const Target& target, Value& value);
// A numeric target's number as its cell holds it (NEXT steps a single from there).
int readTargetStored(core::Interpreter& in, const Target& target, double& stored);
int assignTarget(core::Interpreter& in, const Target& target, const Value& value);

// Empties variables, arrays, DEF types and OPTION BASE, and restarts the random numbers.
void resetVariables(core::Interpreter& in);

} // namespace tessaly::expr
