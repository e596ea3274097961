// The conversion commands. Text is checked line by line before the program file reader sees it,
// so that a refusal can name the line of the file.
#include "app/headless/program_conversion.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "app/cli/help_text.h"
#include "app/headless/read_whole_file.h"
#include "core/program_store.h"
#include "core/shift_jis.h"
#include "io/replace_file.h"

namespace tessaly::app {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr int kHighestNumberInFiles = 0xFFFF;
constexpr size_t kRecordHeaderBytes = 4;
// UTF-8 takes at most three bytes for one byte of Shift-JIS (half-width katakana): a longer file
// cannot hold a program that LOAD reads whole.
constexpr size_t kMostBytesRead = 3 * io::kMaxProgramFileBytes + kByteOrderMark.size();

std::string tooLong() { return "longer than " + std::to_string(io::kMaxProgramFileBytes) + " bytes as a program file"; }

unsigned char byteAt(std::string_view text, size_t at) { return static_cast<unsigned char>(text[at]); }

// The lines of a text (ended by CR LF, LF or CR), numbered from 1 as an editor numbers them.
struct TextLine {
    size_t number;
    std::string_view text;
};

std::vector<TextLine> textLines(std::string_view text)
{
    std::vector<TextLine> lines;
    size_t at = 0;
    while (at < text.size()) {
        size_t end = text.find_first_of("\r\n", at);
        if (end == std::string_view::npos)
            end = text.size();
        lines.push_back({lines.size() + 1, text.substr(at, end - at)});
        at = end;
        if (at < text.size())
            at += text.substr(at).starts_with("\r\n") ? 2 : 1;
    }
    return lines;
}

// The line of the text (counted from 1) that holds the byte at offset.
size_t lineAtOffset(std::string_view text, size_t offset)
{
    size_t line = 1;
    for (size_t at = 0; at < offset; ++at) {
        if (text[at] == '\n' || (text[at] == '\r' && !text.substr(at).starts_with("\r\n")))
            ++line;
    }
    return line;
}

// "☃" (U+2603): a well-formed UTF-8 character and its code point.
std::string describeCharacter(std::string_view utf8, size_t at)
{
    auto lead = byteAt(utf8, at);
    size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    length = std::min(length, utf8.size() - at);
    unsigned codePoint = length == 1 ? lead : lead & (0x7F >> length);
    for (size_t k = 1; k < length; ++k)
        codePoint = (codePoint << 6) | (byteAt(utf8, at + k) & 0x3F);
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", codePoint);
    return "\"" + std::string(utf8.substr(at, length)) + "\" (" + code + ")";
}

// Blanks, tabs, and the end-of-file byte of old systems' text files, on a line of their own.
bool holdsNothing(std::string_view text) { return text.find_first_not_of(" \t\x1A") == std::string_view::npos; }

// The number of the digits after a line's leading blanks; 0 when there are none or the number is
// too large for a file (it stops counting there).
int leadingDigitsNumber(std::string_view line)
{
    size_t at = line.find_first_not_of(' ');
    int number = 0;
    for (; at < line.size() && line[at] >= '0' && line[at] <= '9'; ++at) {
        number = number * 10 + (line[at] - '0');
        if (number > kHighestNumberInFiles)
            return 0;
    }
    return number;
}

// Text in Shift-JIS: every line that is not blank must begin with its number, in ascending order.
// The lines are handed to the reader with CR LF, so that its case pass ends at each of them.
std::optional<std::string> readText(std::string_view sjis, core::ProgramStore& store)
{
    std::string program;
    int previous = 0;
    for (const TextLine& line : textLines(sjis)) {
        if (holdsNothing(line.text))
            continue;
        std::string where = "line " + std::to_string(line.number);
        int number = leadingDigitsNumber(line.text);
        // The reader passes over some bytes while it reads a number ("10-5" is 105): such a line
        // would not keep the number that it shows.
        if (number < 1 || io::ProgramFile::TextLineNumber(line.text) != number)
            return where + " does not begin with a line number from 1 to 65535";
        if (number <= previous)
            return where + ": line number " + std::to_string(number) + " is not above the one before it ("
                + std::to_string(previous) + ")";
        previous = number;
        program.append(line.text);
        program += "\r\n";
    }
    if (program.size() > io::kMaxProgramFileBytes)
        return tooLong() + " (Shift-JIS text with CR LF line ends)";
    io::ProgramFile::Read(program, store);
    return std::nullopt;
}

unsigned read16(std::string_view bytes, size_t at) { return byteAt(bytes, at) | (unsigned {byteAt(bytes, at + 1)} << 8); }

// Line records: each record whole, numbers from 1 in ascending order, no line end inside a line.
std::optional<std::string> readRecords(std::string_view bytes, core::ProgramStore& store)
{
    if (bytes.size() > io::kMaxProgramFileBytes)
        return tooLong();
    unsigned previous = 0;
    size_t record = 1;
    for (size_t offset = 1; offset < bytes.size(); ++record) {
        std::string where = "record " + std::to_string(record);
        if (bytes.size() - offset < kRecordHeaderBytes)
            return where + " is cut short";
        size_t length = read16(bytes, offset);
        unsigned number = read16(bytes, offset + 2);
        if (length < kRecordHeaderBytes || length > bytes.size() - offset)
            return where + " is cut short or has a broken length";
        if (number < 1)
            return where + ": line number 0 is not from 1 to 65535";
        if (number <= previous)
            return where + ": line number " + std::to_string(number) + " is not above the one before it ("
                + std::to_string(previous) + ")";
        std::string_view text = bytes.substr(offset + kRecordHeaderBytes, length - kRecordHeaderBytes);
        if (text.find_first_of("\r\n") != std::string_view::npos)
            return where + " (line " + std::to_string(number) + ") holds a CR or LF byte";
        previous = number;
        offset += length;
    }
    io::ProgramFile::Read(bytes, store);
    return std::nullopt;
}

std::optional<std::string> readProgramFile(const char* path, core::ProgramStore& store)
{
    std::string bytes;
    if (!ReadWholeFile(path, bytes, kMostBytesRead))
        return "cannot read " + std::string(path);
    if (bytes.size() > kMostBytesRead)
        return std::string(path) + ": " + tooLong();
    if (auto refused = ReadProgramToConvert(bytes, store))
        return std::string(path) + ": " + *refused;
    return std::nullopt;
}

int refuse(const std::string& message)
{
    std::fprintf(stderr, "tessaly: %s\n", message.c_str());
    return 2;
}

int listProgram(const char* path)
{
    core::ProgramStore store;
    if (auto refused = readProgramFile(path, store))
        return refuse(*refused);
    std::string listing = ListingAsUtf8(store);
    std::fwrite(listing.data(), 1, listing.size(), stdout);
    return std::fflush(stdout) == 0 ? 0 : refuse("cannot write the listing to standard output");
}

int convertProgram(const char* in, const char* out, io::ProgramFileFormat format)
{
    core::ProgramStore store;
    if (auto refused = readProgramFile(in, store))
        return refuse(*refused);
    std::string error;
    auto image = ProgramImage(store, format, error);
    if (!image)
        return refuse(std::string(in) + ": " + error + "; " + out + " is not written");
    if (io::ReplaceFile(out, *image) != io::ReplaceOutcome::Replaced)
        return refuse("cannot write " + std::string(out));
    return 0;
}

} // namespace

