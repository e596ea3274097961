// Shift-JIS <-> UTF-8 through glibc's iconv ("CP932"), with a fast path for plain ASCII.
#include "io/shift_jis.h"

#include <cerrno>
#include <iconv.h>

namespace tessaly::io {

namespace {

bool isAscii(std::string_view text)
{
    for (char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    }
    return true;
}

// One iconv descriptor for the length of a conversion.
class Converter {
public:
    Converter(const char* to, const char* from)
        : m_descriptor(iconv_open(to, from))
    {
    }
    ~Converter()
    {
        if (valid())
            iconv_close(m_descriptor);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    [[nodiscard]] bool valid() const { return m_descriptor != reinterpret_cast<iconv_t>(-1); }

    // Converts as much as converts; returns the number of input bytes that could not be taken.
    size_t convert(std::string_view& input, std::string& output)
    {
        char buffer[256];
        while (!input.empty()) {
            char* in = const_cast<char*>(input.data());
            size_t inLeft = input.size();
            char* out = buffer;
            size_t outLeft = sizeof buffer;
            size_t done = iconv(m_descriptor, &in, &inLeft, &out, &outLeft);
            output.append(buffer, static_cast<size_t>(out - buffer));
            input.remove_prefix(input.size() - inLeft);
            if (done != static_cast<size_t>(-1))
                continue;
            if (errno == E2BIG)
                continue;
            iconv(m_descriptor, nullptr, nullptr, nullptr, nullptr);
            return inLeft;
        }
        return 0;
    }

private:
    iconv_t m_descriptor;
};

size_t utf8SequenceLength(unsigned char lead)
{
    if (lead >= 0xF0)
        return 4;
    if (lead >= 0xE0)
        return 3;
    if (lead >= 0xC0)
        return 2;
    return 1;
}

} // namespace

std::string ShiftJisToUtf8(std::string_view sjis)
{
    if (isAscii(sjis))
        return std::string(sjis);
    std::string result;
    Converter converter("UTF-8", "CP932");
    if (!converter.valid())
        return std::string(sjis);
    while (!sjis.empty()) {
        if (converter.convert(sjis, result) == 0)
            break;
        result += "\xEF\xBF\xBD";
        sjis.remove_prefix(1);
    }
    return result;
}

std::string Utf8ToShiftJis(std::string_view utf8)
{
    if (isAscii(utf8))
        return std::string(utf8);
    std::string result;
    Converter converter("CP932", "UTF-8");
    if (!converter.valid())
        return std::string(utf8);
    while (!utf8.empty()) {
        if (converter.convert(utf8, result) == 0)
            break;
        result += '?';
        size_t skip = utf8SequenceLength(static_cast<unsigned char>(utf8[0]));
        utf8.remove_prefix(skip < utf8.size() ? skip : utf8.size());
    }
    return result;
}

} // namespace tessaly::io
