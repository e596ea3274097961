// Handlers of the statements about values: LET and assignment, SWAP, DEFINT and its kin, CLEAR,
// DIM, ERASE, OPTION BASE, RANDOMIZE, DEF FN, the MID$ statement, DATE$ and TIME$.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

int stmtLet(core::Interpreter&, int begin, int end);        // expr/stmt_let.cpp
int stmtSwap(core::Interpreter&, int begin, int end);       // expr/stmt_let.cpp
int stmtDefint(core::Interpreter&, int begin, int end);     // expr/stmt_deftype.cpp
int stmtDefsng(core::Interpreter&, int begin, int end);
int stmtDefdbl(core::Interpreter&, int begin, int end);
int stmtDefstr(core::Interpreter&, int begin, int end);
int stmtClear(core::Interpreter&, int begin, int end);      // expr/stmt_deftype.cpp
int stmtDim(core::Interpreter&, int begin, int end);        // expr/stmt_dim.cpp
int stmtErase(core::Interpreter&, int begin, int end);
int stmtOptionBase(core::Interpreter&, int begin, int end);
int stmtRandomize(core::Interpreter&, int begin, int end);  // expr/stmt_randomize.cpp
int stmtDefFn(core::Interpreter&, int begin, int end);      // expr/stmt_def_fn.cpp
int stmtMid(core::Interpreter&, int begin, int end);        // expr/stmt_mid.cpp
int stmtDate(core::Interpreter&, int begin, int end);       // expr/stmt_date_time.cpp
int stmtTime(core::Interpreter&, int begin, int end);
int stmtPrint(core::Interpreter&, int begin, int end);      // expr/stmt_print.cpp
int stmtLprint(core::Interpreter&, int begin, int end);
int stmtWrite(core::Interpreter&, int begin, int end);      // expr/stmt_write.cpp
int stmtInput(core::Interpreter&, int begin, int end);      // expr/stmt_input.cpp
int stmtPrintUsing(core::Interpreter&, int begin, int end); // expr/stmt_print_using.cpp
int stmtLprintUsing(core::Interpreter&, int begin, int end);
// RANDOMIZE without a seed asks for it on the screen.
int randomizeFromKeyboard(core::Interpreter&);
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
