// OPEN and CLOSE: file numbers given to disk files, the screen and the printer, and taken back.
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/host.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "expr/evaluator.h"
#include "expr/number_text.h"
#include "io/basic_path.h"
#include "io/com_channel.h"
#include "io/file_table.h"
#include "io/open_channel.h"

namespace tessaly::io {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// The descriptor of a disk file opened in a mode. Returns 0, or kFailed with the mode's error raised.
int openDisk(core::Interpreter& in, const std::string& name, FileMode mode, int& fd)
{
    std::string path = HostPath(name);
    switch (mode) {
    case FileMode::Random:
        fd = ::open(path.c_str(), O_RDWR);
        if (fd < 0)
            fd = ::open(path.c_str(), O_RDWR | O_CREAT, 0666);
        if (fd < 0)
            return in.raise(ErrorId::FileNotOpen);
        return 0;
    case FileMode::Input: fd = ::open(path.c_str(), O_RDONLY); break;
    case FileMode::Output: fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666); break;
    default: fd = ::open(path.c_str(), O_RDWR | O_APPEND); break;
    }
    if (fd < 0)
        return in.raise(ErrorId::FileNotFound);
    return 0;
}

// A channel as OPEN leaves it: record length 256, no fields, no record read or written yet.
FileChannel openedChannel(int fd, FileMode mode, DeviceKind device)
{
    FileChannel channel;
    channel.handle = 1;
    channel.fd = fd;
    channel.mode = mode;
    channel.device = device;
    return channel;
}

bool containsAny(const std::string& name, std::initializer_list<const char*> words)
{
    for (const char* word : words)
        if (name.find(word) != std::string::npos)
            return true;
    return false;
}

} // namespace

int openChannel(core::Interpreter& in, int number, FileMode mode, const std::string& name)
{
    auto& files = in.files();
    // A number that is open already is closed first.
    if (files.entry(number).isOpen())
        files.close(number);
    FileChannel channel;
    if (name.find("COM") != std::string::npos) {
        return openComChannel(in, number, name);
    } else if (name.find("LPT") != std::string::npos) {
        if (mode != FileMode::Output)
            return in.raise(ErrorId::SyntaxError);
        // Every printer port is the system printer; without one the port cannot be opened.
        if (!in.host().hasPrinter())
            return in.raise(ErrorId::FileCannotOpen);
        channel = openedChannel(-1, FileMode::Output, DeviceKind::Printer);
    } else if (containsAny(name, {"SCRN:", "SCRN :"})) {
        if (mode != FileMode::Output)
            return in.raise(ErrorId::SyntaxError);
        channel = openedChannel(-1, FileMode::Output, DeviceKind::Screen);
    } else if (containsAny(name, {"KYBD:", "KYBD :"})) {
        if (mode != FileMode::Input)
            return in.raise(ErrorId::SyntaxError);
        channel = openedChannel(-1, FileMode::Input, DeviceKind::Keyboard);
    } else {
        int fd = -1;
        TRY_BASIC(openDisk(in, name, mode, fd));
        channel = openedChannel(fd, mode, DeviceKind::Disk);
    }
    files.entry(number) = channel;
    return 0;
}

Outcome stmtOpen(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    size_t forAt = core::findOutsideQuotes(text, " FOR ", 0);
    size_t asAt = core::findOutsideQuotes(text, " AS ", 0);
    if (forAt == std::string_view::npos && asAt == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    bool withFor = forAt < asAt;
    size_t nameEnd = withFor ? forAt : asAt;
    expr::Value nameValue;
    TRY_BASIC(expr::evaluateText(in, text.substr(0, nameEnd), nameValue));
    // The name's text as written, quotes and all, from which the quotes are then cut.
    std::string fileName = nameValue.isString() ? "\"" + nameValue.text + "\"" : expr::numberValueText(nameValue);
    FileMode mode = FileMode::Random;
    size_t after = asAt + 4;
    if (withFor) {
        static constexpr std::pair<const char*, FileMode> kModes[] = {
            {"INPUT", FileMode::Input}, {"OUTPUT", FileMode::Output}, {"APPEND", FileMode::Append}};
        size_t first = std::string_view::npos;
        for (const auto& [word, kind] : kModes) {
            size_t at = text.find(word, forAt);
            if (at < first) {
                first = at;
                mode = kind;
                after = at + std::string_view(word).size();
            }
        }
        if (first == std::string_view::npos)
            return in.raise(ErrorId::SyntaxError);
    }
    size_t hash = text.find('#', after);
    if (hash == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    // The number is the one or two characters right after "#".
    std::string digits(text.substr(hash + 1, 2));
    int number = std::atoi(digits.c_str());
    if (number < 1 || number > kHighestFileNumber || fileName.size() < 2)
        return in.raise(ErrorId::BadFileNumber);
    std::string name = core::upperCased(std::string_view(fileName).substr(1, fileName.size() - 2));

    return core::outcomeOf(openChannel(in, number, mode, name));
}

Outcome stmtClose(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto& files = in.files();
    auto closeOne = [&](int n) -> int {
        if (files.entry(n).isOpen() && files.entry(n).device == DeviceKind::Serial)
            return closeComChannel(in, n);
        if (!files.entry(n).isOpen() || !files.close(n))
            return in.raise(ErrorId::FileNotOpen);
        return 0;
    };
    size_t hash = text.find('#');
    if (hash == std::string_view::npos) {
        for (int n = 1; n <= kHighestFileNumber; ++n)
            if (files.entry(n).isOpen())
                TRY_BASIC(closeOne(n));
        return kDone;
    }
    auto list = text.substr(hash + 1);
    list = list.substr(0, list.find_first_of(":'\r\n"));
    while (true) {
        size_t comma = list.find(',');
        std::string field(list.substr(0, comma));
        // An empty last field ends the list.
        if (comma == std::string_view::npos && core::trimBlanks(field).empty())
            break;
        TRY_BASIC(closeOne(std::atoi(field.c_str())));
        if (comma == std::string_view::npos)
            break;
        list.remove_prefix(comma + 1);
    }
    return kDone;
}

} // namespace tessaly::io
