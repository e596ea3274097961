// The GOSUB, FOR and WHILE stacks that the control-flow statements push and pop.
// RUN, CLEAR and NEW empty them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>


namespace tessaly::expr {
// The type of a value (expr/values.h); its underlying type must match that definition.
enum class ValueType : int8_t;
} // namespace tessaly::expr

namespace tessaly::core {

inline constexpr int kMaxGosubDepth = 255;
inline constexpr int kMaxForDepth = 31;
inline constexpr int kMaxWhileDepth = 31;

struct ForLevel {
    int entry = 0;                    // the FOR statement's entry
    std::string variable;             // the loop variable's name as written
    std::vector<int32_t> subscripts;  // for an array element
    bool isElement = false;
    expr::ValueType type {};          // set with the rest when the level is pushed
    double initial = 0;
    double limit = 0;
    double step = 1;
    // A scalar loop variable's place in the variable store, found at the first NEXT and kept
    // while the store's generation stays the same.
    int cell = -1;
    uint32_t cellGeneration = 0;
    uint32_t serial = 0; // which push this is (ControlStacks::forPushes when it was pushed)
};

struct ControlStacks {
    int gosubDepth = 0;
    std::array<int32_t, kMaxGosubDepth + 1> gosubReturn {};
    std::array<int32_t, kMaxGosubDepth + 1> gosubTarget {};
    int forDepth = 0;
    int forCurrentLevel = 0;
    std::array<ForLevel, kMaxForDepth + 1> forLevels {}; // levels 1..31
    uint32_t forPushes = 0; // levels pushed so far (never reset: a level's serial names its push)
    int whileDepth = 0;
    std::array<int32_t, kMaxWhileDepth + 1> whileEntry {};
    std::array<int32_t, kMaxWhileDepth + 1> wendEntry {};
    int lastIfEntry = 0;              // the entry of the IF statement executed last

    void reset()
    {
        gosubDepth = 0;
        forDepth = 0;
        forCurrentLevel = 0;
        whileDepth = 0;
        lastIfEntry = 0;
    }
};

} // namespace tessaly::core
