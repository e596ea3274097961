// The numeric functions of strings (ASC, LEN, VAL, INSTR and CVI/CVS/CVD) and RND.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "core/interpreter.h"
#include "expr/builtin_functions.h"
#include "expr/function_state.h"
#include "expr/number_text.h"

namespace tessaly::expr::builtin {

using core::ErrorId;

namespace {

// CVI, CVS and CVD: the bytes of MKI$, MKS$ or MKD$ read back; the string must have their size.
int numberFromBytes(core::Interpreter& in, const FunctionCall& call, size_t size, Value& result)
{
    const std::string* bytes = nullptr;
    TRY_BASIC(requiredString(in, call.arguments, 0, bytes));
    if (bytes->size() != size)
        return in.raise(ErrorId::IllegalFunctionCall);
    double y = 0;
    if (size == 2) {
        int16_t v = 0;
        std::memcpy(&v, bytes->data(), 2);
        y = v;
    } else if (size == 4) {
        float v = 0;
        std::memcpy(&v, bytes->data(), 4);
        y = v;
    } else {
        std::memcpy(&y, bytes->data(), 8);
    }
    if (!std::isfinite(y))
        return in.raise(ErrorId::Overflow);
    return numberResult(in, y, result);
}

// VAL: &H and &O (or & alone) as 32-bit integers, else a decimal number.
double valueOfText(std::string_view text)
{
    size_t pos = 0;
    while (pos < text.size() && text[pos] == ' ')
        ++pos;
    if (pos < text.size() && text[pos] == '&') {
        ++pos;
        int base = 8;
        if (pos < text.size() && (text[pos] == 'H' || text[pos] == 'h')) {
            base = 16;
            ++pos;
        } else if (pos < text.size() && (text[pos] == 'O' || text[pos] == 'o')) {
            ++pos;
        }
        uint32_t number = 0;
        for (; pos < text.size(); ++pos) {
            char c = text[pos];
            int digit = (c >= '0' && c <= '9') ? c - '0'
                : (c >= 'A' && c <= 'F') ? c - 'A' + 10
                : (c >= 'a' && c <= 'f') ? c - 'a' + 10
                                         : 99;
            if (digit >= base)
                break;
            number = number * static_cast<uint32_t>(base) + static_cast<uint32_t>(digit);
        }
        return static_cast<int32_t>(number);
    }
    return ReadNumberText(text);
}

} // namespace

int characterCode(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const std::string* text = nullptr;
    TRY_BASIC(requiredString(in, call.arguments, 0, text));
    if (text->empty())
        return in.raise(ErrorId::IllegalFunctionCall);
    return numberResult(in, static_cast<unsigned char>((*text)[0]), result);
}

int textLength(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const std::string* text = nullptr;
    TRY_BASIC(requiredString(in, call.arguments, 0, text));
    return numberResult(in, static_cast<double>(text->size()), result);
}

int numberFromText(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const std::string* text = nullptr;
    TRY_BASIC(requiredString(in, call.arguments, 0, text));
    return numberResult(in, valueOfText(*text), result);
}

int integerFromBytes(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return numberFromBytes(in, call, 2, result);
}

int singleFromBytes(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return numberFromBytes(in, call, 4, result);
}

int doubleFromBytes(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    return numberFromBytes(in, call, 8, result);
}

// INSTR([start,] text, sought): where sought first stands in text from start on, 0 when nowhere.
int textPosition(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& args = call.arguments;
    size_t first = 0;
    double start = 1;
    if (!args.empty() && !args[0].isString()) {
        start = args[0].number;
        first = 1;
    }
    const std::string* text = nullptr;
    const std::string* sought = nullptr;
    TRY_BASIC(requiredString(in, args, first, text));
    TRY_BASIC(requiredString(in, args, first + 1, sought));
    auto from = static_cast<size_t>(start < 1 ? 0 : std::min(std::trunc(start) - 1, 1e9));
    auto found = from > text->size() ? std::string::npos : text->find(*sought, from);
    return numberResult(in, found == std::string::npos ? 0 : static_cast<double>(found + 1), result);
}

// RND and RND(x): x > 0 or none the next value, x < 0 from the seed again, x = 0 the last.
int randomNumber(core::Interpreter& in, const FunctionCall& call, Value& result)
{
    const auto& args = call.arguments;
    bool hasArgument = call.hasParentheses && !args.empty() && !args[0].empty;
    double x = 0;
    TRY_BASIC(numberOrZero(in, args, 0, x));
    return numberResult(in, in.functionState().random.rnd(hasArgument, x), result);
}

} // namespace tessaly::expr::builtin
