// What a waiting INPUT, LINE INPUT or RANDOMIZE needs to finish once the line has been typed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

enum class InputKind : uint8_t { Fields, WholeLine, RandomSeed };

struct InputState {
    InputKind kind = InputKind::Fields;
    std::string prompt;                 // as printed, "? " included
    std::vector<std::string> variables; // each as written, an element with its subscripts
};

// The reply is typed on the screen; the screen editor does that part (screen/input_reply.cpp).
// Prints the output text and the prompt, notes the cell where they end (where the reply starts)
// and empties the key buffer.
void showInputPrompt(core::Interpreter& interpreter);
// The reply has been taken: the key buffer is emptied and the reply's cell forgotten.
void endInputReply(core::Interpreter& interpreter);
// The reply to a waiting INPUT, LINE INPUT or RANDOMIZE when Enter has gathered enteredLine on the
// cursor row: the logical line from the cell where the prompt ended, trimmed of blanks.
std::string inputReply(core::Interpreter& interpreter, std::string_view enteredLine);

} // namespace tessaly::expr
