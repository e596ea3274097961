// Everything the interpreter needs from the platform: sound, timers, printer, clock, document.
// (Files and serial ports are POSIX devices, opened by io/ itself in the window and the runner.)
// The desktop shell and the headless runner each implement it; the interpreter never sees either.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
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

// What became of bytes sent to the printer.
enum class PrinterWrite : uint8_t { Written, NoPrinter, Failed };

enum class MessageButtons : uint8_t { Ok, RetryCancel, YesNoCancel };
enum class MessageAnswer : uint8_t { Ok, Retry, Cancel, Yes, No };

class Host {
public:
    virtual ~Host() = default;

    // One tone of 800 Hz for 40 ms.
    virtual void beep() {}
    // The host calls Interpreter::onTimer(id) every period until the timer is stopped.
    virtual void startTimer(TimerId id, int periodMs) { (void)id, (void)periodMs; }
    virtual void stopTimer(TimerId id) { (void)id; }
    // The system printer: whether there is one (a printer port can be opened), bytes for it
    // (LPRINT, LLIST, SAVE "LPTn:", a printer-port channel; Shift-JIS, unchanged), and the end of
    // a print job (a run or direct command ended, a printer-port channel was closed): what was
    // written since goes to paper as one job.
    [[nodiscard]] virtual bool hasPrinter() { return false; }
    virtual PrinterWrite printerWrite(std::string_view bytes) { (void)bytes; return PrinterWrite::NoPrinter; }
    virtual void printerEndJob() {}
    virtual LocalTime localTime() { return {}; }
    // The program is about to read the keyboard (INKEY$, INPUT$): a host that feeds keys from
    // elsewhere delivers the next one now, through Interpreter::onChar.
    virtual void keyboardRead() {}
    // The program was changed (a line stored or deleted) or saved.
    virtual void setDocumentModified(bool modified) { (void)modified; }
    // A LOAD statement read the program from path: the document takes its name.
    virtual void programLoaded(std::string_view path) { (void)path; }

    // Plain text of the clipboard (Shift-JIS), and putting text or a 640 x 400 RGB image there.
    virtual std::string clipboardText() { return {}; }
    virtual void setClipboardText(std::string_view text) { (void)text; }
    virtual void setClipboardImage(const uint32_t* pixels, int width, int height) { (void)pixels, (void)width, (void)height; }
    virtual void clearClipboard() {}

    // A modal message; a host without a window answers as the user would to go on (Ok, Cancel).
    virtual MessageAnswer messageBox(std::string_view text, MessageButtons buttons)
    {
        (void)text;
        return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Cancel;
    }

    // The machine's I/O ports; false when the platform gives no access to them.
    [[nodiscard]] virtual bool portsAvailable() { return false; }
    virtual uint8_t portIn(uint16_t port) { (void)port; return 0xFF; }
    virtual void portOut(uint16_t port, uint8_t value) { (void)port, (void)value; }
};

} // namespace tessaly::core
