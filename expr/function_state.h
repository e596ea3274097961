// State behind the functions: DEF FN definitions and their call depth, the random generator,
// and the offsets that DATE$ and TIME$ statements set on the clock.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "expr/values.h"

namespace tessaly::expr {

inline constexpr int kMaxUserFunctions = 64;
inline constexpr int kMaxUserFunctionDepth = 10;

struct UserFunction {
    std::string name;       // after FN, with its suffix
    std::string definition; // the text after the name: "(X,Y)=X*Y" or "=expression"
    ValueType resultType;
};

// The linear congruential generator of RND.
class RandomGenerator {
public:
    RandomGenerator() { reset(); }
    void seed(uint32_t seed) { m_state = seed; }
    // A whole number 0..32767.
    int draw()
    {
        m_state = m_state * 214013u + 2531011u;
        return static_cast<int>((m_state >> 16) & 32767u);
    }
    // RND(x): x > 0 or no argument the next value; x < 0 restarts from the seed; x = 0 the last.
    double rnd(bool hasArgument, double x)
    {
        if (hasArgument && x == 0)
            return m_last;
        if (hasArgument && x < 0)
            seed(static_cast<uint32_t>(static_cast<int32_t>(m_randomSeed)));
        m_last = draw() / 32767.0;
        return m_last;
    }
    void randomize(int seedValue)
    {
        m_randomSeed = seedValue;
        seed(static_cast<uint32_t>(seedValue));
    }
    // Seeds with 1 and keeps the first draw as the last value.
    void reset()
    {
        m_randomSeed = 1;
        seed(1);
        m_last = draw() / 32767.0;
    }

private:
    uint32_t m_state = 1;
    int m_randomSeed = 1;
    double m_last = 0;
};

struct FunctionState {
    std::vector<UserFunction> userFunctions;
    int userFunctionDepth = 0;
    RandomGenerator random;
    double dateOffsetDays = 0;
    double timeOffsetSeconds = 0;
    int conditionValue = 0;
};

} // namespace tessaly::expr
