// Reading and writing program files in the Text and LineRecords formats.
#include "io/program_file.h"

#include <vector>

namespace tessaly::io::ProgramFile {

namespace {

// A lead byte as the reader sees it: the byte after it is never changed.
bool isReaderLeadByte(unsigned char b) { return (b >= 0x80 && b <= 0x9F) || b >= 0xE0; }

// The number at the start of a text line: blanks before the digits and bytes other than digits
// below "9" are passed over; a blank after digits or a byte above "9" ends it.
int32_t readLineNumber(std::string_view line)
{
    int64_t number = 0;
    bool digits = false;
    for (unsigned char c : line) {
        if (c == ' ') {
            if (digits)
                break;
            continue;
        }
        if (c >= 0x80)
            continue;
        if (c > '9')
            break;
        if (c >= '0') {
            digits = true;
            number = number * 10 + (c - '0');
            if (number > 999999999)
                number = 999999999;
        }
    }
    return static_cast<int32_t>(number);
}

void readText(std::string text, core::ProgramStore& store)
{
    UpperCaseProgramText(text);
    std::vector<core::ProgramStore::Line> lines;
    std::string current;
    auto endLine = [&]() {
        if (current.empty())
            return;
        int32_t number = readLineNumber(current);
        if (number > 0) {
            lines.push_back({number, current + "\r\n"});
            current.clear();
            return;
        }
        // A line without a number is left out, so that it cannot swallow the lines after it;
        // a line of blanks alone stays in front of the next line, as typed indentation.
        if (current.find_first_not_of(' ') != std::string::npos)
            current.clear();
    };
    for (char c : text) {
        if (c == '\r' || c == '\n') {
            endLine();
            continue;
        }
        current += c;
    }
    endLine();
    store.replaceAll(std::move(lines));
}

unsigned read16(std::string_view bytes, size_t at)
{
    return static_cast<unsigned char>(bytes[at]) | static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

void readRecords(std::string_view bytes, core::ProgramStore& store)
{
    std::vector<core::ProgramStore::Line> lines;
    size_t offset = 1;
    while (offset + 4 <= bytes.size()) {
        unsigned length = read16(bytes, offset);
        unsigned number = read16(bytes, offset + 2);
        // A record shorter than its own header ends the program: nothing after it can be trusted.
        if (length < 4)
            break;
        size_t textLength = length - 4;
        size_t available = bytes.size() - offset - 4;
        // A record cut off by the end of the file keeps the text that is there.
        if (textLength > available)
            textLength = available;
        std::string text = std::to_string(number);
        text.append(bytes.substr(offset + 4, textLength));
        text += "\r\n";
        lines.push_back({static_cast<int>(number), std::move(text)});
        offset += 4 + textLength;
    }
    store.replaceAll(std::move(lines));
}

void append16(std::string& out, unsigned value)
{
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>((value >> 8) & 0xFF);
}

std::optional<std::string> writeRecords(core::ProgramStore& store)
{
    std::string out(1, static_cast<char>(kLineRecordsMark));
    for (int entry = 1; entry <= store.count(); ++entry) {
        std::string_view line = store.textAt(entry);
        if (line.ends_with("\r\n"))
            line.remove_suffix(2);
        // The number is the run of digits after leading blanks; the record's text is everything
        // after it, so that a line typed without a blank after its number keeps all its text.
        size_t pos = line.find_first_not_of(' ');
        if (pos == std::string_view::npos)
            return std::nullopt;
        size_t digitsEnd = pos;
        while (digitsEnd < line.size() && line[digitsEnd] >= '0' && line[digitsEnd] <= '9')
            ++digitsEnd;
        int32_t number = core::leadingNumber(line.substr(0, digitsEnd));
        if (number < 1 || number > 0xFFFF)
            return std::nullopt;
        auto text = line.substr(digitsEnd);
        append16(out, static_cast<unsigned>(4 + text.size()));
        append16(out, static_cast<unsigned>(number));
        out.append(text);
    }
    return out;
}

} // namespace

void UpperCaseProgramText(std::string& text)
{
    bool inString = false;
    bool literal = false;
    bool trailNext = false;
    for (size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<unsigned char>(text[i]);
        if (trailNext) {
            trailNext = false;
            continue;
        }
        if (isReaderLeadByte(c)) {
            trailNext = true;
            continue;
        }
        if (c == '"') {
            inString = !inString;
            continue;
        }
        if (c == '\r') {
            inString = false;
            literal = false;
            continue;
        }
        if (inString)
            continue;
        if (c == '\'') {
            literal = true;
            continue;
        }
        if (c == ':') {
            literal = false;
            continue;
        }
        if (literal)
            continue;
        if (c >= 'a' && c <= 'z')
            text[i] = static_cast<char>(c - 'a' + 'A');
        if (text[i] == 'M' && i >= 2 && text.compare(i - 2, 2, "RE") == 0)
            literal = true;
        if (text[i] == 'A' && i >= 3 && text.compare(i - 3, 3, "DAT") == 0)
            literal = true;
    }
}

ProgramFileFormat Read(std::string_view bytes, core::ProgramStore& store)
{
    if (bytes.size() > kMaxProgramFileBytes)
        bytes = bytes.substr(0, kMaxProgramFileBytes);
    if (!bytes.empty() && static_cast<unsigned char>(bytes[0]) == kLineRecordsMark) {
        readRecords(bytes, store);
        return ProgramFileFormat::LineRecords;
    }
    readText(std::string(bytes), store);
    return ProgramFileFormat::Text;
}

std::optional<std::string> Write(ProgramFileFormat format, core::ProgramStore& store)
{
    if (format == ProgramFileFormat::LineRecords)
        return writeRecords(store);
    std::string out;
    for (int entry = 1; entry <= store.count(); ++entry) {
        auto& text = store.mutableText(entry);
        if (!text.ends_with("\r\n"))
            text += "\r\n";
        out += text;
    }
    return out;
}

} // namespace tessaly::io::ProgramFile
