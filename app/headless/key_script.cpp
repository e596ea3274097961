// Reading a key script: plain text, line ends and escapes in braces.
#include "app/headless/key_script.h"

#include <array>

#include "core/shift_jis.h"
#include "screen/keyboard.h"

namespace tessaly::app {

namespace {

struct Escape {
    std::string_view name;
    KeyStroke stroke;
};

constexpr KeyStroke key(int code) { return {StrokeKind::Key, code}; }

// The escapes besides {F1}..{F10}. {{} types a left brace; a right brace types itself.
constexpr std::array kEscapes {
    Escape {"ENTER", key(screen::vk::kEnter)},
    Escape {"ESC", key(screen::vk::kEscape)},
    Escape {"STOP", key(screen::vk::kPause)},
    Escape {"UP", key(screen::vk::kUp)},
    Escape {"DOWN", key(screen::vk::kDown)},
    Escape {"LEFT", key(screen::vk::kLeft)},
    Escape {"RIGHT", key(screen::vk::kRight)},
    Escape {"HOME", key(screen::vk::kHome)},
    Escape {"INS", key(screen::vk::kInsert)},
    Escape {"DEL", key(screen::vk::kDelete)},
    Escape {"BS", key(screen::vk::kBackspace)},
    Escape {"TAB", key(screen::vk::kTab)},
    Escape {"NOKEY", {StrokeKind::NoKey, 0}},
    Escape {"{", {StrokeKind::Character, '{'}},
};

// At most this much of a wrong escape is quoted in the message.
constexpr size_t kQuotedBytes = 32;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string upperCased(std::string_view text)
{
    std::string upper(text);
    for (char& c : upper) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return upper;
}

// The stroke an escape name stands for; false for a name that is none.
bool strokeNamed(std::string_view name, KeyStroke& stroke)
{
    std::string upper = upperCased(name);
    for (const auto& escape : kEscapes) {
        if (upper == escape.name) {
            stroke = escape.stroke;
            return true;
        }
    }
    // F1..F10, without leading zeros.
    if (upper.size() >= 2 && upper.size() <= 3 && upper[0] == 'F' && isDigit(upper[1]) && upper[1] != '0') {
        int k = upper[1] - '0';
        if (upper.size() == 3) {
            if (!isDigit(upper[2]))
                return false;
            k = k * 10 + (upper[2] - '0');
        }
        if (k > 10)
            return false;
        stroke = key(screen::vk::kF1 + k - 1);
        return true;
    }
    return false;
}

// The number of characters of UTF-8 text (bytes that do not continue a sequence).
int charactersIn(std::string_view utf8)
{
    int count = 0;
    for (char c : utf8)
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return count;
}

// An escape as quoted in a message: "{" and at most kQuotedBytes of what follows, cut before a
// character rather than inside it.
std::string quoted(std::string_view body, bool closed)
{
    if (body.size() <= kQuotedBytes)
        return "{" + std::string(body) + (closed ? "}" : "");
    size_t cut = kQuotedBytes;
    while (cut > 0 && (static_cast<unsigned char>(body[cut]) & 0xC0) == 0x80)
        --cut;
    return "{" + std::string(body.substr(0, cut)) + "...";
}

class Reader {
public:
    explicit Reader(std::vector<KeyStroke> strokes) { m_result.strokes = std::move(strokes); }

    KeyScriptResult read(std::string_view text)
    {
        if (text.size() > kMaxKeyScriptBytes) {
            fail("longer than " + std::to_string(kMaxKeyScriptBytes) + " bytes");
            return std::move(m_result);
        }
        size_t plainStart = 0;
        size_t at = 0;
        while (at < text.size()) {
            char c = text[at];
            if (c != '\r' && c != '\n' && c != '{') {
                ++at;
                continue;
            }
            m_column += charactersIn(text.substr(plainStart, at - plainStart));
            addText(text.substr(plainStart, at - plainStart));
            if (c == '{') {
                if (!readEscape(text, at))
                    return std::move(m_result);
            } else {
                at += c == '\r' && at + 1 < text.size() && text[at + 1] == '\n' ? 2 : 1;
                add(key(screen::vk::kEnter), 1);
                ++m_line;
                m_column = 1;
            }
            if (!m_result.error.empty())
                return std::move(m_result);
            plainStart = at;
        }
        addText(text.substr(plainStart));
        if (m_result.error.empty())
            m_result.ok = true;
        return std::move(m_result);
    }

private:
    // The escape at `at` (its "{"); moves `at` past its "}". False after an error.
    bool readEscape(std::string_view text, size_t& at)
    {
        size_t end = text.find_first_of("}\r\n", at + 1);
        if (end == std::string_view::npos || text[end] != '}') {
            std::string_view rest = text.substr(at + 1, end == std::string_view::npos ? end : end - at - 1);
            failAt("unclosed " + quoted(rest, false));
            return false;
        }
        std::string_view body = text.substr(at + 1, end - at - 1);
        size_t space = body.find(' ');
        KeyStroke stroke;
        if (!strokeNamed(body.substr(0, space), stroke)) {
            failAt("unknown key " + quoted(body, true));
            return false;
        }
        int count = 1;
        if (space != std::string_view::npos && !readCount(body.substr(space + 1), count)) {
            failAt("repeat count not from 1 to " + std::to_string(kMaxRepeatCount) + " in " + quoted(body, true));
            return false;
        }
        add(stroke, count);
        m_column += charactersIn(text.substr(at, end + 1 - at));
        at = end + 1;
        return true;
    }

    static bool readCount(std::string_view digits, int& count)
    {
        if (digits.empty() || digits.size() > 4)
            return false;
        count = 0;
        for (char c : digits) {
            if (!isDigit(c))
                return false;
            count = count * 10 + (c - '0');
        }
        return count >= 1 && count <= kMaxRepeatCount;
    }

    void addText(std::string_view utf8)
    {
        if (utf8.empty())
            return;
        for (char byte : core::Utf8ToShiftJis(utf8))
            add({StrokeKind::Character, static_cast<unsigned char>(byte)}, 1);
    }

    void add(KeyStroke stroke, int count)
    {
        if (!m_result.error.empty())
            return;
        if (m_result.strokes.size() + static_cast<size_t>(count) > kMaxKeyStrokes) {
            fail("more than " + std::to_string(kMaxKeyStrokes) + " keys");
            return;
        }
        m_result.strokes.insert(m_result.strokes.end(), static_cast<size_t>(count), stroke);
    }

    void failAt(const std::string& what)
    {
        fail("line " + std::to_string(m_line) + ", column " + std::to_string(m_column) + ": " + what);
    }

    void fail(const std::string& what)
    {
        m_result.ok = false;
        m_result.error = what;
        m_result.strokes.clear();
    }

    KeyScriptResult m_result;
    int m_line = 1;
    int m_column = 1;
};

} // namespace

KeyScriptResult parseKeyScript(std::string_view utf8, std::vector<KeyStroke> strokes)
{
    return Reader(std::move(strokes)).read(utf8);
}

} // namespace tessaly::app
