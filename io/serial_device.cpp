#include "io/serial_device.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace tessaly::io {

namespace {

// The speeds a POSIX line has. Another speed in the accepted range (14400, 256000) cannot be set:
// the device is then not opened, as a port that does not take the settings.
bool speedConstant(int speed, speed_t& constant)
{
    struct Rate {
        int speed;
        speed_t constant;
    };
    static constexpr std::array<Rate, 12> kRates {{{110, B110}, {300, B300}, {600, B600}, {1200, B1200},
        {2400, B2400}, {4800, B4800}, {9600, B9600}, {19200, B19200}, {38400, B38400}, {57600, B57600},
        {115200, B115200}, {230400, B230400}}};
    for (const auto& rate : kRates) {
        if (rate.speed == speed) {
            constant = rate.constant;
            return true;
        }
    }
    return false;
}

// The line of a terminal, made raw and given the frame, speed and flow control of the settings.
bool setLine(int fd, const ComSettings& settings)
{
    termios line {};
    if (::tcgetattr(fd, &line) != 0 || !configureLine(settings, line))
        return false;
    if (::tcsetattr(fd, TCSANOW, &line) != 0)
        return false;
    // DTR and RTS on (a line without modem lines refuses; that is no failure).
    int bits = TIOCM_DTR | TIOCM_RTS;
    (void)::ioctl(fd, TIOCMBIS, &bits);
    return true;
}

// What one read or write did: moved bytes (or was interrupted: try again), found the device with
// nothing to give or no room to take, or failed because the device is gone.
enum class Step { Moved, Blocked, Lost };

Step stepOf(ssize_t n)
{
    if (n >= 0 || errno == EINTR)
        return Step::Moved;
    return errno == EAGAIN || errno == EWOULDBLOCK ? Step::Blocked : Step::Lost;
}

} // namespace

bool configureLine(const ComSettings& settings, termios& line)
{
    speed_t speed = 0;
    if (!speedConstant(settings.speed, speed))
        return false;
    ::cfmakeraw(&line);
    line.c_cflag |= CLOCAL | CREAD;
    line.c_cflag &= ~(CSIZE | PARENB | PARODD | CSTOPB);
    line.c_cflag |= settings.dataBits == 7 ? CS7 : CS8;
    if (settings.parity != 'N')
        line.c_cflag |= PARENB | (settings.parity == 'O' ? PARODD : 0);
    // POSIX lines have one or two stop bits; 1.5 (a five-bit frame's) is sent as two.
    if (settings.stopBits != "1")
        line.c_cflag |= CSTOPB;
    line.c_cflag |= CRTSCTS;
    line.c_iflag &= ~(IXON | IXOFF);
    if (settings.handshaking == Handshaking::RequestToSendXonXoff)
        line.c_iflag |= IXON | IXOFF;
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    ::cfsetispeed(&line, speed);
    ::cfsetospeed(&line, speed);
    return true;
}

std::unique_ptr<SerialDevice> SerialDevice::open(const std::string& path, const ComSettings& settings)
{
    int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return nullptr;
    if (!::isatty(fd) || !setLine(fd, settings)) {
        ::close(fd);
        return nullptr;
    }
    return std::unique_ptr<SerialDevice>(new SerialDevice(fd));
}

SerialDevice::~SerialDevice()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

void SerialDevice::lost()
{
    ::close(m_fd);
    m_fd = -1;
}

void SerialDevice::pump()
{
    if (m_fd < 0)
        return;
    std::array<char, 1024> chunk {};
    Step step = Step::Moved;
    while (step != Step::Blocked && m_input.size() < kComQueueSize) {
        size_t room = std::min(chunk.size(), kComQueueSize - m_input.size());
        ssize_t n = ::read(m_fd, chunk.data(), room);
        step = stepOf(n);
        if (n > 0) {
            m_input.append(chunk.data(), static_cast<size_t>(n));
            m_receivedTotal += static_cast<uint64_t>(n);
        }
        // A read of nothing at all is the end of the file: the device is gone.
        if (step == Step::Lost || n == 0)
            return lost();
    }
    step = Step::Moved;
    while (step != Step::Blocked && !m_output.empty()) {
        ssize_t n = ::write(m_fd, m_output.data(), m_output.size());
        step = stepOf(n);
        if (n > 0)
            m_output.erase(0, static_cast<size_t>(n));
        if (step == Step::Lost)
            return lost();
        if (n == 0)
            break; // took nothing: try again at the next pump
    }
}

void SerialDevice::take(size_t count)
{
    m_input.erase(0, std::min(count, m_input.size()));
}

void SerialDevice::send(std::string_view bytes)
{
    m_output.append(bytes);
    pump();
}

bool SerialDevice::partnerReady() const
{
    if (m_fd < 0)
        return false;
    int bits = 0;
    if (::ioctl(m_fd, TIOCMGET, &bits) != 0)
        return true;
    return (bits & TIOCM_DSR) != 0;
}

} // namespace tessaly::io
