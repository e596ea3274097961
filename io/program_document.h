// Loading and storing the program as the document's Open, Save and Save As do: reading a file
// whole into the program store, writing the store's image, the process's current directory
// following the program's folder. Failures raise the BASIC error of the command (no line number).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// How a failure is raised: without a line number (menu commands), or at the statement being run
// (LOAD and SAVE).
enum class RaiseAt : uint8_t { NoLine, Statement };

enum class LoadOutcome : uint8_t {
    Failed, // "File not open in " raised; the program is untouched
    Loaded,
    Cut, // the file is longer than a program file may be: only its first 65,535 bytes were read
};

// Replaces the program with the file at path (its first 65,535 bytes).
LoadOutcome LoadProgramDocument(core::Interpreter& in, const std::string& path, RaiseAt raiseAt = RaiseAt::NoLine);

// Replaces the program with a program file's bytes (received through a serial port, or read from
// a file), as LOAD does; true when they were longer than a program file may be and were cut.
bool ProgramFromBytes(core::Interpreter& in, std::string_view bytes);
// The line shown after a save that LOAD cannot read back whole.
inline constexpr char kSavedTooLongToLoad[] = "Program longer than 65535 bytes: LOAD reads only the first 65535";

// Writes the program to path in the format to write (a symbolic link is followed to its file).
// false with an error raised: "File already exist in " when the file cannot be created or
// written, "Syntax error in " when a line cannot be written as a record, "Disk I/O error in "
// when writing fails. A failed save never changes the file on disk. tooLongToLoad, when given,
// tells whether the written file is longer than LOAD reads.
bool SaveProgramDocument(
    core::Interpreter& in, const std::string& path, RaiseAt raiseAt = RaiseAt::NoLine, bool* tooLongToLoad = nullptr);

// The folder that holds path ("." for a bare name).
std::string FolderOf(const std::string& path);
// path from the root: a relative path is taken from the current folder.
std::string AbsolutePath(const std::string& path);

} // namespace tessaly::io
