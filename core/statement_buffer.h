// The 1,024-byte text of the statement being executed; handlers work on positions in it.
// Every write is bounded: a text that would not fit is refused and the caller raises the error.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tessaly::core {

inline constexpr int kStatementBufferSize = 1024;

class StatementBuffer {
public:
    [[nodiscard]] std::string_view view() const { return {m_bytes.data(), static_cast<size_t>(m_length)}; }
    [[nodiscard]] int length() const { return m_length; }
    // The byte at pos, or 0 past the end (the buffer is NUL-terminated).
    [[nodiscard]] char at(int pos) const
    {
        return pos >= 0 && pos < m_length ? m_bytes[static_cast<size_t>(pos)] : '\0';
    }
    char* data() { return m_bytes.data(); }

    // False (and the buffer unchanged) when text does not fit with its terminating NUL.
    [[nodiscard]] bool assign(std::string_view text)
    {
        if (text.size() >= kStatementBufferSize)
            return false;
        std::memmove(m_bytes.data(), text.data(), text.size());
        m_length = static_cast<int16_t>(text.size());
        m_bytes[static_cast<size_t>(m_length)] = '\0';
        return true;
    }
    // Replaces count bytes at pos with text; false when the result would not fit.
    [[nodiscard]] bool replace(int pos, int count, std::string_view text)
    {
        if (pos < 0 || count < 0 || pos + count > m_length)
            return false;
        auto newLength = static_cast<size_t>(m_length - count) + text.size();
        if (newLength >= kStatementBufferSize)
            return false;
        auto tail = static_cast<size_t>(m_length - pos - count);
        std::memmove(m_bytes.data() + pos + text.size(), m_bytes.data() + pos + count, tail);
        std::memcpy(m_bytes.data() + pos, text.data(), text.size());
        m_length = static_cast<int16_t>(newLength);
        m_bytes[newLength] = '\0';
        return true;
    }
    void clear()
    {
        m_length = 0;
        m_bytes[0] = '\0';
    }

private:
    std::array<char, kStatementBufferSize> m_bytes {};
    int16_t m_length = 0;
};

} // namespace tessaly::core
