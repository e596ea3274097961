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
        auto& screen = m_interpreter->screen();
        // What stands before the cursor on its row (AUTO's number) is part of the entered line.
        std::string entered = screen.row(screen.cursorRow()).substr(0, static_cast<size_t>(screen.cursorColumn()));
        entered += line;
        screen::TextListener silent;
        screen.setListener(&silent);
        screen.Print(line);
        screen.setListener(&m_stream);
        // While an INPUT waits, the typed keys also go to the key buffer.
        if (m_interpreter->isWaitingForInput())
            m_interpreter->keyboard().keyBuffer.append(line).push_back('\r');
        m_interpreter->lineEntered(entered);
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
