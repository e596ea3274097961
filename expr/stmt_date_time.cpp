// The DATE$ and TIME$ statements: they set the clock that the DATE$ and TIME$ functions read, as
// an offset from the computer's clock, so the set date and time run on.
#include <ctime>
#include <string>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "expr/function_state.h"
#include "expr/statements.h"

namespace tessaly::expr {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// The literal after "=": its three fields separated by the given character.
bool readFields(std::string_view text, char separator, int fields[3])
{
    auto open = text.find('"');
    auto equals = text.find('=');
    if (open == std::string_view::npos || equals == std::string_view::npos || equals > open)
        return false;
    auto close = text.find('"', open + 1);
    auto literal = text.substr(open + 1, close == std::string_view::npos ? std::string_view::npos : close - open - 1);
    int field = 0;
    std::string digits;
    for (size_t pos = 0; pos <= literal.size(); ++pos) {
        if (pos == literal.size() || literal[pos] == separator) {
            if (field > 2 || digits.empty() || digits.size() > 4)
                return false;
            fields[field++] = std::stoi(digits);
            digits.clear();
            continue;
        }
        if (literal[pos] < '0' || literal[pos] > '9')
            return false;
        digits += literal[pos];
    }
    return field == 3;
}

std::time_t secondsOf(int year, int month, int day, int hour, int minute, int second)
{
    std::tm value {};
    value.tm_year = year - 1900;
    value.tm_mon = month - 1;
    value.tm_mday = day;
    value.tm_hour = hour;
    value.tm_min = minute;
    value.tm_sec = second;
    return timegm(&value);
}

bool dateExists(int year, int month, int day)
{
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12 || day < 1)
        return false;
    bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    int days = kDays[month - 1] + (month == 2 && leap ? 1 : 0);
    return day <= days;
}

} // namespace

Outcome stmtDate(core::Interpreter& in, int begin, int end)
{
    int fields[3] = {};
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    if (!readFields(text, '/', fields))
        return in.raise(ErrorId::IllegalFunctionCall);
    int year = fields[0];
    if (year < 0 || year > 99 || !dateExists(2000 + year, fields[1], fields[2]))
        return in.raise(ErrorId::IllegalFunctionCall);
    auto now = in.host().localTime();
    auto today = secondsOf(now.year, now.month, now.day, 0, 0, 0);
    auto set = secondsOf(2000 + year, fields[1], fields[2], 0, 0, 0);
    in.functionState().dateOffsetDays = static_cast<double>(set - today) / 86400.0;
    return kDone;
}

Outcome stmtTime(core::Interpreter& in, int begin, int end)
{
    int fields[3] = {};
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    if (!readFields(text, ':', fields))
        return in.raise(ErrorId::IllegalFunctionCall);
    if (fields[0] > 23 || fields[1] > 59 || fields[2] > 59)
        return in.raise(ErrorId::IllegalFunctionCall);
    auto now = in.host().localTime();
    long current = now.hour * 3600L + now.minute * 60L + now.second;
    long set = fields[0] * 3600L + fields[1] * 60L + fields[2];
    in.functionState().timeOffsetSeconds = static_cast<double>(set - current);
    return kDone;
}

} // namespace tessaly::expr
