// Loading and storing the program as the document's Open, Save and Save As do: reading a file
// whole into the program store, writing the store's image, the process's current directory
// following the program's folder. Failures raise the BASIC error of the command (no line number).
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// How a failure is raised: without a line number (menu commands), or at the statement being run
// (LOAD and SAVE).
enum class RaiseAt : uint8_t { NoLine, Statement };

// Replaces the program with the file at path (its first 65,535 bytes). false, with
// "File not open in " raised, when the file cannot be read; the program is then untouched.
bool LoadProgramDocument(core::Interpreter& in, const std::string& path, RaiseAt raiseAt = RaiseAt::NoLine);

// Writes the program to path in the format to write. false with an error raised:
// "File already exist in " when the file cannot be created, "Syntax error in " when a line
// cannot be written as a record (the file is left empty), "Disk I/O error in " when writing
// fails (the previous file is kept). The new file replaces the old one only when it is whole.
bool SaveProgramDocument(core::Interpreter& in, const std::string& path, RaiseAt raiseAt = RaiseAt::NoLine);

// The folder that holds path ("." for a bare name).
std::string FolderOf(const std::string& path);
// path from the root: a relative path is taken from the current folder.
std::string AbsolutePath(const std::string& path);

} // namespace tessaly::io
