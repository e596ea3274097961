// Line entry: what happens to a logical line when Enter is pressed in direct mode.
// Storing is core/program_store; running a direct command is core/run_loop.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::core {

class Interpreter;

// True when the text, read as a decimal number from its start and rounded, is above 0.
[[nodiscard]] bool isNumberedLine(std::string_view text);

void enterLine(Interpreter& interpreter, std::string_view text);

} // namespace tessaly::core
