// The test session: types lines into an interpreter and collects its stream.
#include "support/test_host.h"

namespace tessaly::test {

Session::Session(int maxSteps)
    : m_maxSteps(maxSteps)
    , m_interpreter(std::make_unique<core::Interpreter>(m_host))
{
    m_interpreter->screen().setListener(&m_stream);
}

void Session::driveUntilIdle()
{
    // A bound keeps a runaway program from hanging a test.
    for (int steps = 0; m_interpreter->isRunning(); ++steps) {
        if (steps == m_maxSteps)
            m_interpreter->breakProgram();
        m_interpreter->idle();
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
    m_stream.text.clear();
    m_stream.text += line;
    m_interpreter->lineEntered(line);
    for (int i = 0; i < steps && m_interpreter->isRunning(); ++i)
        m_interpreter->idle();
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

} // namespace tessaly::test
