// Two linked pseudo-terminals made by socat: what is written to one end is read at the other.
// The interpreter opens one end as its serial device; the test is the partner at the other.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>

namespace tessaly::test {

class PtyPair {
public:
    PtyPair();
    ~PtyPair();
    PtyPair(const PtyPair&) = delete;
    PtyPair& operator=(const PtyPair&) = delete;

    // socat ran and both ends exist.
    [[nodiscard]] bool ready() const { return m_partnerFd >= 0; }
    // The end the interpreter opens.
    [[nodiscard]] const std::string& devicePath() const { return m_devicePath; }
    // The partner's side: bytes sent to the interpreter (socat passes them on in its own time), and
    // what the interpreter has sent (waiting at most about a second for count bytes).
    void send(std::string_view bytes);
    std::string receive(size_t count);
    // The link goes away, as an unplugged adapter does.
    void cut();

private:
    std::string m_folder;
    std::string m_devicePath;
    pid_t m_socat = -1;
    int m_partnerFd = -1;
};

} // namespace tessaly::test
