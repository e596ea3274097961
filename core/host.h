// Everything the interpreter needs from the platform: sound, timers, printer, clock, document.
// The desktop shell and the headless runner each implement it; the interpreter never sees either.
#pragma once

#include <string_view>

namespace tessaly::core {

struct LocalTime {
    int year = 2000, month = 1, day = 1;
    int hour = 0, minute = 0, second = 0;
};

enum class TimerId : int {
    TimeAlarm = 1,     // the ON TIME$ alarm
    ContinuousBeep = 2 // BEEP 1: one tone every 50 ms
};

class Host {
public:
    virtual ~Host() = default;

    // One tone of 800 Hz for 40 ms.
    virtual void beep() {}
    // The host calls Interpreter::onTimer(id) every period until the timer is stopped.
    virtual void startTimer(TimerId id, int periodMs) { (void)id, (void)periodMs; }
    virtual void stopTimer(TimerId id) { (void)id; }
    // Bytes for the printer (LPRINT, LLIST), Shift-JIS.
    virtual void printerWrite(std::string_view bytes) { (void)bytes; }
    virtual LocalTime localTime() { return {}; }
    // The program was changed (a line stored or deleted) or saved.
    virtual void setDocumentModified(bool modified) { (void)modified; }
};

} // namespace tessaly::core
