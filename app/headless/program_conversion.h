// tessaly --list FILE and tessaly --convert IN OUT [--text | --records]: a program file in line
// records, Shift-JIS text or UTF-8 text, printed as UTF-8 or written as a program file in either
// format. A program that cannot be taken whole is refused with one line saying why; nothing of it
// is written then.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "io/program_file.h"

namespace tessaly::core {
class ProgramStore;
}

namespace tessaly::app {

enum class TextEncoding : uint8_t { ShiftJis, Utf8 };

// A text program file is UTF-8 when it has bytes above 0x7F and all of them form well-formed UTF-8
// sequences; Shift-JIS otherwise.
TextEncoding TextEncodingOf(std::string_view bytes);

// Puts the program of a file's bytes in the store as LOAD reads it. UTF-8 text (a byte order mark
// left out) is converted to Shift-JIS; a text line may end in CR LF, LF or CR, and empty lines,
// lines of blanks or tabs and an end-of-file byte 0x1A are left out. The reason, when the program
// is refused: "line 3: ..." or "record 3: ...".
std::optional<std::string> ReadProgramToConvert(std::string_view bytes, core::ProgramStore& store);

// The stored program as UTF-8 text, each line ended by a line feed.
std::string ListingAsUtf8(core::ProgramStore& store);

// The program file image of the store in the format; an error when it is longer than LOAD reads.
std::optional<std::string> ProgramImage(
    core::ProgramStore& store, io::ProgramFileFormat format, std::string& error);

// Runs --list or --convert as the arguments give it; returns the exit status (0, or 2 with a
// message on standard error).
int RunProgramFileCommand(int argc, char** argv);

} // namespace tessaly::app
