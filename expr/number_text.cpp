// Number texts: GcvtText and the evaluator, PRINT and STR$ forms, and ReadNumberText.
#include "expr/number_text.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/char_class.h"

namespace tessaly::expr {

namespace {

// The decimal exponent of the exact value: 0 for 1 to 9.99..., -1 for 0.1 to 0.99...
int decimalExponent(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.40e", std::fabs(value));
    const char* e = std::strchr(text, 'e');
    return e == nullptr ? 0 : std::atoi(e + 1);
}

// Drops the zeros at the end of the fraction; the "." itself stays.
void dropTrailingZeros(std::string& mantissa)
{
    if (mantissa.find('.') == std::string::npos)
        return;
    while (!mantissa.empty() && mantissa.back() == '0')
        mantissa.pop_back();
}

} // namespace

std::string GcvtText(double value, int digits)
{
    if (value == 0.0 || !std::isfinite(value)) {
        if (!std::isfinite(value))
            return value < 0 ? "-1.#INF" : "1.#INF";
        return "0.";
    }
    int exponent = decimalExponent(value);
    char text[400];
    if (exponent < -1 || exponent > digits - 1) {
        std::snprintf(text, sizeof text, "%.*e", digits - 1, value);
        std::string formatted = text;
        auto e = formatted.find('e');
        std::string mantissa = formatted.substr(0, e);
        if (mantissa.find('.') == std::string::npos)
            mantissa += '.';
        dropTrailingZeros(mantissa);
        int shown = std::atoi(formatted.c_str() + e + 1);
        std::snprintf(text, sizeof text, "e%c%03d", shown < 0 ? '-' : '+', shown < 0 ? -shown : shown);
        return mantissa + text;
    }
    std::snprintf(text, sizeof text, "%.*f", digits - (exponent + 1), value);
    std::string fixed = text;
    if (fixed.find('.') == std::string::npos)
        fixed += '.';
    dropTrailingZeros(fixed);
    if (fixed == "-0.")
        return "0.";
    return fixed;
}

std::string ValueText(double value, int digits)
{
    std::string text = GcvtText(value, digits);
    if (text[0] != '-')
        text.insert(0, 1, ' ');
    text += ' ';
    return text;
}

std::string PrintNumberText(std::string_view input, ValueType type)
{
    std::string text(input);
    if (text.size() >= 2 && text[0] == ' ' && text[1] == '-')
        text.erase(0, 1);
    if (text.size() >= 2 && text.compare(text.size() - 2, 2, ". ") == 0) {
        text.erase(text.size() - 2, 1);
        return text;
    }
    if (text.find_last_of("EDed.") == std::string::npos)
        return text;
    std::string rewritten;
    if (type == ValueType::Single)
        rewritten = GcvtText(static_cast<float>(ReadNumberText(text)), 6);
    else if (type == ValueType::Double)
        rewritten = GcvtText(ReadNumberText(text), 16);
    else
        return text;

    static constexpr std::string_view kSmallExponents[] = {"e-001", "e-002", "e-003", "e-004"};
    for (size_t k = 0; k < std::size(kSmallExponents); ++k) {
        if (rewritten.size() < 5 || rewritten.compare(rewritten.size() - 5, 5, kSmallExponents[k]) != 0)
            continue;
        // Shown in fixed form: 5.e-002 becomes 0.05.
        rewritten.erase(rewritten.size() - 5);
        auto point = rewritten.find('.');
        if (point != std::string::npos)
            rewritten.erase(point, 1);
        if (rewritten[0] != '-' && rewritten[0] != ' ')
            rewritten.insert(0, 1, ' ');
        rewritten.insert(1, std::string("0.") + std::string(k, '0'));
        return rewritten + ' ';
    }
    if (rewritten[0] != '-' && rewritten[0] != ' ')
        rewritten.insert(0, 1, ' ');
    return rewritten + ' ';
}

std::string StrNumberText(std::string_view input)
{
    std::string text(input);
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    if (!text.empty() && text.back() == '.')
        text.pop_back();
    if (text.empty() || (text[0] != '-' && text[0] != ' '))
        text.insert(0, 1, ' ');
    if (text.find('e') == std::string::npos || text.size() < 5)
        return text;
    // "e-005" loses its first exponent digit: "e-05".
    text.erase(text.size() - 3, 1);
    std::string exponent = text.substr(text.size() - 4);
    if (exponent >= "e-01" && exponent <= "e-05") {
        text.erase(text.size() - 4);
        int zeros = exponent.back() - '0';
        auto point = text.find('.');
        if (point != std::string::npos)
            text.erase(point, 1);
        size_t first = text.find_first_of("0123456789");
        if (first == std::string::npos)
            return text;
        text.insert(first, std::string(static_cast<size_t>(zeros), '0'));
        text.insert(first + 1, ".");
    }
    return text;
}

namespace {

// 10^-k as the nearest doubles.
constexpr double kNegativePowersOfTen[] = {1e0, 1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8, 1e-9, 1e-10, 1e-11,
    1e-12, 1e-13, 1e-14, 1e-15, 1e-16, 1e-17, 1e-18, 1e-19, 1e-20, 1e-21, 1e-22};

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13,
    1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// A normal double's parts: magnitude = mantissa x 2^(binaryExponent - 53), the mantissa 53 bits
// with its leading one (binaryExponent as frexp gives it). Read from the bits, far quicker than
// frexp and ldexp. false for zero and subnormals.
bool splitNormal(double magnitude, uint64_t& mantissa, int& binaryExponent)
{
    auto bits = std::bit_cast<uint64_t>(magnitude);
    auto biased = static_cast<int>((bits >> 52) & 0x7FF);
    if (biased == 0)
        return false;
    mantissa = (bits & ((uint64_t {1} << 52) - 1)) | (uint64_t {1} << 52);
    binaryExponent = biased - 1022;
    return true;
}

// floor(log10(magnitude)), read from the binary exponent (much quicker than the logarithm) and
// moved up where the next power of ten is reached. Below 1 the powers are only the nearest doubles,
// so near one of them the guess may be one off either way: the callers check the digits they get.
int decimalExponentGuess(double magnitude)
{
    uint64_t mantissa = 0;
    int binaryExponent = 0;
    if (!splitNormal(magnitude, mantissa, binaryExponent))
        std::frexp(magnitude, &binaryExponent);
    // floor((binaryExponent - 1) x log10 2) in integers: 78913 / 2^18 gives the same floor for every
    // exponent a double has.
    int guess = ((binaryExponent - 1) * 78913) >> 18;
    if (guess >= -1 && guess < 22) {
        if (magnitude >= kPowersOfTen[guess + 1])
            ++guess;
    } else if (guess < -1 && guess >= -22 && magnitude >= kNegativePowersOfTen[-(guess + 1)]) {
        ++guess;
    }
    return guess;
}

// Rounding to at most 7 digits by scaling: the scaled value y carries one rounding error (powers of
// ten up to 1e22 are exact), far below 1e-8 for y under 1e7, so the nearest whole number is certain
// unless y lies within that of a half; n / 10^k is then the double nearest the decimal n x 10^-k,
// as reading the decimal text gives. false when the text route must decide.
bool roundByScaling(double magnitude, int digits, double& rounded)
{
    int k = digits - 1 - decimalExponentGuess(magnitude);
    double scale = 0;
    double y = 0;
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (k < -22 || k > 22)
            return false;
        scale = kPowersOfTen[k < 0 ? -k : k];
        y = k >= 0 ? magnitude * scale : magnitude / scale;
        if (y >= kPowersOfTen[digits])
            --k; // the guess was one short: one digit too many
        else if (y < kPowersOfTen[digits - 1])
            ++k; // one over: a digit too few
        else
            break;
    }
    if (!(y >= kPowersOfTen[digits - 1] && y < kPowersOfTen[digits]))
        return false;
    auto whole = static_cast<double>(static_cast<int64_t>(y)); // y is positive and below 10^7
    double fraction = y - whole;
    if (std::fabs(fraction - 0.5) < 1e-7)
        return false;
    if (fraction > 0.5)
        whole += 1.0;
    rounded = k >= 0 ? whole / scale : whole * scale;
    return true;
}

__extension__ typedef unsigned __int128 Wide;

constexpr uint64_t kPowersOfFive[] = {1ULL, 5ULL, 25ULL, 125ULL, 625ULL, 3125ULL, 15625ULL, 78125ULL, 390625ULL,
    1953125ULL, 9765625ULL, 48828125ULL, 244140625ULL, 1220703125ULL, 6103515625ULL, 30517578125ULL,
    152587890625ULL, 762939453125ULL, 3814697265625ULL, 19073486328125ULL, 95367431640625ULL,
    476837158203125ULL, 2384185791015625ULL};

// n / 10^k for n above 2^53: divided in the 64-bit extended format (both operands exact), then
// narrowed to double. The narrowing gives the double nearest the true quotient unless the
// extended quotient fell exactly on the midpoint between two doubles; that case goes the text way
// (a safeguard: no double rounds to such an n, since above 2^53 the doubles near n / 10^k lie at
// least half a unit of the 16th digit away).
bool divideThroughExtended(uint64_t n, int k, double& rounded)
{
    if constexpr (std::numeric_limits<long double>::digits < 64) {
        return false;
    } else {
        long double quotient = static_cast<long double>(n) / static_cast<long double>(kPowersOfTen[k]);
        double narrowed = static_cast<double>(quotient);
        if (static_cast<long double>(narrowed) != quotient) {
            double neighbour = std::nextafter(narrowed, quotient > narrowed ? HUGE_VAL : -HUGE_VAL);
            long double midpoint = (static_cast<long double>(narrowed) + static_cast<long double>(neighbour)) / 2;
            if (quotient == midpoint)
                return false;
        }
        rounded = narrowed;
        return true;
    }
}

// magnitude x 10^k (k from 0 to 22) as an exact integer part and the rounding of its fraction:
// magnitude = m x 2^(e-53), so magnitude x 10^k is m x 5^k x 2^(e-53+k), one 128-bit product
// shifted. false when the integer part would not fit 64 bits.
struct ScaledDigits {
    uint64_t whole = 0;    // the integer part
    bool roundUp = false;  // the fraction rounds the last digit up (half to even, as the text does)
};

bool scaleByPowerOfTen(uint64_t mantissa, int binaryExponent, int k, ScaledDigits& out)
{
    int shift = binaryExponent - 53 + k;
    Wide scaled = static_cast<Wide>(mantissa) * kPowersOfFive[k];
    if (shift >= 0) {
        if (shift > 10 || (scaled >> (64 - shift)) != 0)
            return false;
        out = {static_cast<uint64_t>(scaled) << shift, false};
        return true;
    }
    int right = -shift;
    if (right >= 64)
        return false;
    Wide whole = scaled >> right;
    if ((whole >> 64) != 0)
        return false;
    // The fraction is the low `right` bits; half is the bit below the last digit.
    auto low = static_cast<uint64_t>(scaled);
    uint64_t rest = low & ((uint64_t {1} << right) - 1);
    uint64_t half = uint64_t {1} << (right - 1);
    auto digits = static_cast<uint64_t>(whole);
    out = {digits, rest > half || (rest == half && (digits & 1) != 0)};
    return true;
}

// Rounding to 16 digits in doubles, the quick way tried first: p = magnitude x 10^k is one
// rounding of the exact product and fma gives that rounding's error exactly, so p + error is the
// product. With p from 1e15 to 2^53 the fraction of p is exact and decides the nearest whole
// number, except at a half, where the error's sign does (half to even on an exact tie, as the
// decimal text rounds). false leaves every other case to roundSixteenExactly.
bool roundSixteenQuickly(double magnitude, double& rounded)
{
    constexpr double kLowest = 1e15;
    constexpr double kExactLimit = 9007199254740992.0; // 2^53
    uint64_t mantissa = 0;
    int binaryExponent = 0;
    if (!(magnitude >= 1e-7 && magnitude < 1e16) || !splitNormal(magnitude, mantissa, binaryExponent))
        return false;
    int k = std::min(15 - (((binaryExponent - 1) * 78913) >> 18), 22);
    double scale = kPowersOfTen[k];
    double p = magnitude * scale;
    if (p >= 1e16) {
        if (k == 0)
            return false;
        scale = kPowersOfTen[--k];
        p = magnitude * scale;
    }
    if (!(p > kLowest && p < kExactLimit))
        return false;
    double error = std::fma(magnitude, scale, -p);
    auto whole = static_cast<int64_t>(p); // signed conversions are the quick ones
    double fraction = p - static_cast<double>(whole);
    bool odd = (whole & 1) != 0;
    // Above 2^52 p has no fraction, and an exact tie there was already rounded to the even whole
    // number by the multiplication itself.
    if (fraction > 0.5 || (fraction == 0.5 && (error > 0 || (error == 0 && odd))))
        ++whole;
    if (whole >= static_cast<int64_t>(kExactLimit))
        return false;
    rounded = static_cast<double>(whole) / scale;
    return true;
}

// Rounding to 16 digits with exact integers: magnitude x 10^k rounded half to even like the
// decimal text, k chosen so that its integer part has exactly 16 digits. The binary exponent
// proposes k (floor of log10 is the proposal or one above it), so the integer part decides: with
// 17 digits k is one too high. The result n / 10^k is the double nearest the decimal: one
// rounding of exact operands below 2^53, the extended division above. Outside 1e-7 to 1e16 false
// sends the value the text route.
bool roundSixteenExactly(double magnitude, double& rounded)
{
    if (!(magnitude >= 1e-7 && magnitude < 1e16))
        return false;
    constexpr uint64_t kLowest = 1000000000000000ULL;
    constexpr uint64_t kExactLimit = 1ULL << 53;
    constexpr uint64_t kHighest = 10000000000000000ULL;
    uint64_t mantissa = 0;
    int binaryExponent = 0;
    splitNormal(magnitude, mantissa, binaryExponent); // normal throughout the range
    // floor((binaryExponent - 1) x log10 2): 78913 / 2^18 gives the same floor for every exponent.
    int k = std::min(15 - (((binaryExponent - 1) * 78913) >> 18), 22);
    ScaledDigits scaled;
    if (!scaleByPowerOfTen(mantissa, binaryExponent, k, scaled))
        return false;
    if (scaled.whole >= kHighest && (k == 0 || !scaleByPowerOfTen(mantissa, binaryExponent, --k, scaled)))
        return false;
    if (scaled.whole < kLowest || scaled.whole >= kHighest)
        return false;
    uint64_t digits = scaled.whole + (scaled.roundUp ? 1 : 0);
    if (digits < kExactLimit) {
        rounded = static_cast<double>(digits) / kPowersOfTen[k];
        return true;
    }
    return divideThroughExtended(digits, k, rounded);
}

// Whether the exact value has at most `digits` significant decimal digits, so that its text with
// that many digits is the value itself. A double with f bits after the binary point has exactly f
// decimal digits after the point (2^-f = 5^f x 10^-f): 2.5, 0.375 and 1234.0625 qualify, 0.1 does
// not. Counting the whole part's digits in full (and every fraction digit, leading zeros included)
// only ever says no too often, never yes wrongly.
bool hasFewDigits(double magnitude, int digits)
{
    if (!(magnitude < kPowersOfTen[digits]))
        return false;
    uint64_t mantissa = 0;
    int binaryExponent = 0;
    if (!splitNormal(magnitude, mantissa, binaryExponent))
        return false; // subnormal: far too many fraction digits anyway
    int fractionDigits = 53 - binaryExponent - std::countr_zero(mantissa);
    if (fractionDigits <= 0)
        return true;
    if (fractionDigits > digits)
        return false;
    int wholeDigits = 0;
    while (wholeDigits < digits && magnitude >= kPowersOfTen[wholeDigits])
        ++wholeDigits;
    return wholeDigits + fractionDigits <= digits;
}

// Every case but the quick 16-digit one; kept apart so that the quick one needs no stack frame.
[[gnu::noinline]] double roundToDigitsSlowly(double value, int digits)
{
    double rounded = 0;
    // Sixteen digits, the rounding of every operation, go the exact way at once (a number with no
    // more digits comes out as itself there too).
    if (digits == 16 && roundSixteenExactly(std::fabs(value), rounded))
        return value < 0 ? -rounded : rounded;
    if (!std::isfinite(value) || value == 0.0)
        return value == 0.0 ? 0.0 : value;
    // A number with no more digits than are kept (every whole number among them) reads back as itself.
    if (digits >= 1 && digits <= 16 && hasFewDigits(std::fabs(value), digits))
        return value;
    if (digits >= 1 && digits <= 7 && roundByScaling(std::fabs(value), digits, rounded))
        return value < 0 ? -rounded : rounded;
    char text[64];
    std::snprintf(text, sizeof text, "%.*e", digits - 1, value);
    return std::strtod(text, nullptr);
}

} // namespace

