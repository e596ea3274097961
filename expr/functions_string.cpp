// The string functions CHR$ ... TIME$, with their range checks.
#include <cmath>
#include <cstring>
#include <ctime>
#include <string>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "expr/builtin_functions.h"
#include "expr/number_text.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

namespace {

// Argument k rounded half away from zero; IllegalFunctionCall outside lowest..highest.
int roundedInRange(core::Interpreter& in, const FunctionCall& call, size_t k, double lowest, double highest,
    double& n)
{
    TRY_BASIC(requiredNumber(in, call.arguments, k, n));
    n = core::roundHalfAwayFromZero(n);
    if (n < lowest || n > highest)
        return in.raise(ErrorId::IllegalFunctionCall);
    return 0;
}

// LEFT$ and RIGHT$: the string of the first argument and how many of its bytes to take.
int partOf(core::Interpreter& in, const FunctionCall& call, const std::string*& text, size_t& count)
{
    TRY_BASIC(requiredString(in, call.arguments, 0, text));
    double n = 0;
    TRY_BASIC(requiredNumber(in, call.arguments, 1, n));
    n = std::trunc(n);
    if (n < 0)
        return in.raise(ErrorId::IllegalFunctionCall);
    count = n > static_cast<double>(text->size()) ? text->size() : static_cast<size_t>(n);
    return 0;
}

// HEX$ and OCT$: a 16-bit value (a negative one as its two's complement) in the base.
int inBase(core::Interpreter& in, const FunctionCall& call, uint32_t base, Value& result)
{
    double n = 0;
    TRY_BASIC(roundedInRange(in, call, 0, -32768, 65535, n));
    if (n < 0)
        n += 65536;
    auto value = static_cast<uint32_t>(n);
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(0, 1, kDigits[value % base]);
        value /= base;
    } while (value != 0);
    return stringResult(std::move(text), result);
}

// MKS$ and MKD$: the bytes of the number as a single or a double; IllegalFunctionCall above limit.
template <typename Number>
int numberBytes(core::Interpreter& in, const FunctionCall& call, double limit, Value& result)
{
    double n = 0;
    TRY_BASIC(requiredNumber(in, call.arguments, 0, n));
    if (std::fabs(n) > limit)
        return in.raise(ErrorId::IllegalFunctionCall);
    auto number = static_cast<Number>(n);
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return stringResult(std::move(bytes), result);
}

std::string twoDigits(int value)
{
    int last = (value + 100) % 100;
    std::string text = std::to_string(last);
    return last < 10 ? "0" + text : text;
}

} // namespace

int characterOfCode(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double n = 0;
    TRY_BASIC(roundedInRange(in, call, 0, 0, 255, n));
    return stringResult(std::string(1, static_cast<char>(static_cast<int>(n))), result);
}

int leftPart(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const std::string* text = nullptr;
    size_t count = 0;
    TRY_BASIC(partOf(in, call, text, count));
    return stringResult(text->substr(0, count), result);
}

int rightPart(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const std::string* text = nullptr;
    size_t count = 0;
    TRY_BASIC(partOf(in, call, text, count));
    return stringResult(text->substr(text->size() - count), result);
}

// MID$(text, from [, count]).
int middlePart(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& args = call.arguments;
    const std::string* text = nullptr;
    TRY_BASIC(requiredString(in, args, 0, text));
    double from = 0;
    TRY_BASIC(requiredNumber(in, args, 1, from));
    from = std::trunc(from);
    double count = 1e9;
    if (args.size() > 2)
        TRY_BASIC(requiredNumber(in, args, 2, count));
    count = std::trunc(count);
    if (from < 1 || count < 0)
        return in.raise(ErrorId::IllegalFunctionCall);
    if (from > static_cast<double>(text->size()))
        return stringResult("", result);
    auto start = static_cast<size_t>(from) - 1;
    return stringResult(text->substr(start, count > 1e6 ? std::string::npos : static_cast<size_t>(count)), result);
}

int blanks(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double n = 0;
    TRY_BASIC(roundedInRange(in, call, 0, 0, 255, n));
    return stringResult(std::string(static_cast<size_t>(n), ' '), result);
}

int hexadecimalText(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return inBase(in, call, 16, result);
}

int octalText(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return inBase(in, call, 8, result);
}

int integerBytes(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double n = 0;
    TRY_BASIC(roundedInRange(in, call, 0, -32768, 32767, n));
    auto number = static_cast<int16_t>(n);
    std::string bytes(2, '\0');
    std::memcpy(bytes.data(), &number, 2);
    return stringResult(std::move(bytes), result);
}

int singleBytes(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return numberBytes<float>(in, call, 1.701410009187828e38, result);
}

int doubleBytes(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return numberBytes<double>(in, call, 1.701411834604692e38, result);
}

int numberText(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& args = call.arguments;
    if (args.empty() || args[0].isString() || args[0].empty)
        return in.raise(ErrorId::TypeMismatch);
    return stringResult(StrNumberText(numberValueText(args[0])), result);
}

// STRING$(n, code) and STRING$(n, text): n times the character, or the text's first byte.
int repeatedCharacter(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& args = call.arguments;
    double n = 0;
    TRY_BASIC(roundedInRange(in, call, 0, 1, 255, n));
    if (args.size() < 2)
        return in.raise(ErrorId::SyntaxError);
    char c = 0;
    if (args[1].isString()) {
        if (args[1].text.empty())
            return in.raise(ErrorId::IllegalFunctionCall);
        c = args[1].text[0];
    } else {
        double code = core::roundHalfAwayFromZero(args[1].number);
        if (code < 0 || code > 255)
            return in.raise(ErrorId::IllegalFunctionCall);
        c = static_cast<char>(static_cast<int>(code));
    }
    return stringResult(std::string(static_cast<size_t>(n), c), result);
}

// TAB$(n): the blanks from the print column to column n.
int blanksToColumn(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double n = 0;
    TRY_BASIC(requiredNumber(in, call.arguments, 0, n));
    double count = core::roundHalfAwayFromZero(n) - in.run().printColumn;
    if (count > 255)
        return in.raise(ErrorId::IllegalFunctionCall);
    return stringResult(count > 0 ? std::string(static_cast<size_t>(count), ' ') : std::string(), result);
}

// INPUT$(n) takes n typed keys; INPUT$(n, #f) reads n bytes of the file (or keyboard channel) f.
int typedOrReadBytes(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    double n = 0;
    TRY_BASIC(roundedInRange(in, call, 0, 1, 255, n));
    auto count = static_cast<size_t>(n);
    std::string taken;
    if (call.arguments.size() > 1) {
        double file = 0;
        TRY_BASIC(requiredNumber(in, call.arguments, 1, file));
        TRY_BASIC(bytesOfFile(in, file, count, taken));
    } else {
        TRY_BASIC(bytesTyped(in, count, taken));
    }
    return stringResult(std::move(taken), result);
}

int dateText(core::Interpreter& in, const FunctionCall&, Value& result)
{
    auto now = interpreterClock(in);
    return stringResult(
        twoDigits(now.tm_year + 1900) + "/" + twoDigits(now.tm_mon + 1) + "/" + twoDigits(now.tm_mday), result);
}

int timeText(core::Interpreter& in, const FunctionCall&, Value& result)
{
    auto now = interpreterClock(in);
    return stringResult(twoDigits(now.tm_hour) + ":" + twoDigits(now.tm_min) + ":" + twoDigits(now.tm_sec), result);
}

} // namespace tessaly::expr::builtin
