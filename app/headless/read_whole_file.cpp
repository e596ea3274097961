#include "app/headless/read_whole_file.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly::app {

bool ReadWholeFile(const char* path, std::string& bytes, size_t limit)
{
    int fd = open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat info {};
    bool readable = fstat(fd, &info) == 0 && (S_ISREG(info.st_mode) || S_ISFIFO(info.st_mode));
    char chunk[65536];
    while (readable && bytes.size() <= limit) {
        size_t wanted = std::min(sizeof chunk, limit + 1 - bytes.size());
        ssize_t got = read(fd, chunk, wanted);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            readable = got == 0;
            break;
        }
        bytes.append(chunk, static_cast<size_t>(got));
    }
    close(fd);
    return readable;
}

} // namespace tessaly::app
