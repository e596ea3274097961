// The statements of event traps: ON KEY / STOP / TIME$ / PEN / COM GOSUB and the ON, OFF and STOP
// switches of each source.
#include <cstdlib>
#include <string>

#include "core/event_traps.h"
#include "core/find_target.h"
#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"
#include "expr/functions.h"
#include "expr/statements.h"
#include "io/file_table.h"

namespace tessaly::core {

namespace {

std::string_view statementText(Interpreter& in, int begin, int end)
{
    return in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
}

// The entry of the target written after GOSUB, looked up as GOSUB does.
int gosubTarget(Interpreter& in, int begin, int end, int& target)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t gosub = findOutsideQuotes(text, "GOSUB", static_cast<size_t>(begin));
    if (gosub == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    TRY_BASIC(target = findTarget(in, static_cast<int>(gosub) + 5, end));
    return 0;
}

// Switching a slot: the mode is stored; ON without a target is refused (function keys simply
// stay untrapped); ON fires an event that came while the trap was stopped.
int setSlotMode(Interpreter& in, int slot, TrapMode mode, bool isKey)
{
    auto& entry = in.eventTraps().sources[static_cast<size_t>(slot)];
    entry.mode = mode;
    if (mode == TrapMode::On) {
        if (entry.target == 0) {
            if (isKey) {
                entry.mode = TrapMode::NotSet;
                return 0;
            }
            return in.raise(ErrorId::IllegalFunctionCall);
        }
        if (entry.target < 0) {
            // The remembered event fires between this statement and the next.
            entry.target = -entry.target;
            markTrapDue(in, slot);
        }
    }
    return 0;
}

int switchSlot(Interpreter& in, int slot, TrapMode mode, bool isKey)
{
    int status = setSlotMode(in, slot, mode, isKey);
    in.eventTraps().updateComTrapOn();
    return status;
}

TrapMode modeOf(int switchMode) { return static_cast<TrapMode>(switchMode); }

// ON STOP GOSUB and ON PEN GOSUB: the source's target.
Outcome setGosubTarget(Interpreter& in, int begin, int end, int slot)
{
    int target = 0;
    TRY_BASIC(gosubTarget(in, begin, end, target));
    in.eventTraps().sources[static_cast<size_t>(slot)].target = target;
    return kDone;
}

// STOP and TIME$ with ON, OFF or STOP: the switch the statement was recognised with.
Outcome switchAsRecognised(Interpreter& in, int slot)
{
    return outcomeOf(switchSlot(in, slot, modeOf(in.run().switchMode), false));
}

// PEN and COM: the last of ON, OFF, STOP found decides (STOP over OFF over ON); 0 when none.
int lastModeWord(std::string_view text)
{
    int mode = 0;
    if (text.find("ON") != std::string_view::npos)
        mode = 1;
    if (text.find("OFF") != std::string_view::npos)
        mode = 2;
    if (text.find("STOP") != std::string_view::npos)
        mode = 3;
    return mode;
}

// A time of day "hh:mm:ss" in seconds; -1 when a part is out of range.
int secondsOfDay(const std::string& text)
{
    std::string rest = text;
    while (!rest.empty() && rest.front() == '"')
        rest.erase(0, 1);
    int parts[3] = {0, 0, 0};
    for (int k = 0; k < 3; ++k) {
        size_t stop = k < 2 ? rest.find(':') : rest.find('"');
        std::string piece = rest.substr(0, stop);
        rest = stop == std::string::npos ? std::string() : rest.substr(stop + 1);
        parts[k] = leadingNumber(trimBlanks(piece));
        if (!trimBlanks(piece).empty() && trimBlanks(piece)[0] == '-')
            return -1;
    }
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59)
        return -1;
    return parts[0] * 3600 + parts[1] * 60 + parts[2];
}

} // namespace

