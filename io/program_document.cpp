// The document's file side: whole-file reads into the program store and whole-file writes that
// replace the previous file only once the new one is complete (io/replace_file).
#include "io/program_document.h"

#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "core/interpreter.h"
#include "io/program_file.h"
#include "io/program_formats.h"
#include "io/replace_file.h"

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

LoadOutcome LoadProgramDocument(core::Interpreter& in, const std::string& path, RaiseAt raiseAt)
{
    std::ifstream file(path, std::ios::binary);
    struct stat info {};
    if (!file || stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode)) {
        raiseFailure(in, core::ErrorId::FileNotOpen, raiseAt);
        return LoadOutcome::Failed;
    }
    // One byte more than is loaded tells whether the file was cut.
    std::string bytes(kMaxProgramFileBytes + 1, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(file.gcount()));
    followProgramFolder(path);
    return ProgramFromBytes(in, bytes) ? LoadOutcome::Cut : LoadOutcome::Loaded;
}

bool ProgramFromBytes(core::Interpreter& in, std::string_view bytes)
{
    bool cut = bytes.size() > kMaxProgramFileBytes;
    ProgramFileFormat format = ProgramFile::Read(bytes, in.program());
    auto& formats = in.programFormats();
    formats.loadedFormat = static_cast<uint8_t>(format);
    formats.saveFormat = kFormatNotChosen;
    // What was interrupted belongs to the program that is gone.
    in.run().canContinue = false;
    in.run().continueIndex = -1;
    // A cut program is not the file: it counts as changed, so that closing asks before it is lost.
    in.host().setDocumentModified(cut);
    in.recomposeScreen();
    return cut;
}

bool SaveProgramDocument(core::Interpreter& in, const std::string& path, RaiseAt raiseAt, bool* tooLongToLoad)
{
    std::string target = FollowLinks(AbsolutePath(path));
    struct stat info {};
    bool exists = stat(target.c_str(), &info) == 0;
    if ((exists && (S_ISDIR(info.st_mode) || access(target.c_str(), W_OK) != 0))) {
        raiseFailure(in, core::ErrorId::FileAlreadyExists, raiseAt);
        return false;
    }
    auto& formats = in.programFormats();
    auto image = ProgramFile::Write(formats.toWrite(), in.program());
    formats.saveFormat = kFormatNotChosen;
    // A line that cannot be written stops the save before the file is touched.
    if (!image) {
        raiseFailure(in, core::ErrorId::SyntaxError, raiseAt);
        return false;
    }
    switch (ReplaceFile(target, *image)) {
    case ReplaceOutcome::Replaced:
        break;
    case ReplaceOutcome::CannotCreate:
        raiseFailure(in, core::ErrorId::FileAlreadyExists, raiseAt);
        return false;
    case ReplaceOutcome::WriteFailed:
        raiseFailure(in, core::ErrorId::DiskIoError, raiseAt);
        return false;
    }
    followProgramFolder(AbsolutePath(path));
    if (tooLongToLoad != nullptr)
        *tooLongToLoad = image->size() > kMaxProgramFileBytes;
    in.host().setDocumentModified(false);
    return true;
}

} // namespace tessaly::io
