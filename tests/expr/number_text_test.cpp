// Number texts exactly as the user sees them.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "expr/number_text.h"

namespace tessaly::expr {
namespace {

// The rounding by its definition: the value written with that many digits and read back.
double roundedByText(double value, int digits)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*e", digits - 1, value);
    return std::strtod(text, nullptr);
}

struct GcvtCase {
    double value;
    int digits;
    const char* text;
};

class Gcvt : public ::testing::TestWithParam<GcvtCase> {};

TEST_P(Gcvt, FormatsLikeTheSystem)
{
    EXPECT_EQ(GcvtText(GetParam().value, GetParam().digits), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(NumberText, Gcvt,
    ::testing::Values(GcvtCase {100, 16, "100."}, GcvtCase {0.5, 16, "0.5"},
        GcvtCase {1.0 / 3, 16, "0.3333333333333333"}, GcvtCase {0, 16, "0."}, GcvtCase {0.05, 16, "5.e-002"},
        GcvtCase {1e20, 16, "1.e+020"}, GcvtCase {-2.5, 16, "-2.5"}, GcvtCase {12345678, 7, "1.234568e+007"},
        GcvtCase {32767, 7, "32767."}, GcvtCase {1.0 / 3, 6, "0.333333"}, GcvtCase {1.5e20, 16, "1.5e+020"},
        GcvtCase {0.00005, 16, "5.e-005"}, GcvtCase {2.0 / 3, 16, "0.6666666666666666"},
        GcvtCase {123456789012345, 16, "123456789012345."}, GcvtCase {1e16, 16, "1.e+016"},
        GcvtCase {9999999, 7, "9999999."}, GcvtCase {99999995, 7, "1.e+008"}, GcvtCase {-0.0, 16, "0."},
        GcvtCase {1e-300, 16, "1.e-300"}, GcvtCase {0.1 + 0.2, 16, "0.3"}));

struct FormCase {
    const char* text;
    ValueType type;
    const char* shown;
};

class PrintForm : public ::testing::TestWithParam<FormCase> {};

TEST_P(PrintForm, IsWhatPrintShows)
{
    EXPECT_EQ(PrintNumberText(GetParam().text, GetParam().type), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(NumberText, PrintForm,
    ::testing::Values(FormCase {" 100. ", ValueType::Double, " 100 "}, FormCase {"-100. ", ValueType::Double, "-100 "},
        FormCase {" 0. ", ValueType::Double, " 0 "}, FormCase {" 5.e-002 ", ValueType::Double, " 0.05 "},
        FormCase {" 1.e-004 ", ValueType::Double, " 0.0001 "},
        FormCase {" 1.e-005 ", ValueType::Double, " 1.e-005 "},
        FormCase {" 1.e+016 ", ValueType::Double, " 1.e+016 "}, FormCase {" 7 ", ValueType::Integer, " 7 "},
        FormCase {" 0.3333333333333333 ", ValueType::Single, " 0.333333 "},
        FormCase {"-1.2e-003 ", ValueType::Double, "-0.0012 "}, FormCase {" 1E20 ", ValueType::Double, " 1.e+020 "},
        FormCase {" 007 ", ValueType::Double, " 007 "}, FormCase {" -1 ", ValueType::Integer, "-1 "}));

struct StrCase {
    const char* text;
    const char* shown;
};

class StrForm : public ::testing::TestWithParam<StrCase> {};

TEST_P(StrForm, IsWhatStrShows)
{
    EXPECT_EQ(StrNumberText(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(NumberText, StrForm,
    ::testing::Values(StrCase {" 1.e-005 ", " 0.00001"}, StrCase {" 1.e+020 ", " 1.e+20"}, StrCase {" 5. ", " 5"},
        StrCase {" 1E20 ", " 1E20"}, StrCase {" 5.e-002 ", " 0.05"}, StrCase {" 1.234e-003 ", " 0.001234"},
        StrCase {"-2.5 ", "-2.5"}, StrCase {" 1.e-006 ", " 1.e-06"}));

TEST(NumberText, ReadNumberTextStopsAtTheFirstForeignCharacter)
{
    EXPECT_EQ(ReadNumberText("1D3"), 1000);
    EXPECT_EQ(ReadNumberText(" 12AB"), 12);
    EXPECT_EQ(ReadNumberText("-.5"), -0.5);
    EXPECT_EQ(ReadNumberText("X"), 0);
    EXPECT_EQ(ReadNumberText("2E"), 2);
    EXPECT_EQ(ReadNumberText(" 1.5e+020 "), 1.5e20);
}

// Rounding to 7 digits must give exactly the double that the 7-digit decimal text reads back as,
// over all magnitudes, near halves and near powers of ten.
TEST(RoundToDigits, EqualsReadingTheDecimalText)
{
    std::mt19937_64 random(20261123);
    std::uniform_real_distribution<double> mantissa(1.0, 10.0);
    std::uniform_int_distribution<int> exponent(-40, 40);
    for (int k = 0; k < 200000; ++k) {
        double value = mantissa(random) * std::pow(10.0, exponent(random));
        if (k % 5 == 1)
            value = std::nextafter(std::round(value * 1e6) / 1e6 + 5e-7, 0.0); // near a 7-digit half
        if (k % 5 == 3) {
            // Near a 16-digit half: the 17th digit a 5, give or take a unit in the last place.
            double scale = std::pow(10.0, 15 - std::floor(std::log10(value)));
            value = (std::floor(value * scale) + 0.5) / scale;
            value = k % 2 ? std::nextafter(value, 0.0) : value;
        }
        if (k % 3 == 2)
            value = -value;
        for (int digits : {7, 16}) {
            double expected = roundedByText(value, digits);
            ASSERT_EQ(RoundToDigits(value, digits), expected) << value << " to " << digits;
        }
    }
    for (double value : {1234567.5, 1234569.5, 999999.95, 9999999.5, 0.1, 1e-30, 3.4e38, 12345675.0})
        EXPECT_EQ(RoundToDigits(value, 7), roundedByText(value, 7)) << value;
    // Exact 16-digit ties go to the even digit, as the decimal text does.
    for (double value : {1234567890123456.5, 1234567890123457.5, 0.12345678901234565, 9007199254740991.0,
             9999999999999999.0, 1e-7, 0.3, 2.0 / 3.0})
        EXPECT_EQ(RoundToDigits(value, 16), roundedByText(value, 16)) << value;
}

// Just below a power of ten the logarithm rounds up to the whole number, which gave the rounding
// one digit too few (99999.99999999999 became 100000). Every decade, a few units in the last place
// either side of its power of ten and the decimals just below it, at 7 and 16 digits.
TEST(RoundToDigits, AgreesWithTheTextRouteAcrossEveryDecade)
{
    for (int decade = -300; decade <= 300; ++decade) {
        char text[64];
        std::snprintf(text, sizeof text, "1e%d", decade);
        double power = std::strtod(text, nullptr);
        std::vector<double> values;
        double below = power;
        double above = power;
        for (int step = 0; step < 4; ++step) {
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, HUGE_VAL);
            values.push_back(below);
            values.push_back(above);
        }
        values.push_back(power);
        for (const char* nines : {"9.999999999999999e%d", "9.9999999999999985e%d", "9.9999995e%d", "9.999999e%d",
                 "9.99999949e%d"}) {
            std::snprintf(text, sizeof text, nines, decade - 1);
            values.push_back(std::strtod(text, nullptr));
        }
        for (double value : values) {
            for (int digits : {7, 16}) {
                ASSERT_EQ(RoundToDigits(value, digits), roundedByText(value, digits)) << value << " to " << digits;
                ASSERT_EQ(RoundToDigits(-value, digits), roundedByText(-value, digits)) << -value << " to " << digits;
            }
        }
    }
}

// Numbers with few binary fraction digits (halves, quarters, 2.375) keep their value without the
// rounding arithmetic; the shortcut must say yes only where the decimal text would give the number
// back, right up to the last digit kept and one beyond it.
TEST(RoundToDigits, ShortBinaryFractionsAgreeWithTheTextRoute)
{
    std::mt19937_64 random(20261126);
    std::uniform_int_distribution<int> fractionBits(0, 30);
    std::uniform_int_distribution<int> wholeBits(1, 56);
    for (int k = 0; k < 100000; ++k) {
        int bits = wholeBits(random);
        auto whole = static_cast<double>(random() >> (64 - bits));
        double value = std::ldexp(whole, -fractionBits(random));
        if (k % 2 == 1)
            value = -value;
        for (int digits : {1, 3, 7, 15, 16})
            ASSERT_EQ(RoundToDigits(value, digits), roundedByText(value, digits)) << value << " to " << digits;
    }
    for (double value : {9999999.5, 999999.5, 1234567.5, 0.0078125, 0.00390625, 123456.25, 1e15 + 0.5,
             999999999999999.5, 99999999999999.75, 4503599627370495.5, 9999999999999998.0})
        for (int digits : {7, 16})
            EXPECT_EQ(RoundToDigits(value, digits), roundedByText(value, digits)) << value << " to " << digits;
}

// Scaled to 16 digits above 2^52, where the doubles are whole numbers, a value can lie exactly
// half way between two of them: x = j / 2^(k+1) with j odd gives x x 10^k = j x 5^k / 2. The
// nearest even digit must win there, and one unit in the last place either side must not be a tie.
TEST(RoundToDigits, SixteenDigitTiesAboveTwoToThe52nd)
{
    std::mt19937_64 random(20261126);
    for (int k = 1; k <= 14; ++k) {
        double fives = std::pow(5.0, k);
        auto low = static_cast<uint64_t>(std::ceil(std::ldexp(1.0, 53) / fives));
        auto high = static_cast<uint64_t>(std::floor(std::ldexp(1.0, 54) / fives));
        for (int n = 0; n < 2000; ++n) {
            uint64_t j = (low + random() % (high - low)) | 1;
            double value = std::ldexp(static_cast<double>(j), -(k + 1));
            for (double near : {value, std::nextafter(value, 0.0), std::nextafter(value, HUGE_VAL)})
                ASSERT_EQ(RoundToDigits(near, 16), roundedByText(near, 16)) << near << " (k " << k << ")";
        }
    }
}

TEST(NumberText, ValuesJustBelowAPowerOfTenKeepTheirLastDigit)
{
    EXPECT_EQ(ValueText(RoundToDigits(99999.99999999999 * 1, 16), 16), " 99999.99999999999 ");
    EXPECT_EQ(PrintNumberText(ValueText(RoundToDigits(1 - 0.9, 16), 16), ValueType::Double), " 0.09999999999999998 ");
    EXPECT_EQ(GcvtText(RoundToDigits(0.009999999999999995, 16), 16), "9.999999999999995e-003");
}

} // namespace
} // namespace tessaly::expr
