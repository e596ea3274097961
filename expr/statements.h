// Handlers of the statements about values: LET and assignment, SWAP, DEFINT and its kin, CLEAR,
// DIM, ERASE, OPTION BASE, RANDOMIZE, DEF FN, the MID$ statement, DATE$ and TIME$.
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

using core::Failure;
using core::Flow;
using core::kDone;
using core::Outcome;

Outcome stmtLet(core::Interpreter&, int begin, int end);        // expr/stmt_let.cpp
Outcome stmtSwap(core::Interpreter&, int begin, int end);       // expr/stmt_let.cpp
Outcome stmtDefint(core::Interpreter&, int begin, int end);     // expr/stmt_deftype.cpp
Outcome stmtDefsng(core::Interpreter&, int begin, int end);
Outcome stmtDefdbl(core::Interpreter&, int begin, int end);
Outcome stmtDefstr(core::Interpreter&, int begin, int end);
Outcome stmtClear(core::Interpreter&, int begin, int end);      // expr/stmt_deftype.cpp
Outcome stmtDim(core::Interpreter&, int begin, int end);        // expr/stmt_dim.cpp
Outcome stmtErase(core::Interpreter&, int begin, int end);
Outcome stmtOptionBase(core::Interpreter&, int begin, int end);
Outcome stmtRandomize(core::Interpreter&, int begin, int end);  // expr/stmt_randomize.cpp
Outcome stmtDefFn(core::Interpreter&, int begin, int end);      // expr/stmt_def_fn.cpp
Outcome stmtMid(core::Interpreter&, int begin, int end);        // expr/stmt_mid.cpp
Outcome stmtDate(core::Interpreter&, int begin, int end);       // expr/stmt_date_time.cpp
Outcome stmtTime(core::Interpreter&, int begin, int end);
Outcome stmtPrint(core::Interpreter&, int begin, int end);      // expr/stmt_print.cpp
Outcome stmtLprint(core::Interpreter&, int begin, int end);
Outcome stmtWrite(core::Interpreter&, int begin, int end);      // expr/stmt_write.cpp
Outcome stmtInput(core::Interpreter&, int begin, int end);      // expr/stmt_input.cpp
Outcome stmtPrintUsing(core::Interpreter&, int begin, int end); // expr/stmt_print_using.cpp
Outcome stmtLprintUsing(core::Interpreter&, int begin, int end);
// RANDOMIZE without a seed asks for it on the screen.
Outcome randomizeFromKeyboard(core::Interpreter&);
// The reply to a waiting INPUT, LINE INPUT or RANDOMIZE when Enter has gathered enteredLine on the
// cursor row: the logical line from the cell where the prompt ended, trimmed of blanks.
std::string inputReply(core::Interpreter& in, std::string_view enteredLine);

// A variable or array element written in a statement: its name and, for an element, its subscripts.
struct Target {
    std::string name;
    std::vector<int32_t> subscripts;
    bool isElement = false;
    ValueType type = ValueType::Single;
};

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
