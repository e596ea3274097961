// The test session: types lines into an interpreter and collects its stream.
#include "support/test_host.h"

#include <chrono>
#include <thread>

#include "expr/evaluator.h"
#include "expr/number_text.h"
#include "screen/text_screen.h"

namespace tessaly::test {

Session::Session(int maxSteps)
    : m_maxSteps(maxSteps)
    , m_interpreter(std::make_unique<core::Interpreter>(m_host))
{
    m_interpreter->screen().setListener(&m_stream);
}

void Session::driveUntilIdle()
{
    // A bound keeps a runaway program from hanging a test; one that waits for a serial port that
    // brings nothing is broken off after some seconds of waiting.
    int deviceWaits = 0;
    for (int steps = 0; m_interpreter->isRunning(); ++steps) {
        if (steps == m_maxSteps || deviceWaits == kMaxDeviceWaits)
            m_interpreter->breakProgram();
        m_interpreter->idle();
        if (m_interpreter->isWaitingForDevice()) {
            ++deviceWaits;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
}

std::string Session::type(std::initializer_list<std::string_view> lines)
{
    m_stream.text.clear();
    for (auto line : lines) {
        m_stream.text += line;
        m_interpreter->typeLine(line);
        driveUntilIdle();
    }
    return m_stream.text;
}

std::string Session::typeThenBreak(std::string_view line, int steps)
{
    start(line);
    step(steps);
    return breakAndCollect();
}

void Session::start(std::string_view line)
{
    m_stream.text.clear();
    m_stream.text += line;
    m_interpreter->lineEntered(line);
}

void Session::step(int steps)
{
    for (int i = 0; i < steps && m_interpreter->isRunning(); ++i)
        m_interpreter->idle();
}

std::string Session::breakAndCollect()
{
    m_interpreter->breakProgram();
    driveUntilIdle();
    return m_stream.text;
}

std::string Session::runProgram()
{
    m_stream.text.clear();
    m_interpreter->runProgram();
    driveUntilIdle();
    return m_stream.text;
}

std::string Session::messageOf(const std::string& command)
{
    std::string out = type(command);
    out.erase(0, command.size() + 1);
    return out == "OK\n" ? "" : out.substr(0, out.size() - 1);
}

std::string Session::valueOf(const std::string& expression)
{
    auto& in = interpreter();
    if (!in.buffer().assign(expression))
        return "error";
    expr::Value v;
    if (expr::evaluateExpression(in, 0, in.buffer().length(), v) < 0) {
        in.error().clear();
        in.run().outputText.clear();
        return "error";
    }
    return v.isString() ? v.text : expr::PrintNumberText(expr::numberValueText(v), v.type);
}

} // namespace tessaly::test
