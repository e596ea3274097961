// The string functions: CHR$ ... TIME$, with their range checks.
#include <cmath>
#include <cstring>
#include <ctime>
#include <string>

#include "core/interpreter.h"
#include "core/rounding.h"
#include "expr/evaluator.h"
#include "expr/functions.h"
#include "expr/number_text.h"
#include "io/file_functions.h"
#include "io/file_table.h"

namespace tessaly::expr {

namespace {

using core::ErrorId;

enum StringFn {
    Chr = 1, Left, Right, Mid, Space, Hex, Oct, Mki, Mks, Mkd, Str, StringOf, Inkey, Spc, Tab, InputOf, Date, Time
};

int numberArg(core::Interpreter& in, const std::vector<Value>& args, size_t k, double& x)
{
    if (k >= args.size() || args[k].empty)
        return in.raise(ErrorId::SyntaxError);
    if (args[k].isString())
        return in.raise(ErrorId::TypeMismatch);
    x = args[k].number;
    return 0;
}

int stringArg(core::Interpreter& in, const std::vector<Value>& args, size_t k, const std::string*& s)
{
    if (k >= args.size() || !args[k].isString())
        return in.raise(ErrorId::SyntaxError);
    s = &args[k].text;
    return 0;
}

std::string inBase(uint32_t value, int base)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(0, 1, kDigits[value % static_cast<uint32_t>(base)]);
        value /= static_cast<uint32_t>(base);
    } while (value != 0);
    return text;
}

std::string twoDigits(int value)
{
    int last = (value + 100) % 100;
    std::string text = std::to_string(last);
    return last < 10 ? "0" + text : text;
}

} // namespace

std::tm interpreterClock(core::Interpreter& in)
{
    auto now = in.host().localTime();
    std::tm local {};
    local.tm_year = now.year - 1900;
    local.tm_mon = now.month - 1;
    local.tm_mday = now.day;
    local.tm_hour = now.hour;
    local.tm_min = now.minute;
    local.tm_sec = now.second;
    local.tm_isdst = -1;
    std::time_t seconds = timegm(&local);
    const auto& state = in.functionState();
    seconds += static_cast<std::time_t>(state.dateOffsetDays * 86400 + state.timeOffsetSeconds);
    std::tm shifted {};
    gmtime_r(&seconds, &shifted);
    return shifted;
}

