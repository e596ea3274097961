// The document's file side: whole-file reads into the program store and whole-file writes that
// replace the previous file only once the new one is complete.
#include "io/program_document.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "core/interpreter.h"
#include "io/program_file.h"
#include "screen/renderer.h"

namespace tessaly::io {

std::string AbsolutePath(const std::string& path)
{
    if (!path.empty() && path.front() == '/')
        return path;
    char buffer[4096];
    if (getcwd(buffer, sizeof buffer) == nullptr)
        return path;
    return std::string(buffer) + "/" + path;
}

namespace {

// Programs that OPEN, LOAD or KILL by a bare name find their files beside the program.
void followProgramFolder(const std::string& path)
{
    std::string folder = FolderOf(AbsolutePath(path));
    if (chdir(folder.c_str()) != 0) {
        // The folder stays as it was; the file itself was read or written by its full path.
    }
}

bool writeAll(int fd, const std::string& bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += static_cast<size_t>(n);
    }
    return true;
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

int raiseFailure(core::Interpreter& in, core::ErrorId id, RaiseAt raiseAt)
{
    return raiseAt == RaiseAt::Statement ? in.raise(id) : in.raiseWithoutLine(id);
}

} // namespace

std::string FolderOf(const std::string& path)
{
    auto slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool LoadProgramDocument(core::Interpreter& in, const std::string& path, RaiseAt raiseAt)
{
    std::ifstream file(path, std::ios::binary);
    struct stat info {};
    if (!file || stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode)) {
        raiseFailure(in, core::ErrorId::FileNotOpen, raiseAt);
        return false;
    }
    std::string bytes(kMaxProgramFileBytes, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(file.gcount()));
    followProgramFolder(path);
    ProgramFileFormat format = ProgramFile::Read(bytes, in.program());
    auto& formats = in.programFormats();
    formats.loadedFormat = static_cast<uint8_t>(format);
    formats.saveFormat = kFormatNotChosen;
    // What was interrupted belongs to the program that is gone.
    in.run().canContinue = false;
    in.run().continueIndex = -1;
    in.host().setDocumentModified(false);
    if (auto* renderer = in.renderer())
        renderer->focusGained();
    return true;
}

bool SaveProgramDocument(core::Interpreter& in, const std::string& path, RaiseAt raiseAt)
{
    std::string target = AbsolutePath(path);
    struct stat info {};
    bool exists = stat(target.c_str(), &info) == 0;
    if ((exists && (S_ISDIR(info.st_mode) || access(target.c_str(), W_OK) != 0))) {
        raiseFailure(in, core::ErrorId::FileAlreadyExists, raiseAt);
        return false;
    }
    std::string temporary = FolderOf(target) + "/.tessaly-save-XXXXXX";
    int fd = mkstemp(temporary.data());
    if (fd < 0) {
        raiseFailure(in, core::ErrorId::FileAlreadyExists, raiseAt);
        return false;
    }
    fchmod(fd, modeFor(target));
    followProgramFolder(target);
    auto& formats = in.programFormats();
    auto image = ProgramFile::Write(formats.toWrite(), in.program());
    formats.saveFormat = kFormatNotChosen;
    // A line that cannot be written leaves the file empty, as a write that stopped at once.
    bool written = writeAll(fd, image.value_or(std::string())) && fsync(fd) == 0;
    written = close(fd) == 0 && written;
    if (!written || rename(temporary.c_str(), target.c_str()) != 0) {
        unlink(temporary.c_str());
        raiseFailure(in, core::ErrorId::DiskIoError, raiseAt);
        return false;
    }
    if (!image) {
        raiseFailure(in, core::ErrorId::SyntaxError, raiseAt);
        return false;
    }
    in.host().setDocumentModified(false);
    return true;
}

} // namespace tessaly::io
