// Writing a whole file so that a failure never leaves it changed: the new bytes go to a temporary
// file beside it, which then takes its place. A symbolic link is followed to the file it names.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::io {

enum class ReplaceOutcome : uint8_t {
    Replaced,
    CannotCreate, // the file (or its folder) cannot be written; nothing changed
    WriteFailed, // writing failed (a full disk); the previous file is as it was
};

// Temporary files are named with this prefix, the writing process's id, a '-' and a unique tail.
inline constexpr char kTemporaryPrefix[] = ".tessaly-save-";

// Writes bytes as the whole content of path. When path is a symbolic link, the file it leads to is
// written and the link stays. When no temporary file can be made beside the file (a folder without
// write permission), an existing writable file is rewritten in place; if that write fails, its
// previous bytes are put back. Temporary files of earlier saves whose process has ended (killed
// while saving) are removed from the folder first. Termination signals that arrive while a
// temporary file exists take effect once it is gone.
ReplaceOutcome ReplaceFile(const std::string& path, const std::string& bytes);

// The file a path leads to after following symbolic links (the path itself when it is none).
std::string FollowLinks(const std::string& path);

} // namespace tessaly::io