TextEncoding TextEncodingOf(std::string_view bytes)
{
    bool beyondAscii = false;
    for (char c : bytes)
        beyondAscii = beyondAscii || static_cast<unsigned char>(c) > 0x7F;
    return beyondAscii && core::IsValidUtf8(bytes) ? TextEncoding::Utf8 : TextEncoding::ShiftJis;
}

std::optional<std::string> ReadProgramToConvert(std::string_view bytes, core::ProgramStore& store)
{
    if (!bytes.empty() && byteAt(bytes, 0) == io::kLineRecordsMark)
        return readRecords(bytes, store);
    if (TextEncodingOf(bytes) == TextEncoding::ShiftJis)
        return readText(bytes, store);
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());
    std::string sjis;
    if (auto at = core::Utf8ToShiftJisExact(bytes, sjis))
        return "line " + std::to_string(lineAtOffset(bytes, *at)) + ": " + describeCharacter(bytes, *at)
            + " has no Shift-JIS form";
    return readText(sjis, store);
}

std::string ListingAsUtf8(core::ProgramStore& store)
{
    std::string listing;
    for (int entry = 1; entry <= store.count(); ++entry) {
        std::string_view text = store.textAt(entry);
        if (text.ends_with("\r\n"))
            text.remove_suffix(2);
        listing += core::ShiftJisToUtf8(text);
        listing += '\n';
    }
    return listing;
}

std::optional<std::string> ProgramImage(core::ProgramStore& store, io::ProgramFileFormat format, std::string& error)
{
    auto image = io::ProgramFile::Write(format, store);
    const char* name = format == io::ProgramFileFormat::Text ? "text" : "line records";
    if (!image)
        error = std::string("a line cannot be written as ") + name;
    else if (image->size() > io::kMaxProgramFileBytes)
        error = std::string("the program would take ") + std::to_string(image->size()) + " bytes as " + name
            + ", more than the " + std::to_string(io::kMaxProgramFileBytes) + " that LOAD reads";
    else
        return image;
    return std::nullopt;
}

int RunProgramFileCommand(int argc, char** argv)
{
    std::string_view command;
    std::optional<io::ProgramFileFormat> format;
    std::vector<const char*> operands;
    for (int i = 1; i < argc; ++i) {
        std::string_view argument = argv[i];
        std::optional<std::string> fault;
        if (argument == "--list" || argument == "--convert") {
            if (!command.empty())
                fault = std::string(command) + " and " + std::string(argument) + " do not go together";
            command = argument;
        } else if (argument == "--text" || argument == "--records") {
            if (format)
                fault = "--text or --records, not both";
            format = argument == "--text" ? io::ProgramFileFormat::Text : io::ProgramFileFormat::LineRecords;
        } else if (argument.starts_with("-") && argument != "-") {
            fault = "unknown option " + std::string(argument);
        } else {
            operands.push_back(argv[i]);
        }
        if (fault) {
            std::fputs(UsageErrorLine(*fault).c_str(), stderr);
            return 2;
        }
    }
    std::optional<std::string> fault;
    if (command == "--list" && format)
        fault = "--list takes no --text or --records";
    else if (command == "--list" && operands.size() != 1)
        fault = "--list wants one FILE";
    else if (command == "--convert" && operands.size() != 2)
        fault = "--convert wants IN and OUT";
    if (fault) {
        std::fputs(UsageErrorLine(*fault).c_str(), stderr);
        return 2;
    }
    if (command == "--list")
        return listProgram(operands[0]);
    return convertProgram(operands[0], operands[1], format.value_or(io::ProgramFileFormat::Text));
}

} // namespace tessaly::app
