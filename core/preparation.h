// Program preparation: every statement gets an entry, IF branches get entries, labels are collected.
// Running the prepared entries is core/run_loop; the tables themselves are core/prepared_program.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::core {

class Interpreter;

// Before RUN and CHAIN. Returns 0, or kFailed with the error raised at the program line concerned.
int prepareProgram(Interpreter& interpreter);
// For the direct command standing in the statement buffer.
int prepareDirect(Interpreter& interpreter);

// The IF/THEN/ELSE structure of a line: one IF, possibly continued by ELSE IF; no IF after a colon
// that follows THEN. False for a bad structure.
[[nodiscard]] bool checkIfStructure(std::string_view lineText);

// Cuts comments and rewrites NEXT I,J into NEXT I :NEXT J. False when a string is left open.
[[nodiscard]] bool normaliseStatements(std::string& text);

} // namespace tessaly::core
