// The SIGINT handler and its wake-up pipe. A signal handler can reach nothing but these, so they
// are the runner's only process-wide state.
#include "app/headless/interrupt_signal.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tessaly::app {

namespace {

volatile std::sig_atomic_t g_interruptRequested = 0;
int g_wakePipe[2] = {-1, -1};

void onInterrupt(int)
{
    int savedErrno = errno;
    g_interruptRequested = 1;
    if (g_wakePipe[1] >= 0) {
        char byte = 0;
        // The pipe does not block: when it is full, a wake-up is already waiting.
        (void)!write(g_wakePipe[1], &byte, 1);
    }
    errno = savedErrno;
}

} // namespace

void installInterruptHandler()
{
    if (g_wakePipe[0] < 0 && pipe(g_wakePipe) == 0) {
        for (int fd : g_wakePipe) {
            fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
            fcntl(fd, F_SETFD, FD_CLOEXEC);
        }
    }
    struct sigaction action {};
    action.sa_handler = onInterrupt;
    sigemptyset(&action.sa_mask);
    // Output interrupted by Ctrl+C goes on; waits for input watch the wake-up pipe instead.
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

bool interruptPending() { return g_interruptRequested != 0; }

bool takeInterrupt()
{
    if (g_interruptRequested == 0)
        return false;
    g_interruptRequested = 0;
    return true;
}

int interruptWakeDescriptor() { return g_wakePipe[0]; }

void drainInterruptWake()
{
    char bytes[64];
    while (g_wakePipe[0] >= 0 && read(g_wakePipe[0], bytes, sizeof bytes) > 0) {
    }
}

} // namespace tessaly::app
