// Reading and writing program files in the Text and LineRecords formats.
// Choosing the file, the format bytes of the view and the LOAD/SAVE statements are left to the callers.
#include "io/program_file.h"

#include <vector>

#include "core/upper_case_pass.h"

namespace tessaly::io::ProgramFile {

namespace {

using Lines = std::vector<core::ProgramStore::Line>;

// Line numbers read from text are held below this, far above every valid line number.
constexpr int64_t kNumberCeiling = 999999999;
constexpr size_t kRecordHeaderBytes = 4;
constexpr size_t kMaxRecordBytes = 0xFFFF;
constexpr int kMaxRecordNumber = 0xFFFF;

unsigned char byteAt(std::string_view text, size_t at) { return static_cast<unsigned char>(text[at]); }

// The number at the start of a text line: blanks before the digits and bytes other than digits
// below "9" (bytes 0x80 and above included) are passed over; a blank after digits or a byte
// from ":" to 0x7F ends it.
int readLineNumber(std::string_view line)
{
    int64_t number = 0;
    bool digits = false;
    for (char byte : line) {
        auto c = static_cast<unsigned char>(byte);
        if (c == ' ' && digits)
            break;
        if (c >= 0x80)
            continue;
        if (c > '9')
            break;
        if (c >= '0') {
            digits = true;
            number = number * 10 + (c - '0');
            if (number > kNumberCeiling)
                number = kNumberCeiling;
        }
    }
    return static_cast<int>(number);
}

bool isBlanks(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

// Ends the current line of the line pass. A numbered line is stored. A line of blanks alone stays
// in front of the next line, so indentation typed on a line of its own is kept. Any other line
// without a number is dropped: joined onto the next line it would swallow that line too.
void endTextLine(std::string& current, Lines& lines)
{
    if (current.empty())
        return;
    int number = readLineNumber(current);
    if (number > 0) {
        current += "\r\n";
        lines.push_back({number, std::move(current)});
        current.clear();
    } else if (!isBlanks(current)) {
        current.clear();
    }
}

void readText(std::string_view bytes, core::ProgramStore& store)
{
    std::string text(bytes);
    // Only a CR ends a line for this pass, so with LF-only line ends an open string or comment
    // runs on.
    core::upperCaseOutsideStrings(text, core::CaseRules::ProgramFile);
    Lines lines;
    std::string current;
    for (char c : text) {
        if (c == '\r' || c == '\n')
            endTextLine(current, lines);
        else
            current += c;
    }
    endTextLine(current, lines);
    store.replaceAll(std::move(lines));
}

unsigned read16(std::string_view bytes, size_t at) { return byteAt(bytes, at) | (unsigned { byteAt(bytes, at + 1) } << 8); }

// Records follow the mark byte. A record whose length is below its own header ends the program
// (nothing after it can be found again), as do 1 to 3 stray bytes at the end; a record running
// past the end of the data keeps the text that is there.
void readRecords(std::string_view bytes, core::ProgramStore& store)
{
    Lines lines;
    size_t offset = 1;
    while (bytes.size() - offset >= kRecordHeaderBytes) {
        size_t length = read16(bytes, offset);
        int number = static_cast<int>(read16(bytes, offset + 2));
        if (length < kRecordHeaderBytes)
            break;
        std::string_view body = bytes.substr(offset + kRecordHeaderBytes, length - kRecordHeaderBytes);
        std::string text = std::to_string(number);
        text.append(body);
        text += "\r\n";
        lines.push_back({number, std::move(text)});
        offset += kRecordHeaderBytes + body.size();
    }
    store.replaceAll(std::move(lines));
}

void append16(std::string& out, size_t value)
{
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>((value >> 8) & 0xFF);
}

// Appends the record of one stored line; false when the line has no number from 1 to 65535 after
// its leading blanks, or its text does not fit a record. The record's text is everything after the
// digits, so that a line loaded as "10PRINT" (no blank after its number) keeps all its text.
bool appendRecord(std::string_view line, std::string& out)
{
    if (line.ends_with("\r\n"))
        line.remove_suffix(2);
    size_t pos = line.find_first_not_of(' ');
    int64_t number = 0;
    for (; pos < line.size() && line[pos] >= '0' && line[pos] <= '9'; ++pos) {
        number = number * 10 + (line[pos] - '0');
        if (number > kMaxRecordNumber)
            return false;
    }
    if (number < 1)
        return false;
    std::string_view text = line.substr(pos);
    if (text.size() > kMaxRecordBytes - kRecordHeaderBytes)
        return false;
    append16(out, kRecordHeaderBytes + text.size());
    append16(out, static_cast<size_t>(number));
    out.append(text);
    return true;
}

std::optional<std::string> writeRecords(const core::ProgramStore& store)
{
    std::string out(1, static_cast<char>(kLineRecordsMark));
    for (int entry = 1; entry <= store.count(); ++entry) {
        if (!appendRecord(store.textAt(entry), out))
            return std::nullopt;
    }
    return out;
}

std::string writeText(core::ProgramStore& store)
{
    std::string out;
    for (int entry = 1; entry <= store.count(); ++entry) {
        std::string& text = store.mutableText(entry);
        if (!text.ends_with("\r\n"))
            text += "\r\n";
        out += text;
    }
    return out;
}

} // namespace

ProgramFileFormat Read(std::string_view bytes, core::ProgramStore& store)
{
    bytes = bytes.substr(0, kMaxProgramFileBytes);
    if (!bytes.empty() && byteAt(bytes, 0) == kLineRecordsMark) {
        readRecords(bytes, store);
        return ProgramFileFormat::LineRecords;
    }
    readText(bytes, store);
    return ProgramFileFormat::Text;
}

int TextLineNumber(std::string_view line) { return readLineNumber(line); }

std::optional<std::string> Write(ProgramFileFormat format, core::ProgramStore& store)
{
    if (format == ProgramFileFormat::LineRecords)
        return writeRecords(store);
    return writeText(store);
}

} // namespace tessaly::io::ProgramFile
