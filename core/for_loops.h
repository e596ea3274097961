// The parts of FOR, NEXT and WHILE that the statements read from their text and the compiled ones
// share: the FOR stack's levels, entering a loop and stepping it, and WHILE once its condition is
// known.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/outcome.h"

namespace tessaly::expr {
struct Target;
struct Value;
} // namespace tessaly::expr

namespace tessaly::core {

class Interpreter;

// The level a FOR takes: its own again when it is on the stack, else 0 (a new one); "Out of
// memory in " when the stack is full.
int findForLevel(Interpreter& interpreter, int& level);
// The rest of FOR once its variable holds the initial value: the limit and step checked, the level
// written, and a loop that runs zero times skipped to its matching NEXT.
Outcome enterLoop(Interpreter& interpreter, const expr::Target& target, int level, const expr::Value& limit, double step);
// The matching NEXT of a loop that runs zero times; 0 when there is none.
int findMatchingNext(Interpreter& interpreter, int forEntry, int level);
// NEXT with a variable: the level of that variable (level starts as the top one); "NEXT without
// FOR in " when none has it.
int levelOfVariable(Interpreter& interpreter, std::string_view name, bool isElement,
    const std::vector<int32_t>& subscripts, int& level);
// NEXT: the variable steps; the loop goes round again or ends.
Outcome stepLoop(Interpreter& interpreter, int level);
// WHILE after its condition (the depth checked before): the level pushed, and a false condition
// skipped to the matching WEND.
Outcome whileTested(Interpreter& interpreter, bool truth);
// WEND: back to its WHILE.
Outcome wendReached(Interpreter& interpreter);

// Where the parts of FOR stand in its text (found outside quotes): the "=", " TO" (or "TO") and
// "STEP" after the variable that ends at pos. False when there is no "=" or no TO.
struct ForParts {
    size_t equals = 0;
    size_t to = 0;
    size_t toLength = 3;
    size_t step = std::string_view::npos;
};
bool findForParts(std::string_view statement, size_t pos, ForParts& parts);

} // namespace tessaly::core