Outcome stmtOnKeyGosub(Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t gosub = findOutsideQuotes(text, "GOSUB", static_cast<size_t>(begin));
    if (gosub == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    auto& traps = in.eventTraps();
    int key = 0;
    int failed = 0;
    splitAtTopLevel(text.substr(gosub + 5), [](char c) { return c == ','; }, [&](std::string_view piece, char) {
        if (key >= 10)
            return false;
        auto item = trimBlanks(piece);
        int target = 0;
        if (!item.empty() && item[0] == '*') {
            target = in.prepared().findLabel(item);
            if (target == 0)
                failed = in.raise(ErrorId::UndefinedLabel);
        } else if (!item.empty()) {
            target = in.prepared().findLine(in.program(), leadingNumber(item));
            if (target == 0)
                failed = in.raise(ErrorId::UndefinedLineNumber);
        }
        if (failed != 0)
            return false;
        traps.sources[static_cast<size_t>(trap::kFirstKey + key++)].target = target;
        return true;
    });
    return outcomeOf(failed);
}

Outcome stmtKeySwitch(Interpreter& in, int begin, int end)
{
    auto mode = modeOf(in.run().switchMode);
    auto text = statementText(in, begin, end);
    auto& traps = in.eventTraps();
    auto open = text.find('(');
    auto word = text.find_first_of("OS");
    if (open != std::string_view::npos && (word == std::string_view::npos || open < word)) {
        auto close = matchingParen(text, open);
        if (close == std::string_view::npos)
            return in.raise(ErrorId::SyntaxError);
        expr::Value value;
        TRY_BASIC(expr::evaluateText(in, text.substr(open + 1, close - open - 1), value));
        int n = value.isString() || value.empty ? 0 : expr::integerOf(value);
        if (n < 1 || n > 10)
            return in.raise(ErrorId::SyntaxError);
        TRY_BASIC(switchSlot(in, trap::kFirstKey + n - 1, mode, true));
    } else if (trimBlanks(text.substr(0, word)).empty()) {
        // KEY ON, KEY OFF, KEY STOP: all ten keys.
        for (int k = 0; k < 10; ++k)
            TRY_BASIC(switchSlot(in, trap::kFirstKey + k, mode, true));
    }
    traps.updateKeyTrapsActive();
    return kDone;
}

Outcome stmtOnStopGosub(Interpreter& in, int begin, int end)
{
    return setGosubTarget(in, begin, end, trap::kStop);
}

Outcome stmtStopSwitch(Interpreter& in, int, int)
{
    return switchAsRecognised(in, trap::kStop);
}

Outcome stmtOnTimeGosub(Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t equals = text.find('=', static_cast<size_t>(begin));
    size_t gosub = equals == std::string_view::npos ? equals : findOutsideQuotes(text, "GOSUB", equals);
    if (gosub == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    expr::Value value;
    TRY_BASIC(expr::evaluateText(in, text.substr(equals + 1, gosub - equals - 1), value));
    int alarm = secondsOfDay(value.isString() ? value.text : std::to_string(expr::integerOf(value)));
    if (alarm < 0)
        return in.raise(ErrorId::IllegalFunctionCall);
    int target = 0;
    TRY_BASIC(target = findTarget(in, static_cast<int>(gosub) + 5, end));
    in.eventTraps().sources[trap::kTime].target = target;
    std::tm now = expr::interpreterClock(in);
    int delay = alarm - (now.tm_hour * 3600 + now.tm_min * 60 + now.tm_sec);
    // A time already past sounds the alarm at the next turn of the clock's day.
    if (delay <= 0)
        delay += 24 * 3600;
    in.host().startTimer(TimerId::TimeAlarm, delay * 1000);
    return kDone;
}

Outcome stmtTimeSwitch(Interpreter& in, int, int)
{
    return switchAsRecognised(in, trap::kTime);
}

Outcome stmtOnPenGosub(Interpreter& in, int begin, int end)
{
    return setGosubTarget(in, begin, end, trap::kPen);
}

Outcome stmtPen(Interpreter& in, int begin, int end)
{
    auto text = statementText(in, begin, end);
    int mode = lastModeWord(text);
    if (mode != 0) {
        TRY_BASIC(switchSlot(in, trap::kPen, modeOf(mode), false));
        return kDone;
    }
    if (trimBlanks(text).empty())
        return kDone;
    // PENCIL=3 and the like: an assignment to a variable whose name starts with PEN.
    if (findOutsideQuotes(text, "=", 0) != std::string_view::npos)
        return expr::stmtLet(in, begin - 3, end);
    return in.raise(ErrorId::SyntaxError);
}

// The trap slot of ON COM(n) GOSUB and COM(n): n is the expression in the parentheses (a string's
// leading quotes left out, read as a whole number; 0 is port 1); the slot is that of the serial
// port's slot that has port n open.
int comTrapSlot(Interpreter& in, std::string_view text, size_t open, int& slot)
{
    int port = 1;
    if (open != std::string_view::npos) {
        size_t close = text.find(')', open);
        if (close == std::string_view::npos)
            return in.raise(ErrorId::SyntaxError);
        expr::Value value;
        TRY_BASIC(expr::evaluateText(in, text.substr(open + 1, close - open - 1), value));
        if (value.isString()) {
            size_t digits = value.text.find_first_not_of('"');
            port = digits == std::string::npos ? 0 : std::atoi(value.text.c_str() + digits);
        } else {
            port = expr::integerOf(value);
        }
        if (port < 0)
            return in.raise(ErrorId::IllegalFunctionCall);
        port = port == 0 ? 1 : port;
    }
    int k = in.files().comPorts().slotOfPort(port);
    if (k == 0)
        return in.raise(ErrorId::IllegalFunctionCall);
    slot = trap::kFirstCom + k - 1;
    return 0;
}

Outcome stmtComTraps(Interpreter& in, int begin, int end)
{
    auto text = statementText(in, begin, end);
    bool isSwitch = in.run().statementCode != static_cast<int>(Stmt::OnComGosub);
    auto open = text.find('(');
    int mode = lastModeWord(isSwitch ? text : std::string_view());
    if (isSwitch && (open == std::string_view::npos || mode == 0))
        return in.raise(ErrorId::SyntaxError);
    int slot = 0;
    TRY_BASIC(comTrapSlot(in, text, open, slot));
    if (!isSwitch) {
        int target = 0;
        TRY_BASIC(gosubTarget(in, begin, end, target));
        in.eventTraps().sources[static_cast<size_t>(slot)].target = target;
        return kDone;
    }
    // The slot was found by its port, so it is open: COM(n) ON of a port that is not open has
    // already been refused above.
    TRY_BASIC(switchSlot(in, slot, modeOf(mode), false));
    return kDone;
}

} // namespace tessaly::core
