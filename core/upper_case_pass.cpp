// Upper-casing outside string literals; see core/upper_case_pass.h.
#include "core/upper_case_pass.h"

#include <string_view>

#include "core/text_scan.h"

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
    QuoteState strings;
    bool keptToColon = false; // REM text, DATA items, and in a file an apostrophe comment
    bool keptToLineEnd = false; // a typed line's apostrophe comment
    bool secondByteNext = false;
    for (size_t pos = 0; pos < text.size(); ++pos) {
        auto byte = static_cast<uint8_t>(text[pos]);
        bool secondByte = secondByteNext;
        secondByteNext = !secondByte && startsDoubleByte(byte);
        if (strings.takesQuote(text[pos]))
            continue;
        if (byte == '\r') {
            strings.endLine();
            keptToColon = false;
            keptToLineEnd = false;
        } else if (strings.inside() || keptToLineEnd) {
            continue;
        } else if (byte == '\'' && keepsWords) {
            if (rules == CaseRules::TypedLine)
                keptToLineEnd = true;
            else
                keptToColon = true;
        } else if (byte == ':') {
            keptToColon = false;
        } else if (!keptToColon && !secondByte) {
            text[pos] = toUpperAscii(text[pos]);
            if (keepsWords && startsKeptText(text, pos, rules))
                keptToColon = true;
        }
    }
}

} // namespace tessaly::core
