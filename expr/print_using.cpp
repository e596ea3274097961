// PRINT USING fields: where they are in a format, and how numbers and strings fill them.
#include "expr/print_using.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/shift_jis.h"

namespace tessaly::expr {

namespace {

bool continuesNumeric(char c)
{
    return c == '#' || c == '*' || c == '.' || c == '\\' || c == ',' || c == '+' || c == '-' || c == '^';
}

// The shape of a numeric field.
struct NumericShape {
    bool leadingPlus = false;
    bool asterisks = false;
    bool currency = false;
    bool commas = false;
    bool trailingMinus = false;
    bool trailingPlus = false;
    bool exponent = false;
    bool beginsWithPoint = false;
    int integerPositions = 0;
    int decimals = 0;
    bool hasDigitOrPoint = false;
};

NumericShape shapeOf(std::string_view field)
{
    NumericShape shape;
    size_t pos = 0;
    if (field.starts_with("+")) {
        shape.leadingPlus = true;
    }
    std::string_view body = field;
    // A trailing sign position stands after the digits, and after the exponent part when there is
    // one (##.##^^^^-); a sign written before the ^^^^ is taken the same way.
    auto takeTrailingSign = [&] {
        if (body.ends_with("-")) {
            shape.trailingMinus = true;
            body.remove_suffix(1);
        } else if (body.ends_with("+") && body.size() > 1) {
            shape.trailingPlus = true;
            body.remove_suffix(1);
        }
    };
    takeTrailingSign();
    if (body.ends_with("^^^^")) {
        shape.exponent = true;
        body.remove_suffix(4);
        if (!shape.trailingMinus && !shape.trailingPlus)
            takeTrailingSign();
    }
    shape.asterisks = body.starts_with("**") || body.starts_with("+**");
    shape.currency = body.find('\\') != std::string_view::npos;
    shape.beginsWithPoint = body.starts_with(".");
    auto point = body.find('.');
    std::string_view integerPart = body.substr(0, point);
    for (pos = 0; pos < integerPart.size(); ++pos) {
        char c = integerPart[pos];
        if (c == ',')
            shape.commas = true;
        if (c == '#')
            shape.hasDigitOrPoint = true;
    }
    shape.integerPositions = static_cast<int>(integerPart.size());
    if (point != std::string_view::npos) {
        shape.hasDigitOrPoint = true;
        for (char c : body.substr(point + 1)) {
            if (c == '#')
                ++shape.decimals;
        }
    }
    return shape;
}

std::string groupByThree(const std::string& digits)
{
    std::string out;
    int count = 0;
    for (size_t k = digits.size(); k-- > 0;) {
        if (count == 3) {
            out.insert(0, 1, ',');
            count = 0;
        }
        out.insert(0, 1, digits[k]);
        ++count;
    }
    return out;
}

std::string exponentText(int exponent)
{
    if (exponent < 0)
        return exponent > -10 ? "E-0" + std::to_string(-exponent) : "E-" + std::to_string(-exponent);
    return exponent < 10 ? "E+0" + std::to_string(exponent) : "E+" + std::to_string(exponent);
}

FillResult fillNumeric(std::string_view field, double value, std::string& text)
{
    NumericShape shape = shapeOf(field);
    if (!shape.hasDigitOrPoint)
        return FillResult::Syntax;
    bool negative = value < 0;
    double magnitude = std::fabs(value);
    // Only a sign after the digits frees every integer position for digits; a leading + keeps one
    // position for the sign, as a minus sign would.
    bool trailingSign = shape.trailingMinus || shape.trailingPlus;
    std::string integerDigits;
    std::string decimalDigits;
    std::string exponent;
    char buffer[400];
    if (shape.exponent) {
        // The significant digits fill the integer positions (one kept for a minus sign unless the
        // field has a trailing sign) and then the decimals.
        int leading = shape.beginsWithPoint ? 0 : std::max(shape.integerPositions - (trailingSign ? 0 : 1), 1);
        int significant = leading + shape.decimals;
        if (significant < 1)
            significant = 1;
        int power = magnitude == 0 ? 0 : static_cast<int>(std::floor(std::log10(magnitude)));
        std::snprintf(buffer, sizeof buffer, "%.*e", significant - 1, magnitude);
        std::string mantissa = buffer;
        auto e = mantissa.find('e');
        power = std::atoi(mantissa.c_str() + e + 1);
        std::string digits;
        for (char c : mantissa.substr(0, e)) {
            if (c >= '0' && c <= '9')
                digits += c;
        }
        integerDigits = digits.substr(0, static_cast<size_t>(leading));
        decimalDigits = digits.substr(static_cast<size_t>(leading));
        exponent = exponentText(magnitude == 0 ? 0 : power - leading + 1);
    } else {
        std::snprintf(buffer, sizeof buffer, "%.*f", shape.decimals, magnitude);
        std::string fixed = buffer;
        auto point = fixed.find('.');
        integerDigits = fixed.substr(0, point);
        decimalDigits = point == std::string::npos ? "" : fixed.substr(point + 1);
        if (integerDigits == "0" && shape.beginsWithPoint)
            integerDigits.clear();
    }
    if (shape.commas)
        integerDigits = groupByThree(integerDigits);

    std::string prefix;
    if (shape.leadingPlus)
        prefix = negative ? "-" : "+";
    else if (shape.currency)
        prefix = negative ? (shape.asterisks ? "\\-" : "-\\") : "\\";
    else if (negative && !shape.trailingMinus && !shape.trailingPlus)
        prefix = "-";
    std::string head = prefix + integerDigits;
    bool overflow = false;
    int positions = shape.integerPositions;
    if (static_cast<int>(head.size()) > positions) {
        overflow = true;
    } else {
        char fill = shape.asterisks ? '*' : ' ';
        head.insert(0, static_cast<size_t>(positions) - head.size(), fill);
    }
    text = head;
    if (field.find('.') != std::string_view::npos)
        text += "." + decimalDigits;
    text += exponent;
    if (shape.trailingMinus)
        text += negative ? "-" : " ";
    else if (shape.trailingPlus)
        text += negative ? "-" : "+";
    // A blank left directly before the point becomes 0.
    auto blankPoint = text.find(" .");
    if (blankPoint != std::string::npos)
        text[blankPoint] = '0';
    if (overflow)
        text.insert(0, "%");
    return FillResult::Ok;
}

} // namespace

Field locateField(std::string_view text, size_t from)
{
    size_t pos = from;
    while (pos < text.size()) {
        char c = text[pos];
        if (c == '_') {
            pos += 2;
            continue;
        }
        if (core::IsLeadByte(static_cast<uint8_t>(c))) {
            pos += 2;
            continue;
        }
        bool plusField = c == '+' && pos + 1 < text.size() && (text[pos + 1] == '#' || text[pos + 1] == '.');
        if (c == '!' || c == '@')
            return {c == '!' ? FieldKind::FirstCharacter : FieldKind::WholeString, pos, 1};
        if (c == '&') {
            auto close = text.find('&', pos + 1);
            size_t end = close == std::string_view::npos ? text.size() : close + 1;
            return {FieldKind::FixedString, pos, end - pos};
        }
        if (c == '#' || c == '*' || c == '.' || c == '\\' || plusField) {
            size_t end = pos;
            bool hasHash = false;
            while (end < text.size()) {
                char d = text[end];
                if (d == '_' && end + 1 < text.size()) {
                    end += 2;
                    continue;
                }
                if (d == '&' && hasHash)
                    break;
                if (!continuesNumeric(d))
                    break;
                if (d == '#')
                    hasHash = true;
                ++end;
            }
            return {FieldKind::Numeric, pos, end - pos};
        }
        ++pos;
    }
    return {};
}

FillResult fillField(std::string_view field, FieldKind kind, const Value& value, std::string& text)
{
    if (kind == FieldKind::Numeric) {
        if (value.isString())
            return FillResult::Illegal;
        return fillNumeric(field, value.number, text);
    }
    if (!value.isString())
        return FillResult::Illegal;
    switch (kind) {
    case FieldKind::FirstCharacter:
        text = value.text.empty() ? " " : value.text.substr(0, 1);
        return FillResult::Ok;
    case FieldKind::WholeString:
        text = value.text;
        return FillResult::Ok;
    default:
        text = value.text.substr(0, field.size());
        text.resize(field.size(), ' ');
        return FillResult::Ok;
    }
}

std::string removeEscapes(std::string_view line)
{
    std::string out;
    for (size_t pos = 0; pos < line.size(); ++pos) {
        if (line[pos] == '_' && pos + 1 < line.size()) {
            out += line[++pos];
            continue;
        }
        if (line[pos] == '_')
            continue;
        out += line[pos];
    }
    return out;
}

} // namespace tessaly::expr
