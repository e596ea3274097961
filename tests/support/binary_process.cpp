// Starting the binary with posix_spawn and moving bytes through its pipes with poll(2).
#include "support/binary_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

extern char** environ;

namespace tessaly::test {

namespace {

void closeDescriptor(int& fd)
{
    if (fd >= 0)
        close(fd);
    fd = -1;
}

// Appends what the pipe holds; closes it at its end.
void drain(int& fd, std::string& into)
{
    char chunk[4096];
    ssize_t got = read(fd, chunk, sizeof chunk);
    if (got > 0)
        into.append(chunk, static_cast<size_t>(got));
    else if (got == 0 || (errno != EINTR && errno != EAGAIN))
        closeDescriptor(fd);
}

} // namespace

BinaryProcess::BinaryProcess(const std::vector<std::string>& args, const std::string& stdinPath,
                             const std::string& folder, const std::string& program)
    : m_deadline(std::chrono::steady_clock::now() + kLimit)
{
    // A child that ends before reading all its input must not take the test down with SIGPIPE.
    signal(SIGPIPE, SIG_IGN);
    int in[2] = {-1, -1};
    int out[2] = {-1, -1};
    int err[2] = {-1, -1};
    if ((stdinPath.empty() && pipe2(in, O_CLOEXEC) != 0) || pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0)
        return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (stdinPath.empty())
        posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    else
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, stdinPath.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err[1], STDERR_FILENO);
    if (!folder.empty())
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    // The child starts with the default actions of the signals the test sends or ignores.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    sigaddset(&defaults, SIGINT);
    sigset_t noneBlocked;
    sigemptyset(&noneBlocked);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setsigmask(&attributes, &noneBlocked);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    std::vector<std::string> words {program};
    words.insert(words.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (auto& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    if (posix_spawn(&m_pid, program.c_str(), &actions, &attributes, argv.data(), environ) != 0)
        m_pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);

    closeDescriptor(in[0]);
    closeDescriptor(out[1]);
    closeDescriptor(err[1]);
    m_input = in[1];
    m_outputPipe = out[0];
    m_errorPipe = err[0];
    for (int fd : {m_input, m_outputPipe, m_errorPipe}) {
        if (fd >= 0)
            fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
    }
    if (m_pid < 0) {
        closeDescriptor(m_input);
        closeDescriptor(m_outputPipe);
        closeDescriptor(m_errorPipe);
    }
}

BinaryProcess::~BinaryProcess()
{
    if (m_pid > 0)
        killChild();
    closeDescriptor(m_input);
    closeDescriptor(m_outputPipe);
    closeDescriptor(m_errorPipe);
}

void BinaryProcess::write(std::string_view bytes) { m_pending += bytes; }

void BinaryProcess::closeInput() { m_closeRequested = true; }

template <typename Done>
bool BinaryProcess::pump(Done done)
{
    for (;;) {
        if (m_input >= 0 && m_pending.empty() && m_closeRequested)
            closeDescriptor(m_input);
        if (done())
            return true;
        if (m_outputPipe < 0 && m_errorPipe < 0)
            return false;
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(m_deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return false;
        pollfd watched[3] = {{m_outputPipe, POLLIN, 0}, {m_errorPipe, POLLIN, 0},
            {m_pending.empty() ? -1 : m_input, POLLOUT, 0}};
        if (poll(watched, 3, static_cast<int>(left.count())) < 0 && errno != EINTR)
            return false;
        if (watched[0].revents != 0)
            drain(m_outputPipe, m_output);
        if (watched[1].revents != 0)
            drain(m_errorPipe, m_errors);
        if (watched[2].revents != 0) {
            ssize_t sent = ::write(m_input, m_pending.data(), m_pending.size());
            if (sent > 0)
                m_pending.erase(0, static_cast<size_t>(sent));
            else if (errno != EINTR && errno != EAGAIN) {
                m_pending.clear();
                closeDescriptor(m_input);
            }
        }
    }
}

bool BinaryProcess::waitForOutput(std::string_view text, size_t from)
{
    return pump([&] { return m_output.size() >= from && m_output.find(text, from) != std::string::npos; });
}

void BinaryProcess::sendSignal(int signal)
{
    if (m_pid > 0)
        kill(m_pid, signal);
}

int BinaryProcess::wait()
{
    if (m_pid <= 0)
        return m_status;
    pump([] { return false; });
    int status = 0;
    for (;;) {
        pid_t ended = waitpid(m_pid, &status, WNOHANG);
        if (ended == m_pid)
            break;
        if (ended < 0 && errno != EINTR) {
            m_pid = -1;
            return m_status;
        }
        if (std::chrono::steady_clock::now() >= m_deadline) {
            killChild();
            return m_status;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    m_pid = -1;
    m_status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return m_status;
}

void BinaryProcess::killChild()
{
    int status = 0;
    if (waitpid(m_pid, &status, WNOHANG) == 0) {
        m_timedOut = true;
        kill(m_pid, SIGKILL);
        waitpid(m_pid, &status, 0);
    }
    m_pid = -1;
    m_status = -1;
}

FinishedRun runBinary(const std::vector<std::string>& args, std::string_view input)
{
    BinaryProcess process(args);
    process.write(input);
    process.closeInput();
    int status = process.wait();
    return {process.output(), process.errors(), status, process.timedOut()};
}

FinishedRun runBinaryWithInputFile(const std::vector<std::string>& args, const std::string& stdinPath,
                                   const std::string& folder)
{
    BinaryProcess process(args, stdinPath, folder);
    int status = process.wait();
    return {process.output(), process.errors(), status, process.timedOut()};
}

} // namespace tessaly::test

namespace tessaly::test {

FinishedRun runProgram(const std::string& program, const std::vector<std::string>& args)
{
    BinaryProcess process(args, {}, {}, program);
    process.closeInput();
    int status = process.wait();
    return {process.output(), process.errors(), status, process.timedOut()};
}

} // namespace tessaly::test
