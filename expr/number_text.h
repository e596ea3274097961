// The one number-to-text conversion behind every number the user sees, its finishing rules for
// the evaluator, PRINT and STR$, and the one text-to-number reading. PRINT USING formats elsewhere.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "expr/values.h"

namespace tessaly::expr {

// A general format with `digits` significant digits: fixed form while the decimal exponent is
// -1..digits-1, else one digit, ".", the other digits and a three-digit exponent; trailing zeros of
// the fraction are dropped but the "." stays. 100 -> "100.", 0.05 -> "5.e-002".
[[nodiscard]] std::string GcvtText(double value, int digits);

// The evaluator's value text: GcvtText with a leading blank unless negative, and a trailing blank.
[[nodiscard]] std::string ValueText(double value, int digits);

// The PRINT form of an evaluated number text of the given type.
[[nodiscard]] std::string PrintNumberText(std::string_view text, ValueType type);

// The STR$ form of an evaluated number text.
[[nodiscard]] std::string StrNumberText(std::string_view text);

// A whole number below a million: its text with six digits or more is the number itself, so the
// rounding keeps it (the commonest case, tested first wherever results are made).
[[nodiscard]] inline bool isShortWhole(double x)
{
    return x < 1e6 && x > -1e6 && static_cast<double>(static_cast<int32_t>(x)) == x;
}

// RoundToDigits for every number but a short whole one.
[[nodiscard]] double RoundToDigitsBeyondShortWholes(double value, int digits);

// The number rounded as its text with that many significant digits reads back.
[[nodiscard]] inline double RoundToDigits(double value, int digits)
{
    if (digits >= 6 && isShortWhole(value))
        return value == 0.0 ? 0.0 : value;
    return RoundToDigitsBeyondShortWholes(value, digits);
}

// The value text of a number as the evaluator writes it: a blank or "-" first, a blank last
// (" 2. ", "-0.5 ", " 007 " for a literal written 007).
[[nodiscard]] std::string numberValueText(const Value& value);

// Leading blanks, a sign, digits, a point and digits, an exponent after E, e, D or d; stops at the
// first character that cannot continue the number; 0 when there is none.
[[nodiscard]] double ReadNumberText(std::string_view text);

} // namespace tessaly::expr
