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

// A jump operand read once (compiled GOTO and GOSUB): the entry it leads to is looked up the first
// time and kept while the prepared program's extent stays the same (the compiled statement itself
// is dropped when the program changes).
class CompiledJump {
public:
    // False where findTarget would raise "Syntax error in " (no operand, no number).
    bool compile(std::string_view statement, int begin, int end);
    // As findTarget.
    int resolve(Interpreter& interpreter);

private:
    std::string m_label; // "*NAME", or empty for a line number
    int m_number = 0;
    int m_target = 0;
    int m_extent = -1;   // the prepared program's last entry when m_target was found
};

} // namespace tessaly::core
