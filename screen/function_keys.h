// The ten function-key texts: typed when the key is pressed, shown on the bottom row.
#pragma once

#include <array>
#include <string>

namespace tessaly::screen {

struct FunctionKeys {
    std::array<std::string, 10> texts = {"load  ", "auto  ", "go to ", "list  ", "run   ", "save  ", "key   ",
        "print ", "edit  ", "cont  "};
    bool lineShown = true;
};

} // namespace tessaly::screen
