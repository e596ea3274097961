// Jump targets: line numbers through the prepared program's index, labels through the label table.
#include "core/find_target.h"

#include "core/interpreter.h"

namespace tessaly::core {

std::string_view jumpOperand(std::string_view statement, int begin, int end)
{
    auto text = statement.substr(0, static_cast<size_t>(end));
    size_t pos = static_cast<size_t>(begin);
    for (; pos < text.size(); ++pos) {
        char c = text[pos];
        if (c == '\n' || c == '\r' || c == '\'' || c == ':')
            return {};
        bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if ((c >= '0' && c <= '9') || c == '*' || letter)
            break;
    }
    if (pos >= text.size())
        return {};
    auto stop = text.find(' ', pos);
    if (stop == std::string_view::npos)
        stop = text.size();
    return text.substr(pos, stop - pos);
}

int findTarget(Interpreter& in, int begin, int end)
{
    in.run().outputText.clear();
    auto operand = jumpOperand(in.buffer().view(), begin, end);
    int target = 0;
    if (!operand.empty() && operand[0] == '*') {
        target = in.prepared().findLabel(operand);
        if (target == 0)
            return in.raise(ErrorId::UndefinedLabel);
    } else {
        int number = leadingNumber(operand);
        if (number < 1)
            return in.raise(ErrorId::SyntaxError);
        target = in.prepared().findLine(in.program(), number);
        if (target == 0)
            return in.raise(ErrorId::UndefinedLineNumber);
    }
    in.run().jumpTarget = target;
    return target;
}

bool CompiledJump::compile(std::string_view statement, int begin, int end)
{
    auto operand = jumpOperand(statement, begin, end);
    if (!operand.empty() && operand[0] == '*') {
        m_label = operand;
        return true;
    }
    m_number = leadingNumber(operand);
    return m_number >= 1;
}

int CompiledJump::resolve(Interpreter& in)
{
    in.run().outputText.clear();
    int extent = in.prepared().lastAllocated;
    if (m_target == 0 || m_extent != extent) {
        m_target = m_label.empty() ? in.prepared().findLine(in.program(), m_number) : in.prepared().findLabel(m_label);
        m_extent = extent;
        if (m_target == 0)
            return in.raise(m_label.empty() ? ErrorId::UndefinedLineNumber : ErrorId::UndefinedLabel);
    }
    in.run().jumpTarget = m_target;
    return m_target;
}

} // namespace tessaly::core
