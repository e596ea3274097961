// The program as one text and text taken in as program lines: what the window's list-editing
// commands (copy, cut, paste, the list-edit dialog) do with the program store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::core {
class Interpreter;
class ProgramStore;
} // namespace tessaly::core

namespace tessaly::io {

// A program text longer than this is reported with kProgramSizeOver64k, and the command goes on.
inline constexpr size_t kProgramTextWarningSize = 64000;
inline constexpr char kProgramSizeOver64k[] = " error: Program size over 64k. ";
// A line taken from the clipboard keeps at most this many bytes.
inline constexpr size_t kTextLineBytes = 1024;

// Every stored line in order, each ending in CR LF (a stored line without one gets it, in the
// store as well).
std::string ProgramText(core::ProgramStore& store);
// The stored lines numbered from start to end, in program order (the scan stops at the first
// number above end).
std::string LinesInRange(const core::ProgramStore& store, int start, int end);
// The lines of a text: CR LF, CR or LF ends a line; a line longer than kTextLineBytes is cut.
std::vector<std::string> TextLines(std::string_view text);

enum class LineSource : uint8_t { Paste, ListDialog };

// Takes lines in as program lines, each upper-cased as a typed line is and put in its place by
// its number (a line with the number of a stored line replaces it). Pasted lines whose number is
// not from 1 to 65536 are left out, and a line the store refuses has its error shown while the next
// one follows. Lines of the list-edit dialog are first trimmed and have every "?" outside quotes
// written as "PRINT "; a number of 0 or less is left out, one above 65536 shows "Out of memory in "
// and ends the lines (false is returned; the lines before it stay).
bool EnterProgramLines(core::Interpreter& interpreter, const std::vector<std::string>& lines, LineSource source);

} // namespace tessaly::io
