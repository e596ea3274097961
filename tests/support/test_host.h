// Test doubles: a host that records what it is asked, and a session that types lines into an
// interpreter and collects the text screen's stream.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/host.h"
#include "core/interpreter.h"
#include "io/simulated_ports.h"
#include "screen/text_screen.h"

namespace tessaly::test {

class RecordingHost final : public core::Host {
public:
    void beep() override { ++beeps; }
    void startTimer(core::TimerId id, int periodMs) override { timers.push_back({static_cast<int>(id), periodMs}); }
    void stopTimer(core::TimerId id) override { timers.push_back({static_cast<int>(id), 0}); }
    // The printer takes everything (printer: Written), is missing (NoPrinter) or fails (Failed).
    bool hasPrinter() override { return printer != core::PrinterWrite::NoPrinter; }
    core::PrinterWrite printerWrite(std::string_view bytes) override
    {
        if (printer == core::PrinterWrite::Written) {
            printed += bytes;
            jobBytes += bytes;
        }
        return printer;
    }
    // A job that printed nothing is no job.
    void printerEndJob() override
    {
        if (!jobBytes.empty())
            printJobs.push_back(std::exchange(jobBytes, {}));
    }
    void setDocumentModified(bool modified) override { this->modified = modified; }
    void programLoaded(std::string_view path) override { loadedPath = path; }
    // A simulated port space; portsGranted false stands for a system that grants no port access.
    bool portsAvailable() override { return portsGranted; }
    uint8_t portIn(uint16_t port) override { return ports.in(port); }
    void portOut(uint16_t port, uint8_t value) override { ports.out(port, value); }
    // Questions are recorded and answered from `answers` in turn; Cancel (Ok) when none is left.
    core::MessageAnswer messageBox(std::string_view text, core::MessageButtons buttons) override
    {
        questions.emplace_back(text);
        if (answers.empty())
            return buttons == core::MessageButtons::Ok ? core::MessageAnswer::Ok : core::MessageAnswer::Cancel;
        auto answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    }

    struct TimerCall {
        int id;
        int periodMs; // 0: stopped
    };
    int beeps = 0;
    std::vector<TimerCall> timers;
    core::PrinterWrite printer = core::PrinterWrite::Written;
    std::string printed;              // everything printed
    std::string jobBytes;             // printed since the last job ended
    std::vector<std::string> printJobs;
    bool modified = false;
    std::string loadedPath;
    std::vector<std::string> questions;
    std::vector<core::MessageAnswer> answers;
    io::SimulatedPorts ports;
    bool portsGranted = true;
};

class StreamRecorder final : public screen::TextListener {
public:
    void textWritten(std::string_view bytes) override { text += bytes; }
    void rowAdvanced() override { text += '\n'; }
    std::string text;
};

// An interpreter with a recording host; type() enters lines as the headless runner does
// (echoing each line) and runs until the interpreter is idle.
class Session {
public:
    // A run that takes more than maxSteps idle steps is stopped by BREAK.
    explicit Session(int maxSteps = 1000000);
    // Types each line and Enter, running to the end; returns everything written since the call.
    std::string type(std::initializer_list<std::string_view> lines);
    std::string type(std::string_view line) { return type({line}); }
    // Types the line, runs the given number of idle steps, then performs BREAK.
    std::string typeThenBreak(std::string_view line, int steps);
    // For events in the middle of a run: enter a line, take idle steps, then BREAK and collect
    // everything written since start().
    void start(std::string_view line);
    void step(int steps);
    std::string breakAndCollect();
    // Everything written since start() or the last type().
    [[nodiscard]] const std::string& collected() const { return m_stream.text; }
    // Runs the current program as the headless runner does with a file.
    std::string runProgram();
    // Types one direct command; its message (without the line end), or "" when it ended with OK.
    std::string messageOf(const std::string& command);
    // The value of an expression as PRINT shows it (a string as it is); "error" when it fails.
    std::string valueOf(const std::string& expression);

    core::Interpreter& interpreter() { return *m_interpreter; }
    RecordingHost& host() { return m_host; }

private:
    static constexpr int kMaxDeviceWaits = 3000;
    void driveUntilIdle();

    int m_maxSteps;
    RecordingHost m_host;
    StreamRecorder m_stream;
    std::unique_ptr<core::Interpreter> m_interpreter;
};

} // namespace tessaly::test
