// The two program file formats, Text and LineRecords: reading a file image into the program store
// and writing the store as a file image. Opening files and the LOAD/SAVE statements are elsewhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/program_store.h"

namespace tessaly::io {

enum class ProgramFileFormat : uint8_t { Text = 0, LineRecords = 1 };

// A program file is read whole up to this many bytes; the rest is ignored.
inline constexpr size_t kMaxProgramFileBytes = 65535;
// The first byte of a LineRecords file.
inline constexpr unsigned char kLineRecordsMark = 0xFE;

namespace ProgramFile {

// Replaces the whole store with the program in bytes (only the first kMaxProgramFileBytes are used);
// the first byte 0xFE selects LineRecords, anything else Text. Returns the format read.
ProgramFileFormat Read(std::string_view bytes, core::ProgramStore& store);

// The file image of the whole store. nullopt when a line cannot be written as a record (no line
// number, a number above 65535, or text too long for a record); the caller raises "Syntax error in "
// then and writes nothing. Writing Text first gives every stored line lacking it its CR LF.
std::optional<std::string> Write(ProgramFileFormat format, core::ProgramStore& store);

// The number Read gives a line of a Text file (0: the line is not stored on its own).
int TextLineNumber(std::string_view line);

} // namespace ProgramFile

} // namespace tessaly::io
