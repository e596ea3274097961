// Reading standard input with poll(2): the wait watches standard input and the Ctrl+C wake-up pipe
// and ends at the deadline.
#include "app/headless/standard_input.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

#include "app/headless/interrupt_signal.h"

namespace tessaly::app {

namespace {

// Milliseconds for poll(2): -1 without a deadline, rounded up so that the wait never ends early.
int timeoutMs(Deadline until)
{
    if (!until)
        return -1;
    auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now()).count();
    return left <= 0 ? 0 : static_cast<int>(std::min<long long>(left, 1 << 30));
}

} // namespace

StandardInput::Status StandardInput::readLine(std::string& line, Deadline until)
{
    for (;;) {
        size_t end = m_buffer.find('\n', m_start);
        if (end != std::string::npos || (m_ended && m_start < m_buffer.size())) {
            size_t stop = end == std::string::npos ? m_buffer.size() : end;
            line.assign(m_buffer, m_start, stop - m_start);
            m_start = end == std::string::npos ? stop : end + 1;
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            return Status::Ready;
        }
        if (m_ended)
            return Status::Ended;
        if (Status status = fill(until); status != Status::Ready)
            return status;
    }
}

StandardInput::Status StandardInput::readByte(char& byte, Deadline until)
{
    while (m_start >= m_buffer.size()) {
        if (m_ended)
            return Status::Ended;
        if (Status status = fill(until); status != Status::Ready)
            return status;
    }
    byte = m_buffer[m_start++];
    return Status::Ready;
}

StandardInput::Status StandardInput::fill(Deadline until)
{
    if (m_start > 0) {
        m_buffer.erase(0, m_start);
        m_start = 0;
    }
    for (;;) {
        if (interruptPending())
            return Status::Interrupted;
        int wait = timeoutMs(until);
        pollfd watched[2] = {{STDIN_FILENO, POLLIN, 0}, {interruptWakeDescriptor(), POLLIN, 0}};
        int ready = poll(watched, watched[1].fd >= 0 ? 2 : 1, wait);
        if (ready < 0) {
            if (errno == EINTR)
                continue;
            m_ended = true;
            return Status::Ready;
        }
        // A Ctrl+C that came before the input is dealt with first: its handler has run by now.
        if (interruptPending())
            return Status::Interrupted;
        if (ready == 0)
            return Status::TimedOut;
        if (watched[1].revents != 0) {
            drainInterruptWake();
            continue;
        }
        if ((watched[0].revents & POLLNVAL) != 0) {
            m_ended = true;
            return Status::Ready;
        }
        char chunk[4096];
        ssize_t got = read(STDIN_FILENO, chunk, sizeof chunk);
        if (got < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (got <= 0) {
            m_ended = true;
            return Status::Ready;
        }
        m_buffer.append(chunk, static_cast<size_t>(got));
        return Status::Ready;
    }
}

} // namespace tessaly::app
