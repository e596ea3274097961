// Finding, reading and writing the font cache files.
#include "screen/font_cache.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace tessaly::screen {

namespace {

namespace fs = std::filesystem;

constexpr const char* kCacheSuffix = ".glyphs";

// The .hex file's name without its folder and extension: the first part of its cache files' names.
std::string cacheStem(const std::string& hexPath) { return fs::path(hexPath).stem().string(); }

bool writeAll(int descriptor, const uint8_t* data, size_t size)
{
    while (size > 0) {
        ssize_t written = ::write(descriptor, data, size);
        if (written <= 0)
            return false;
        data += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

// The bytes of a file no larger than a glyph table can be.
std::optional<std::vector<uint8_t>> readTableFile(const std::string& path)
{
    int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    std::optional<std::vector<uint8_t>> contents;
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
        && static_cast<uint64_t>(status.st_size) <= kLargestGlyphTableBytes) {
        contents.emplace(static_cast<size_t>(status.st_size));
        size_t done = 0;
        while (done < contents->size()) {
            ssize_t got = ::read(descriptor, contents->data() + done, contents->size() - done);
            if (got <= 0)
                break;
            done += static_cast<size_t>(got);
        }
        contents->resize(done); // a file cut meanwhile shows as too short
    }
    ::close(descriptor);
    return contents;
}

// Removes the cache files of the same .hex file but another key or version.
void removeOtherCacheFiles(const fs::path& folder, const std::string& hexPath, const std::string& kept)
{
    std::string prefix = cacheStem(hexPath) + "-";
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::string name = it->path().filename().string();
        if (name != kept && name.starts_with(prefix) && name.ends_with(kCacheSuffix)) {
            std::error_code ignored;
            fs::remove(it->path(), ignored);
        }
    }
}

} // namespace

std::string UserFontCacheFolder()
{
    // A relative XDG_CACHE_HOME is not to be used.
    const char* cacheHome = std::getenv("XDG_CACHE_HOME");
    if (cacheHome != nullptr && cacheHome[0] == '/')
        return std::string(cacheHome) + "/tessaly";
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] == '/')
        return std::string(home) + "/.cache/tessaly";
    return {};
}

std::optional<FontSourceKey> FontSourceKeyOf(const std::string& hexPath)
{
    struct stat status {};
    if (::stat(hexPath.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || ::access(hexPath.c_str(), R_OK) != 0)
        return std::nullopt;
    return FontSourceKey {static_cast<uint64_t>(status.st_size),
        static_cast<int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec};
}

std::string FontCacheFileName(const std::string& hexPath, const FontSourceKey& key)
{
    return cacheStem(hexPath) + "-" + std::to_string(key.size) + "-" + std::to_string(key.modifiedNanoseconds) + "-v"
        + std::to_string(kGlyphTableVersion) + kCacheSuffix;
}

std::optional<GlyphTable> ReadFontCache(const std::string& folder, const std::string& hexPath,
    const FontSourceKey& key)
{
    if (folder.empty())
        return std::nullopt;
    auto bytes = readTableFile((fs::path(folder) / FontCacheFileName(hexPath, key)).string());
    if (!bytes)
        return std::nullopt;
    return GlyphTable::fromBytes(std::move(*bytes), key);
}

bool WriteFontCache(const std::string& folder, const std::string& hexPath, const FontSourceKey& key,
    const GlyphTable& table)
{
    if (folder.empty())
        return false;
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        return false;
    std::string name = FontCacheFileName(hexPath, key);
    fs::path target = fs::path(folder) / name;
    std::string temporary = target.string() + ".XXXXXX";
    int descriptor = mkstemp(temporary.data());
    if (descriptor < 0)
        return false;
    auto bytes = table.bytes();
    bool written = writeAll(descriptor, bytes.data(), bytes.size());
    written = ::close(descriptor) == 0 && written;
    if (!written || ::rename(temporary.c_str(), target.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    removeOtherCacheFiles(folder, hexPath, name);
    return true;
}

} // namespace tessaly::screen
