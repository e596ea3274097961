// A serial device opened by its path: a serial port (/dev/ttyS0), a USB adapter (/dev/ttyUSB0,
// /dev/ttyACM0) or a pseudo-terminal (/dev/pts/N). The line is set through termios; reading and
// writing never block: pump() moves what the device has and takes into two queues.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <termios.h>

#include "io/com_settings.h"

namespace tessaly::io {

// The size of the input and the output queue.
inline constexpr size_t kComQueueSize = 8192;

// Makes a terminal's line raw with the frame, speed and flow control of the settings; false for a
// speed that POSIX lines do not have.
bool configureLine(const ComSettings& settings, termios& line);

class SerialDevice {
public:
    // Opens and sets up the device; nullptr when it cannot be opened or does not take the settings
    // (a speed the line does not have, a path that is no terminal).
    static std::unique_ptr<SerialDevice> open(const std::string& path, const ComSettings& settings);
    ~SerialDevice();
    SerialDevice(const SerialDevice&) = delete;
    SerialDevice& operator=(const SerialDevice&) = delete;

    // Reads what has arrived into the input queue (up to its size) and writes queued output as far
    // as the device takes it. A device that went away (unplugged, the other end of a
    // pseudo-terminal closed) is closed here.
    void pump();
    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }

    // The bytes received and not yet taken.
    [[nodiscard]] std::string_view received() const { return m_input; }
    void take(size_t count);
    // Every byte received since the device was opened.
    [[nodiscard]] uint64_t receivedTotal() const { return m_receivedTotal; }

    [[nodiscard]] size_t queuedOutput() const { return m_output.size(); }
    // Queues bytes to send; the caller has made sure they fit.
    void send(std::string_view bytes);

    // The partner is ready (DSR). A line without modem lines (a pseudo-terminal) always is.
    [[nodiscard]] bool partnerReady() const;

private:
    explicit SerialDevice(int fd) : m_fd(fd) {}
    void lost();

    int m_fd = -1;
    std::string m_input;
    std::string m_output;
    uint64_t m_receivedTotal = 0;
};

} // namespace tessaly::io
