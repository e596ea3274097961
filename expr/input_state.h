// What a waiting INPUT, LINE INPUT or RANDOMIZE needs to finish once the line has been typed.
#pragma once

#include <string>
#include <vector>

namespace tessaly::expr {

enum class InputKind : uint8_t { Fields, WholeLine, RandomSeed };

struct InputState {
    InputKind kind = InputKind::Fields;
    std::string prompt;                 // as printed, "? " included
    std::vector<std::string> variables; // each as written, an element with its subscripts
};

} // namespace tessaly::expr
