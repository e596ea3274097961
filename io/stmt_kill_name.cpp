// KILL and NAME: deleting and renaming files named in quotes.
#include <cstdio>
#include <string>
#include <sys/stat.h>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "io/basic_path.h"
#include "io/program_document.h"

namespace tessaly::io {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

// The text inside the next pair of double quotes from pos, blanks left out; pos moves past it.
// false when there is no such pair.
bool quotedName(std::string_view text, size_t& pos, std::string& name)
{
    size_t open = text.find('"', pos);
    if (open == std::string_view::npos)
        return false;
    size_t close = text.find('"', open + 1);
    if (close == std::string_view::npos)
        return false;
    name.clear();
    for (char c : text.substr(open + 1, close - open - 1))
        if (c != ' ')
            name += c;
    pos = close + 1;
    return !name.empty();
}

bool readable(const std::string& path)
{
    struct stat info {};
    if (stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode))
        return false;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return false;
    std::fclose(file);
    return true;
}

} // namespace

Outcome stmtKill(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    size_t pos = 0;
    std::string name;
    if (!quotedName(text, pos, name))
        return in.raise(ErrorId::FileNotFound);
    std::string path = HostPath(name);
    if (!readable(path))
        return in.raise(ErrorId::FileNotFound);
    // A file that cannot be deleted (a read-only folder) is reported as a disk failure.
    if (std::remove(path.c_str()) != 0)
        return in.raise(ErrorId::DiskIoError);
    return kDone;
}

Outcome stmtName(core::Interpreter& in, int begin, int end)
{
    auto text = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    size_t pos = 0;
    std::string oldName;
    std::string newName;
    if (!quotedName(text, pos, oldName))
        return in.raise(ErrorId::FileNotFound);
    auto as = text.find("AS", pos);
    if (as == std::string_view::npos || !quotedName(text, pos = as + 2, newName))
        return in.raise(ErrorId::SyntaxError);
    std::string oldPath = HostPath(oldName);
    if (!readable(oldPath))
        return in.raise(ErrorId::FileNotFound);
    // A rename never moves a file: the new name's last part goes into the old file's folder.
    auto cut = newName.find_last_of("\\/:");
    std::string last = cut == std::string::npos ? newName : newName.substr(cut + 1);
    std::string folder = oldPath.find('/') == std::string::npos ? std::string() : FolderOf(oldPath) + "/";
    std::string newPath = HostPath(folder + last);
    struct stat info {};
    if (stat(newPath.c_str(), &info) == 0)
        return in.raise(ErrorId::FileAlreadyExists);
    if (std::rename(oldPath.c_str(), newPath.c_str()) != 0)
        return in.raise(ErrorId::DiskIoError);
    return kDone;
}

} // namespace tessaly::io