int callStringFunction(core::Interpreter& in, int code, const std::vector<Value>& args, Value& result)
{
    double n = 0;
    const std::string* s = nullptr;
    auto illegal = [&] { return in.raise(ErrorId::IllegalFunctionCall); };
    auto text = [&](std::string value) {
        result = Value::makeString(std::move(value));
        return 0;
    };
    switch (code) {
    case Chr:
        TRY_BASIC(numberArg(in, args, 0, n));
        n = core::roundHalfAwayFromZero(n);
        if (n < 0 || n > 255)
            return illegal();
        return text(std::string(1, static_cast<char>(static_cast<int>(n))));
    case Left:
    case Right: {
        TRY_BASIC(stringArg(in, args, 0, s));
        TRY_BASIC(numberArg(in, args, 1, n));
        n = std::trunc(n);
        if (n < 0)
            return illegal();
        size_t count = n > static_cast<double>(s->size()) ? s->size() : static_cast<size_t>(n);
        return text(code == Left ? s->substr(0, count) : s->substr(s->size() - count));
    }
    case Mid: {
        TRY_BASIC(stringArg(in, args, 0, s));
        double m = 0;
        TRY_BASIC(numberArg(in, args, 1, m));
        m = std::trunc(m);
        double count = 1e9;
        if (args.size() > 2)
            TRY_BASIC(numberArg(in, args, 2, count));
        count = std::trunc(count);
        if (m < 1 || count < 0)
            return illegal();
        if (m > static_cast<double>(s->size()))
            return text("");
        auto from = static_cast<size_t>(m) - 1;
        return text(s->substr(from, count > 1e6 ? std::string::npos : static_cast<size_t>(count)));
    }
    case Space:
    case Spc:
        TRY_BASIC(numberArg(in, args, 0, n));
        n = core::roundHalfAwayFromZero(n);
        if (n < 0 || n > 255)
            return illegal();
        return text(std::string(static_cast<size_t>(n), ' '));
    case Hex:
    case Oct:
        TRY_BASIC(numberArg(in, args, 0, n));
        n = core::roundHalfAwayFromZero(n);
        if (n < -32768 || n > 65535)
            return illegal();
        if (n < 0)
            n += 65536;
        return text(inBase(static_cast<uint32_t>(n), code == Hex ? 16 : 8));
    case Mki: {
        TRY_BASIC(numberArg(in, args, 0, n));
        n = core::roundHalfAwayFromZero(n);
        if (n < -32768 || n > 32767)
            return illegal();
        auto v = static_cast<int16_t>(n);
        std::string bytes(2, '\0');
        std::memcpy(bytes.data(), &v, 2);
        return text(bytes);
    }
    case Mks: {
        TRY_BASIC(numberArg(in, args, 0, n));
        if (std::fabs(n) > 1.701410009187828e38)
            return illegal();
        auto v = static_cast<float>(n);
        std::string bytes(4, '\0');
        std::memcpy(bytes.data(), &v, 4);
        return text(bytes);
    }
    case Mkd: {
        TRY_BASIC(numberArg(in, args, 0, n));
        if (std::fabs(n) > 1.701411834604692e38)
            return illegal();
        std::string bytes(8, '\0');
        std::memcpy(bytes.data(), &n, 8);
        return text(bytes);
    }
    case Str: {
        if (args.empty() || args[0].isString() || args[0].empty)
            return in.raise(ErrorId::TypeMismatch);
        return text(StrNumberText(numberValueText(args[0])));
    }
    case StringOf: {
        TRY_BASIC(numberArg(in, args, 0, n));
        n = core::roundHalfAwayFromZero(n);
        if (n < 1 || n > 255)
            return illegal();
        if (args.size() < 2)
            return in.raise(ErrorId::SyntaxError);
        char c = 0;
        if (args[1].isString()) {
            if (args[1].text.empty())
                return illegal();
            c = args[1].text[0];
        } else {
            double k = core::roundHalfAwayFromZero(args[1].number);
            if (k < 0 || k > 255)
                return illegal();
            c = static_cast<char>(static_cast<int>(k));
        }
        return text(std::string(static_cast<size_t>(n), c));
    }
    case Inkey: {
        in.host().keyboardRead();
        auto& keys = in.keyboard();
        int key = keys.lastKey;
        keys.lastKey = 0;
        if (key == 0 || key == 16)
            return text("");
        return text(std::string(1, static_cast<char>(key & 0xFF)));
    }
    case Tab: {
        TRY_BASIC(numberArg(in, args, 0, n));
        double blanks = core::roundHalfAwayFromZero(n) - in.run().printColumn;
        if (blanks > 255)
            return illegal();
        return text(blanks > 0 ? std::string(static_cast<size_t>(blanks), ' ') : std::string());
    }
    case InputOf: {
        TRY_BASIC(numberArg(in, args, 0, n));
        n = core::roundHalfAwayFromZero(n);
        if (n < 1 || n > 255)
            return illegal();
        auto count = static_cast<size_t>(n);
        std::string taken;
        if (args.size() > 1) {
            // INPUT$(n, #f) reads the file (or the keyboard channel) that f names.
            double file = 0;
            TRY_BASIC(numberArg(in, args, 1, file));
            file = std::trunc(file);
            int number = file >= 0 && file <= io::kHighestFileNumber ? static_cast<int>(file) : 0;
            TRY_BASIC(io::readFileBytes(in, number, count, taken));
        } else {
            TRY_BASIC(io::takeTypedKeys(in, count, taken));
        }
        return text(std::move(taken));
    }
    case Date: {
        auto now = interpreterClock(in);
        return text(twoDigits(now.tm_year + 1900) + "/" + twoDigits(now.tm_mon + 1) + "/" + twoDigits(now.tm_mday));
    }
    case Time: {
        auto now = interpreterClock(in);
        return text(twoDigits(now.tm_hour) + ":" + twoDigits(now.tm_min) + ":" + twoDigits(now.tm_sec));
    }
    default:
        return in.raise(ErrorId::SyntaxError);
    }
}

} // namespace tessaly::expr
