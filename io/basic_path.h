// File names as programs write them, turned into paths of this system. The names of this BASIC
// are blind to case and may use backslashes; the file system here is neither.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::io {

// Backslashes become slashes; each part of the path that names an existing entry in another case
// takes that entry's own spelling. Parts that exist in no case stay as written.
std::string HostPath(std::string_view basicName);

// A program file name from its text: upper-cased, a double quote at either end removed, then the
// blanks at both ends.
std::string ProgramFileName(std::string_view text);

// ".BAS" is added when the name has no "." anywhere (a folder's "." counts).
std::string WithProgramExtension(std::string name);

// A device name (COM or LPT followed by ":" somewhere after the first character), not a file.
bool NamesDevice(std::string_view name, std::string_view device);

} // namespace tessaly::io
