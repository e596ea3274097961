// Walking the prepared program in program order: a line's statement pieces, then the following
// lines with their pieces. FOR and WHILE search their partner this way; READ collects DATA.
#pragma once

#include <functional>

namespace tessaly::core {

class Interpreter;

// The program line (1..count) that an entry belongs to; 0 for entries of no program line.
[[nodiscard]] int programLineOf(Interpreter& in, int entry);

// Calls visit(entry) for each statement entry after `from` in program order: the rest of from's
// own line (when it is a piece of a split line), then every later program line, a split line
// through its pieces. Stops when visit returns true; returns that entry, or 0.
int walkEntriesAfter(Interpreter& in, int from, const std::function<bool(int)>& visit);

// Calls visit(entry) for every statement entry of program line `line` (its pieces when split).
bool walkLine(Interpreter& in, int line, const std::function<bool(int)>& visit, int& found);

} // namespace tessaly::core
