// The GOSUB, FOR and WHILE stacks that the control-flow statements push and pop.
// RUN, CLEAR and NEW empty them.
#pragma once

#include <array>
#include <cstdint>

namespace tessaly::core {

inline constexpr int kMaxGosubDepth = 255;
inline constexpr int kMaxForDepth = 31;
inline constexpr int kMaxWhileDepth = 31;

struct ControlStacks {
    int gosubDepth = 0;
    std::array<int32_t, kMaxGosubDepth + 1> gosubReturn {};
    int forDepth = 0;
    int whileDepth = 0;

    void reset()
    {
        gosubDepth = 0;
        forDepth = 0;
        whileDepth = 0;
    }
};

} // namespace tessaly::core
