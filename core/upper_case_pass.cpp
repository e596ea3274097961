// Upper-casing outside string literals; see core/upper_case_pass.h.
#include "core/upper_case_pass.h"

#include <string_view>

namespace tessaly::core {

namespace {

// True when the upper-cased byte at pos finishes the word that starts kept text: "REM", and
// "DATA" (in a typed line, the blank after "DATA").
bool startsKeptText(std::string_view text, size_t pos, CaseRules rules)
{
    switch (text[pos]) {
    case 'M': return pos >= 2 && text.substr(pos - 2, 2) == "RE";
    case 'A': return rules == CaseRules::ProgramFile && pos >= 3 && text.substr(pos - 3, 3) == "DAT";
    case ' ': return rules == CaseRules::TypedLine && pos >= 4 && text.substr(pos - 4, 4) == "DATA";
    default: return false;
    }
}

} // namespace

void upperCaseOutsideStrings(std::string& text, CaseRules rules)
{
    const bool keepsWords = rules != CaseRules::AllOutsideStrings;
    bool inString = false;
    bool keptToColon = false; // REM text, DATA items, and in a file an apostrophe comment
    bool keptToLineEnd = false; // a typed line's apostrophe comment
    bool secondByteNext = false;
    for (size_t pos = 0; pos < text.size(); ++pos) {
        auto byte = static_cast<uint8_t>(text[pos]);
        bool secondByte = secondByteNext;
        secondByteNext = !secondByte && startsDoubleByte(byte);
        if (byte == '"') {
            inString = !inString;
        } else if (byte == '\r') {
            inString = false;
            keptToColon = false;
            keptToLineEnd = false;
        } else if (inString || keptToLineEnd) {
            continue;
        } else if (byte == '\'' && keepsWords) {
            if (rules == CaseRules::TypedLine)
                keptToLineEnd = true;
            else
                keptToColon = true;
        } else if (byte == ':') {
            keptToColon = false;
        } else if (!keptToColon && !secondByte) {
            if (byte >= 'a' && byte <= 'z')
                text[pos] = static_cast<char>(byte - 'a' + 'A');
            if (keepsWords && startsKeptText(text, pos, rules))
                keptToColon = true;
        }
    }
}

} // namespace tessaly::core
