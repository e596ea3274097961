// The interpreter's platform on the desktop: beep, timers, clock, clipboard, message boxes, and the
// document's modified flag, and the line printer.
#pragma once

#include <QObject>
#include <QTimer>
#include <array>
#include <functional>
#include <string>

#include "app/desktop/line_printer.h"
#include "app/desktop/machine_ports.h"
#include "core/host.h"

namespace tessaly::desktop {

class Beeper;

class QtHost final : public QObject, public core::Host {
    Q_OBJECT
public:
    explicit QtHost(QObject* parent = nullptr);

    void beep() override;
    void startTimer(core::TimerId id, int periodMs) override;
    void stopTimer(core::TimerId id) override;
    bool hasPrinter() override { return m_linePrinter.available(); }
    core::PrinterWrite printerWrite(std::string_view bytes) override { return m_linePrinter.write(bytes); }
    void printerEndJob() override;
    core::LocalTime localTime() override;
    void setDocumentModified(bool modified) override;
    void programLoaded(std::string_view path) override;
    std::string clipboardText() override;
    void setClipboardText(std::string_view text) override;
    void setClipboardImage(const uint32_t* pixels, int width, int height) override;
    void clearClipboard() override;
    core::MessageAnswer messageBox(std::string_view text, core::MessageButtons buttons) override;
    bool portsAvailable() override { return m_ports.available(); }
    uint8_t portIn(uint16_t port) override { return m_ports.in(port); }
    void portOut(uint16_t port, uint8_t value) override { m_ports.out(port, value); }

    LinePrinter& linePrinter() { return m_linePrinter; }
    // The font that draws printed characters; printing waits until it is set.
    void setPrinterFont(const screen::Font* font) { m_printerFont = font; }

signals:
    void timerFired(tessaly::core::TimerId id);
    void documentModified(bool modified);
    void programFileLoaded(const QString& path);

private:
    Beeper* m_beeper;
    std::array<QTimer, 2> m_timers;
    LinePrinter m_linePrinter;
    const screen::Font* m_printerFont = nullptr;
    MachinePorts m_ports;
};

} // namespace tessaly::desktop
