// Rounding a number to a whole number, the way every conversion of the language does it.
#pragma once

#include <cmath>

namespace tessaly::core {

// x rounded half away from zero: 2.5 gives 3, -2.5 gives -3. Computed as trunc(x +- 0.5) rather
// than std::round, so that a value just below one half whose sum with 0.5 rounds up to 1 (as
// 0.49999999999999994 does) gives 1. NaN stays NaN.
[[nodiscard]] inline double roundHalfAwayFromZero(double x)
{
    return x >= 0 ? std::trunc(x + 0.5) : std::trunc(x - 0.5);
}

// x plus one half, truncated toward zero: halves round up for positive values, but -0.7 gives 0
// and -1.5 gives -1. The rule of the graphics arguments and coordinates that have always used it.
[[nodiscard]] inline double roundHalfUpTruncated(double x) { return std::trunc(x + 0.5); }

} // namespace tessaly::core
