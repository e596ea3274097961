// The interpreter's clock: the host's local time moved by what DATE$ and TIME$ statements set.
#include <ctime>

#include "core/interpreter.h"
#include "expr/function_state.h"
#include "expr/functions.h"

namespace tessaly::expr {

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

} // namespace tessaly::expr