double RoundToDigitsBeyondShortWholes(double value, int digits)
{
    double rounded = 0;
    if (digits == 16 && roundSixteenQuickly(std::fabs(value), rounded))
        return value < 0 ? -rounded : rounded;
    return roundToDigitsSlowly(value, digits);
}

std::string numberValueText(const Value& value)
{
    std::string text;
    switch (value.form) {
    case NumberForm::Literal:
        text = value.text;
        break;
    case NumberForm::Computed16:
    case NumberForm::DoubleVar:
        text = GcvtText(value.number, 16);
        break;
    case NumberForm::Computed7:
    case NumberForm::SingleVar:
        text = GcvtText(value.number, 7);
        break;
    case NumberForm::IntegerVar:
        text = std::to_string(static_cast<long long>(value.number));
        break;
    }
    if (text.empty() || (text[0] != '-' && text[0] != ' '))
        text.insert(0, 1, ' ');
    text += ' ';
    return text;
}

double ReadNumberText(std::string_view text)
{
    size_t pos = 0;
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    // Appends the digits from at to out; true when there was one.
    auto takeDigits = [&](size_t& at, std::string& out) {
        size_t start = at;
        while (at < text.size() && core::isDigit(text[at]))
            out += text[at++];
        return at > start;
    };
    std::string number;
    if (pos < text.size() && (text[pos] == '-' || text[pos] == '+'))
        number += text[pos++];
    bool digits = takeDigits(pos, number);
    if (pos < text.size() && text[pos] == '.') {
        number += text[pos++];
        digits = takeDigits(pos, number) || digits;
    }
    if (!digits)
        return 0.0;
    if (pos < text.size() && (text[pos] == 'E' || text[pos] == 'e' || text[pos] == 'D' || text[pos] == 'd')) {
        size_t mark = pos + 1;
        std::string exponent = "e";
        if (mark < text.size() && (text[mark] == '-' || text[mark] == '+'))
            exponent += text[mark++];
        if (takeDigits(mark, exponent))
            number += exponent;
    }
    return std::strtod(number.c_str(), nullptr);
}

} // namespace tessaly::expr
