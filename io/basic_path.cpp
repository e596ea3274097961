// Case-blind lookup of file names, and the name rules of LOAD and SAVE.
#include "io/basic_path.h"

#include <dirent.h>
#include <sys/stat.h>

#include "core/text_scan.h"
#include "core/upper_case_pass.h"

namespace tessaly::io {

namespace {

bool exists(const std::string& path)
{
    struct stat info {};
    return stat(path.c_str(), &info) == 0;
}

bool sameIgnoringCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (size_t k = 0; k < a.size(); ++k) {
        if (core::toUpperAscii(a[k]) != core::toUpperAscii(b[k]))
            return false;
    }
    return true;
}

// The entry of folder spelled like part in some case; part itself when there is none.
std::string spellingIn(const std::string& folder, const std::string& part)
{
    DIR* directory = opendir(folder.empty() ? "." : folder.c_str());
    if (directory == nullptr)
        return part;
    std::string found = part;
    while (dirent* entry = readdir(directory)) {
        if (sameIgnoringCase(entry->d_name, part)) {
            found = entry->d_name;
            break;
        }
    }
    closedir(directory);
    return found;
}

} // namespace

std::string HostPath(std::string_view basicName)
{
    std::string name(basicName);
    for (char& c : name)
        c = c == '\\' ? '/' : c;
    std::string path = !name.empty() && name.front() == '/' ? "/" : "";
    size_t start = path.size();
    while (start <= name.size()) {
        size_t slash = name.find('/', start);
        std::string part = name.substr(start, slash == std::string::npos ? std::string::npos : slash - start);
        if (!part.empty()) {
            std::string candidate = path + part;
            if (!exists(candidate))
                candidate = path + spellingIn(path, part);
            path = candidate;
        }
        if (slash == std::string::npos)
            break;
        if (!part.empty())
            path += '/';
        start = slash + 1;
    }
    return path;
}

std::string ProgramFileName(std::string_view text)
{
    std::string name = core::upperCased(text);
    if (!name.empty() && name.front() == '"')
        name.erase(0, 1);
    if (!name.empty() && name.back() == '"')
        name.pop_back();
    return core::trimBlanks(name);
}

std::string WithProgramExtension(std::string name)
{
    if (name.find('.') == std::string::npos)
        name += ".BAS";
    return name;
}

bool NamesDevice(std::string_view name, std::string_view device)
{
    auto at = name.find(device);
    return at != std::string_view::npos && name.find(':', 1) != std::string_view::npos;
}

} // namespace tessaly::io
