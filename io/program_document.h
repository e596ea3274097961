// Loading and storing the program as the document's Open, Save and Save As do: reading a file
// whole into the program store, writing the store's image, the process's current directory
// following the program's folder. Failures raise the BASIC error of the command (no line number).
#pragma once

#include <string>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// Replaces the program with the file at path (its first 65,535 bytes). false, with
// "File not open in " raised, when the file cannot be read; the program is then untouched.
bool LoadProgramDocument(core::Interpreter& in, const std::string& path);

// Writes the program to path in the format to write. false with an error raised:
// "File already exist in " when the file cannot be created, "Syntax error in " when a line
// cannot be written as a record (the file is left empty), "Disk I/O error in " when writing
// fails (the previous file is kept). The new file replaces the old one only when it is whole.
bool SaveProgramDocument(core::Interpreter& in, const std::string& path);

// The folder that holds path ("." for a bare name).
std::string FolderOf(const std::string& path);

} // namespace tessaly::io
