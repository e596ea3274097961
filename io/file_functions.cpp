// Positions and sizes of disk files behind file numbers, raw reads, and typed keys for the program.
#include "io/file_functions.h"

#include <sys/stat.h>
#include <unistd.h>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "io/com_channel.h"
#include "io/file_table.h"
#include "screen/keyboard.h"

namespace tessaly::io {

int queryFile(core::Interpreter& in, FileQuery query, int n, double& result)
{
    FileChannel& channel = in.files().entry(n);
    if (!channel.isOpen())
        return in.raise(core::ErrorId::FileNotOpen);
    if (channel.device == DeviceKind::Serial) {
        // EOF: no byte waiting; LOC: the bytes waiting; LOF: the room left for more.
        if (query != FileQuery::AtEnd)
            return comCount(in, channel, query == FileQuery::Position ? ComCount::Waiting : ComCount::FreeSpace, result);
        bool empty = false;
        TRY_BASIC(comIsEmpty(in, channel, empty));
        result = empty ? -1 : 0;
        return 0;
    }
    if (channel.device != DeviceKind::Disk) {
        if (query != FileQuery::AtEnd)
            return in.raise(core::ErrorId::IllegalFunctionCall);
        // A device never ends: the keyboard always has a next key to wait for.
        result = 0;
        return 0;
    }
    struct stat info {};
    off_t position = ::lseek(channel.fd, 0, SEEK_CUR);
    if (position < 0 || ::fstat(channel.fd, &info) != 0)
        return in.raise(core::ErrorId::DiskIoError);
    switch (query) {
    case FileQuery::Length: result = static_cast<double>(info.st_size); return 0;
    case FileQuery::Position: result = static_cast<double>(position); return 0;
    case FileQuery::AtEnd: break;
    }
    // A file not open for reading has no end to report: it reads as not at its end.
    result = 0;
    if (channel.mode != FileMode::Input)
        return 0;
    if (position >= info.st_size) {
        result = -1;
    } else if (position == info.st_size - 1) {
        // Only the final CR of the last record is left.
        char last = 0;
        if (::pread(channel.fd, &last, 1, position) == 1 && last == '\r')
            result = -1;
    }
    return 0;
}

int fileNumberOf(std::string_view text)
{
    size_t pos = text.find_first_not_of(" #");
    int number = 0;
    for (; pos < text.size() && text[pos] >= '0' && text[pos] <= '9'; ++pos) {
        number = number * 10 + (text[pos] - '0');
        if (number > kHighestFileNumber * 10)
            return 0;
    }
    return number;
}

int takeTypedKeys(core::Interpreter& in, size_t count, std::string& taken)
{
    auto& keyboard = in.keyboard();
    // Keys typed while the program runs are collected until there are enough.
    keyboard.keyCapture = 1;
    in.host().keyboardRead();
    if (keyboard.keyBuffer.size() < count) {
        in.run().waitingForKeys = true;
        return core::kFailed;
    }
    keyboard.keyCapture = 0;
    taken = keyboard.keyBuffer.substr(0, count);
    keyboard.keyBuffer.erase(0, count);
    return 0;
}

int readFileBytes(core::Interpreter& in, int n, size_t count, std::string& bytes)
{
    FileChannel& channel = in.files().entry(n);
    if (!channel.isOpen())
        return in.raise(core::ErrorId::FileNotOpen);
    if (channel.device == DeviceKind::Keyboard)
        return takeTypedKeys(in, count, bytes);
    if (channel.device == DeviceKind::Serial)
        return bytesFromCom(in, channel, count, bytes);
    if (channel.device != DeviceKind::Disk || channel.mode != FileMode::Input)
        return in.raise(core::ErrorId::SyntaxError);
    bytes.assign(count, '\0');
    size_t done = 0;
    while (done < count) {
        ssize_t got = ::read(channel.fd, bytes.data() + done, count - done);
        if (got <= 0)
            return in.raise(core::ErrorId::DiskIoError);
        done += static_cast<size_t>(got);
    }
    return 0;
}

} // namespace tessaly::io
