// The lookup of a jump target (line number or label) shared by GOTO, GOSUB, RESUME, ON ERROR GOTO,
// RESTORE and RUN. The statements themselves live in their own files.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::core {

class Interpreter;

// The operand of a jump: the first digit, "*" or letter from begin up to the next blank.
// Empty when a colon, an apostrophe, CR or LF comes first.
[[nodiscard]] std::string_view jumpOperand(std::string_view statement, int begin, int end);

// The target entry (above 0), or kFailed with "Undefined label in ", "Syntax error in " or
// "Undefined line number in " raised. Sets jumpTarget.
int findTarget(Interpreter& interpreter, int begin, int end);

} // namespace tessaly::core
