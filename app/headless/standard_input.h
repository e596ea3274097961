// Standard input of the headless runner, read through its own buffer so that a wait for a line or
// a key can also end when a timer is due or Ctrl+C arrives. The process sleeps while it waits.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace tessaly::app {

using Clock = std::chrono::steady_clock;
// The time a wait ends at the latest; none: wait as long as it takes.
using Deadline = std::optional<Clock::time_point>;

class StandardInput {
public:
    enum class Status { Ready, TimedOut, Interrupted, Ended };

    // The next line without its line end (a last line without one counts as a line).
    Status readLine(std::string& line, Deadline until);
    // The next byte.
    Status readByte(char& byte, Deadline until);

private:
    // Waits until more bytes have come (or the input has ended): Ready, or why the wait ended.
    Status fill(Deadline until);

    std::string m_buffer;
    size_t m_start = 0;
    bool m_ended = false;
};

} // namespace tessaly::app
