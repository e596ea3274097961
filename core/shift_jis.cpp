// Shift-JIS <-> UTF-8 through glibc's iconv ("CP932"), one character at a time, ASCII copied as is.
// Which bytes are lead bytes for the interpreter's own text handling is decided by its callers.
#include "core/shift_jis.h"

#include <iconv.h>

namespace tessaly::core {

namespace {

constexpr std::string_view kReplacementUtf8 = "\xEF\xBF\xBD";

unsigned char byteAt(std::string_view text, size_t at) { return static_cast<unsigned char>(text[at]); }

bool isAscii(unsigned char b) { return b < 0x80; }

// One iconv descriptor, opened on first use and closed with the object: each conversion call owns
// its own, so concurrent callers share no state (opening costs little next to a line of text).
class Converter {
public:
    Converter(const char* to, const char* from)
        : m_to(to)
        , m_from(from)
    {
    }
    ~Converter()
    {
        if (m_opened && m_descriptor != kInvalid)
            iconv_close(m_descriptor);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Converts one whole character; false (and nothing appended) when it does not convert.
    bool convertCharacter(std::string_view character, std::string& output)
    {
        if (!open())
            return false;
        char buffer[16];
        char* in = const_cast<char*>(character.data()); // iconv never writes through its input
        size_t inLeft = character.size();
        char* out = buffer;
        size_t outLeft = sizeof buffer;
        size_t done = iconv(m_descriptor, &in, &inLeft, &out, &outLeft);
        if (done == static_cast<size_t>(-1) || inLeft != 0) {
            iconv(m_descriptor, nullptr, nullptr, nullptr, nullptr);
            return false;
        }
        output.append(buffer, static_cast<size_t>(out - buffer));
        return true;
    }

private:
    static inline const iconv_t kInvalid = reinterpret_cast<iconv_t>(-1);

    bool open()
    {
        if (!m_opened) {
            m_descriptor = iconv_open(m_to, m_from);
            m_opened = true;
        }
        return m_descriptor != kInvalid;
    }

    const char* m_to;
    const char* m_from;
    bool m_opened = false;
    iconv_t m_descriptor = kInvalid;
};

bool isTrailByte(unsigned char b) { return b >= 0x40 && b <= 0xFC && b != 0x7F; }

// The byte count of the Shift-JIS character at pos: 2 for a lead byte with a trail byte behind it.
size_t shiftJisCharacterLength(std::string_view text, size_t pos)
{
    if (IsLeadByte(byteAt(text, pos)) && pos + 1 < text.size() && isTrailByte(byteAt(text, pos + 1)))
        return 2;
    return 1;
}

// The byte count of the UTF-8 sequence at pos, and whether it is complete. A stray continuation
// byte or an impossible lead byte is a broken sequence of one byte.
struct Utf8Sequence {
    size_t length;
    bool complete;
};

size_t expectedUtf8Length(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

Utf8Sequence utf8SequenceAt(std::string_view text, size_t pos)
{
    size_t expected = expectedUtf8Length(byteAt(text, pos));
    if (expected == 0)
        return {1, false};
    size_t length = 1;
    while (length < expected && pos + length < text.size() && (byteAt(text, pos + length) & 0xC0) == 0x80)
        ++length;
    return {length, length == expected};
}

// One character of Shift-JIS text at pos, as UTF-8 (U+FFFD when it does not convert); returns the
// bytes it took.
size_t shiftJisCharacterToUtf8(Converter& converter, std::string_view sjis, size_t pos, std::string& utf8)
{
    size_t length = shiftJisCharacterLength(sjis, pos);
    if (converter.convertCharacter(sjis.substr(pos, length), utf8))
        return length;
    utf8 += kReplacementUtf8;
    // An unknown pair gives up only its lead byte when the trail byte is ASCII text.
    return (length == 2 && isAscii(byteAt(sjis, pos + 1))) ? 1 : length;
}

// One character of UTF-8 text at pos, as Shift-JIS ("?" when it does not convert or the sequence
// is broken); returns the bytes it took.
size_t utf8CharacterToShiftJis(Converter& converter, std::string_view utf8, size_t pos, std::string& sjis)
{
    Utf8Sequence sequence = utf8SequenceAt(utf8, pos);
    if (!sequence.complete || !converter.convertCharacter(utf8.substr(pos, sequence.length), sjis))
        sjis += '?';
    return sequence.length;
}

// Converts text one character at a time, from the encoding `from` to `to`: ASCII bytes are copied
// as they are, any other character goes through convertCharacterAt.
std::string convertEachCharacter(std::string_view text, const char* to, const char* from,
    size_t (*convertCharacterAt)(Converter&, std::string_view, size_t, std::string&))
{
    std::string result;
    result.reserve(text.size());
    Converter converter(to, from);
    for (size_t pos = 0; pos < text.size();) {
        if (isAscii(byteAt(text, pos)))
            result += text[pos++];
        else
            pos += convertCharacterAt(converter, text, pos, result);
    }
    return result;
}

// The code point of the UTF-8 character that text starts with (a complete, valid one).
uint32_t leadingCodepoint(std::string_view utf8)
{
    auto lead = byteAt(utf8, 0);
    size_t more = expectedUtf8Length(lead);
    more = more == 0 ? 0 : more - 1;
    uint32_t codepoint = more == 0 ? lead : lead & (0x3Fu >> more);
    for (size_t k = 1; k <= more && k < utf8.size(); ++k)
        codepoint = codepoint << 6 | (byteAt(utf8, k) & 0x3Fu);
    return codepoint;
}

} // namespace

std::vector<uint32_t> ShiftJisCodepoints(const std::vector<uint16_t>& codes)
{
    constexpr uint32_t kReplacement = 0xFFFD;
    std::vector<uint32_t> codepoints;
    codepoints.reserve(codes.size());
    Converter converter("UTF-8", "CP932");
    std::string utf8;
    for (uint16_t code : codes) {
        char bytes[2] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
        std::string_view character = code > 0xFF ? std::string_view(bytes, 2) : std::string_view(bytes + 1, 1);
        utf8.clear();
        if (code < 0x80)
            codepoints.push_back(code);
        else if (shiftJisCharacterLength(character, 0) != character.size() || !converter.convertCharacter(character, utf8)
            || utf8.empty())
            codepoints.push_back(kReplacement);
        else
            codepoints.push_back(leadingCodepoint(utf8));
    }
    return codepoints;
}

std::string ShiftJisToUtf8(std::string_view sjis)
{
    return convertEachCharacter(sjis, "UTF-8", "CP932", shiftJisCharacterToUtf8);
}

std::string Utf8ToShiftJis(std::string_view utf8)
{
    return convertEachCharacter(utf8, "CP932", "UTF-8", utf8CharacterToShiftJis);
}

std::optional<size_t> Utf8ToShiftJisExact(std::string_view utf8, std::string& sjis)
{
    sjis.clear();
    sjis.reserve(utf8.size());
    Converter converter("CP932", "UTF-8");
    for (size_t pos = 0; pos < utf8.size();) {
        if (isAscii(byteAt(utf8, pos))) {
            sjis += utf8[pos++];
            continue;
        }
        Utf8Sequence sequence = utf8SequenceAt(utf8, pos);
        if (!sequence.complete || !converter.convertCharacter(utf8.substr(pos, sequence.length), sjis))
            return pos;
        pos += sequence.length;
    }
    return std::nullopt;
}

bool IsValidUtf8(std::string_view text)
{
    for (size_t pos = 0; pos < text.size();) {
        if (isAscii(byteAt(text, pos))) {
            ++pos;
            continue;
        }
        Utf8Sequence sequence = utf8SequenceAt(text, pos);
        if (!sequence.complete)
            return false;
        pos += sequence.length;
    }
    return true;
}

} // namespace tessaly::core
