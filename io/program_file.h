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

// A program file is read whole up to this many bytes.
inline constexpr size_t kMaxProgramFileBytes = 65535;
inline constexpr unsigned char kLineRecordsMark = 0xFE;

namespace ProgramFile {

// Replaces the whole store with the program in bytes; the first byte 0xFE selects LineRecords.
ProgramFileFormat Read(std::string_view bytes, core::ProgramStore& store);

// The file image of the whole store. nullopt when a line cannot be written as a record (no line
// number, or one above 65535); the caller raises "Syntax error in " then and writes nothing.
// Writing Text gives every stored line its CR LF first.
std::optional<std::string> Write(ProgramFileFormat format, core::ProgramStore& store);

// The case pass of the Text reader: upper case outside strings, REM text, comments and DATA items.
void UpperCaseProgramText(std::string& text);

} // namespace ProgramFile

} // namespace tessaly::io
