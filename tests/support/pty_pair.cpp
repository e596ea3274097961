#include "support/pty_pair.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace tessaly::test {

namespace {

bool exists(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

} // namespace

PtyPair::PtyPair()
{
    char folder[] = "/tmp/tessaly-pty-XXXXXX";
    if (::mkdtemp(folder) == nullptr)
        return;
    m_folder = folder;
    m_devicePath = m_folder + "/device";
    std::string partner = m_folder + "/partner";
    std::string first = "pty,raw,echo=0,link=" + m_devicePath;
    std::string second = "pty,raw,echo=0,link=" + partner;
    char* argv[] = {const_cast<char*>("socat"), const_cast<char*>(first.c_str()),
        const_cast<char*>(second.c_str()), nullptr};
    if (::posix_spawnp(&m_socat, "socat", nullptr, nullptr, argv, environ) != 0) {
        m_socat = -1;
        return;
    }
    // socat makes the links at once; a slow machine gets a few seconds.
    for (int tries = 0; tries < 500 && !(exists(m_devicePath) && exists(partner)); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (!exists(partner))
        return;
    m_partnerFd = ::open(partner.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (m_partnerFd >= 0) {
        termios line {};
        ::tcgetattr(m_partnerFd, &line);
        ::cfmakeraw(&line);
        ::tcsetattr(m_partnerFd, TCSANOW, &line);
    }
}

PtyPair::~PtyPair()
{
    cut();
    if (m_partnerFd >= 0)
        ::close(m_partnerFd);
    ::rmdir(m_folder.c_str());
}

void PtyPair::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        ssize_t n = ::write(m_partnerFd, bytes.data(), bytes.size());
        if (n > 0) {
            bytes.remove_prefix(static_cast<size_t>(n));
        } else if (n < 0 && errno != EAGAIN && errno != EINTR) {
            return;
        } else {
            pollfd one {m_partnerFd, POLLOUT, 0};
            ::poll(&one, 1, 100);
        }
    }
}

std::string PtyPair::receive(size_t count)
{
    std::string got;
    for (int tries = 0; tries < 100 && got.size() < count; ++tries) {
        pollfd one {m_partnerFd, POLLIN, 0};
        if (::poll(&one, 1, 10) <= 0)
            continue;
        char chunk[256];
        ssize_t n = ::read(m_partnerFd, chunk, sizeof chunk);
        if (n > 0)
            got.append(chunk, static_cast<size_t>(n));
    }
    return got;
}

void PtyPair::cut()
{
    if (m_socat > 0) {
        ::kill(m_socat, SIGTERM);
        int status = 0;
        ::waitpid(m_socat, &status, 0);
        m_socat = -1;
    }
}

} // namespace tessaly::test
