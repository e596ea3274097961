// Reading a program file whole for the runner and the conversion commands.
#pragma once

#include <cstddef>
#include <string>

namespace tessaly::app {

// The file's bytes, at most limit + 1 of them (so that a caller can tell a file longer than limit);
// false when it cannot be read. Only a plain file or a pipe holds a program: a folder, a device or
// a socket is refused rather than read without end or waited on.
bool ReadWholeFile(const char* path, std::string& bytes, size_t limit);

} // namespace tessaly::app
