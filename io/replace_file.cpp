// Whole-file replacement through a temporary file beside the target; see io/replace_file.h.
#include "io/replace_file.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "io/program_document.h"

namespace tessaly::io {

namespace {

// The longest chain of links followed, as the system itself allows.
constexpr int kMostLinks = 40;

// Termination signals wait while a temporary file exists, so that the process never ends between
// making it and renaming or removing it. They are delivered when this ends.
class TerminationDeferred {
public:
    TerminationDeferred()
    {
        sigset_t deferred;
        sigemptyset(&deferred);
        for (int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT})
            sigaddset(&deferred, signal);
        pthread_sigmask(SIG_BLOCK, &deferred, &m_previous);
    }
    ~TerminationDeferred() { pthread_sigmask(SIG_SETMASK, &m_previous, nullptr); }
    TerminationDeferred(const TerminationDeferred&) = delete;
    TerminationDeferred& operator=(const TerminationDeferred&) = delete;

private:
    sigset_t m_previous {};
};

bool writeAllAt(int fd, std::string_view bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = pwrite(fd, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += static_cast<size_t>(n);
    }
    return true;
}

bool readAll(int fd, std::string& bytes)
{
    char block[65536];
    for (;;) {
        ssize_t n = read(fd, block, sizeof block);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return false;
        if (n == 0)
            return true;
        bytes.append(block, static_cast<size_t>(n));
    }
}

// The mode a new file gets: the old file's, else read-write for all as the umask allows.
mode_t modeFor(const std::string& path)
{
    struct stat info {};
    if (stat(path.c_str(), &info) == 0)
        return info.st_mode & 07777;
    mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// The process id in a temporary file's name, 0 when the name is not one of ours.
pid_t writerOf(std::string_view name)
{
    std::string_view prefix = kTemporaryPrefix;
    if (!name.starts_with(prefix))
        return 0;
    name.remove_prefix(prefix.size());
    pid_t pid = 0;
    size_t pos = 0;
    for (; pos < name.size() && name[pos] >= '0' && name[pos] <= '9' && pid < 100000000; ++pos)
        pid = pid * 10 + (name[pos] - '0');
    return pos < name.size() && name[pos] == '-' ? pid : 0;
}

// Removes the temporary files that a save killed half-way left in folder: those of processes that
// no longer run. (A file of this process cannot be in use: one save runs at a time.)
void removeStaleTemporaries(const std::string& folder)
{
    DIR* dir = opendir(folder.c_str());
    if (dir == nullptr)
        return;
    while (dirent* entry = readdir(dir)) {
        pid_t writer = writerOf(entry->d_name);
        if (writer <= 0)
            continue;
        if (writer == getpid() || (kill(writer, 0) != 0 && errno == ESRCH))
            unlink((folder + "/" + entry->d_name).c_str());
    }
    closedir(dir);
}

// The file rewritten where it is, for a folder that takes no new files. The previous bytes are
// read first and put back when the new ones cannot all be written.
ReplaceOutcome rewriteInPlace(const std::string& target, const std::string& bytes)
{
    int fd = open(target.c_str(), O_RDWR);
    if (fd < 0)
        return ReplaceOutcome::CannotCreate;
    std::string previous;
    if (!readAll(fd, previous)) {
        close(fd);
        return ReplaceOutcome::CannotCreate;
    }
    bool written = writeAllAt(fd, bytes) && ftruncate(fd, static_cast<off_t>(bytes.size())) == 0 && fsync(fd) == 0;
    if (!written) {
        // The old bytes fit where they were: writing them back needs no new space.
        if (writeAllAt(fd, previous) && ftruncate(fd, static_cast<off_t>(previous.size())) == 0) {
            // Put back.
        }
    }
    written = close(fd) == 0 && written;
    return written ? ReplaceOutcome::Replaced : ReplaceOutcome::WriteFailed;
}

} // namespace

std::string FollowLinks(const std::string& path)
{
    std::string current = path;
    for (int hop = 0; hop < kMostLinks; ++hop) {
        struct stat info {};
        if (lstat(current.c_str(), &info) != 0 || !S_ISLNK(info.st_mode))
            return current;
        char target[4096];
        ssize_t length = readlink(current.c_str(), target, sizeof target - 1);
        if (length <= 0)
            return current;
        std::string next(target, static_cast<size_t>(length));
        current = next.front() == '/' ? next : FolderOf(current) + "/" + next;
    }
    return current;
}

ReplaceOutcome ReplaceFile(const std::string& path, const std::string& bytes)
{
    std::string target = FollowLinks(path);
    std::string folder = FolderOf(target);
    removeStaleTemporaries(folder);
    TerminationDeferred deferred;
    std::string temporary = folder + "/" + kTemporaryPrefix + std::to_string(getpid()) + "-XXXXXX";
    int fd = mkstemp(temporary.data());
    if (fd < 0) {
        struct stat info {};
        if (stat(target.c_str(), &info) == 0 && S_ISREG(info.st_mode))
            return rewriteInPlace(target, bytes);
        return ReplaceOutcome::CannotCreate;
    }
    fchmod(fd, modeFor(target));
    bool written = writeAllAt(fd, bytes) && fsync(fd) == 0;
    written = close(fd) == 0 && written;
    if (!written || rename(temporary.c_str(), target.c_str()) != 0) {
        unlink(temporary.c_str());
        return ReplaceOutcome::WriteFailed;
    }
    return ReplaceOutcome::Replaced;
}

} // namespace tessaly::io
