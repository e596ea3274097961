// Positions and sizes of disk files behind file numbers.
#include "io/file_functions.h"

#include <sys/stat.h>
#include <unistd.h>

#include "core/interpreter.h"

namespace tessaly::io {

int queryFile(core::Interpreter& in, FileQuery query, int n, double& result)
{
    FileChannel& channel = in.files().entry(n);
    if (!channel.isOpen())
        return in.raise(core::ErrorId::FileNotOpen);
    if (channel.device != DeviceKind::Disk) {
        if (query != FileQuery::AtEnd)
            return in.raise(core::ErrorId::IllegalFunctionCall);
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

} // namespace tessaly::io
