// Lines of a program file merged into the program as if typed (MERGE and CHAIN).
#pragma once

#include <string>
#include <string_view>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// The whole file at path (a program's name, blind to case); "File not found in " when it cannot
// be opened, "Disk I/O error in " when reading fails. Returns 0 or kFailed.
int ReadFileForMerge(core::Interpreter& in, const std::string& path, std::string& contents);

// Every line of text that starts with a line number (after blanks) replaces or joins the program
// lines; upperCase upper-cases letters outside strings first (CHAIN). Returns 0 or kFailed.
int MergeProgramText(core::Interpreter& in, std::string_view text, bool upperCase);

} // namespace tessaly::io
