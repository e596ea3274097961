// The tessaly binary started as a child process with pipes to its standard streams, for the tests
// that run the real program. Every wait is bounded by a limit counted from the start: a child
// still running when it runs out is killed, so that a hang fails its test instead of stalling the
// suite.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::test {

class BinaryProcess {
public:
    static constexpr std::chrono::seconds kLimit {60};

    // Starts TESSALY_BINARY with the arguments. Standard input is the file stdinPath, or, when it
    // is empty, a pipe that the test feeds with write() and ends with closeInput().
    // With a program, that program of the build is started instead (TESSALY_WINDOW_BINARY).
    explicit BinaryProcess(const std::vector<std::string>& args, const std::string& stdinPath = {},
                           const std::string& folder = {}, const std::string& program = TESSALY_BINARY);
    ~BinaryProcess();
    BinaryProcess(const BinaryProcess&) = delete;
    BinaryProcess& operator=(const BinaryProcess&) = delete;

    // Queues bytes for standard input; they are written while the test waits.
    void write(std::string_view bytes);
    void closeInput();
    // Waits until standard output holds text after the first `from` bytes; false when the output
    // ended or the limit ran out first.
    bool waitForOutput(std::string_view text, size_t from = 0);
    void sendSignal(int signal);
    // Waits for the child's end: its exit status, or -1 when it ended by a signal or was killed
    // because the limit ran out (timedOut() tells which).
    int wait();

    [[nodiscard]] const std::string& output() const { return m_output; }
    [[nodiscard]] const std::string& errors() const { return m_errors; }
    [[nodiscard]] bool timedOut() const { return m_timedOut; }

private:
    // Moves bytes through the pipes until done() holds, both outputs have ended, or the limit.
    template <typename Done>
    bool pump(Done done);
    void killChild();

    pid_t m_pid = -1;
    int m_input = -1;
    int m_outputPipe = -1;
    int m_errorPipe = -1;
    std::string m_pending;
    bool m_closeRequested = false;
    std::string m_output;
    std::string m_errors;
    bool m_timedOut = false;
    int m_status = -1;
    std::chrono::steady_clock::time_point m_deadline;
};

// Runs the binary to its end with the given bytes as standard input.
struct FinishedRun {
    std::string output;
    std::string errors;
    int status = -1;
    bool timedOut = false;
};
FinishedRun runBinary(const std::vector<std::string>& args, std::string_view input);
// The same with standard input read from a file.
// With a folder, the binary starts there as its current folder.
FinishedRun runBinaryWithInputFile(const std::vector<std::string>& args, const std::string& stdinPath,
                                   const std::string& folder = {});
// Another program of the build run to its end, standard input empty.
FinishedRun runProgram(const std::string& program, const std::vector<std::string>& args);

} // namespace tessaly::test
