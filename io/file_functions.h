// EOF, LOF, LOC and INPUT$ of an open file number, and the typed keys that the keyboard channel
// and INPUT$ take.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

enum class FileQuery { AtEnd, Length, Position };

// The answer for file number n: -1 or 0 for EOF, the size in bytes for LOF, the byte offset for
// LOC. "File not open in " when n is not open; LOF and LOC of a device are illegal.
int queryFile(core::Interpreter& in, FileQuery query, int n, double& result);

// A file number written as decimal text, blanks and "#" before it passed over; 0 (a number that is
// never open) when the text holds no small number.
[[nodiscard]] int fileNumberOf(std::string_view text);

// Takes count characters typed for the program from the key buffer. With fewer there, keys are
// collected and the statement waits: the run's waitingForKeys is set and kFailed is returned with
// no error, so that the statement runs again at the next step.
int takeTypedKeys(core::Interpreter& in, size_t count, std::string& taken);

// INPUT$(count, #n): count raw bytes of a file open for INPUT ("Disk I/O error in " when the file
// ends first), or count typed characters of a keyboard channel (waiting as takeTypedKeys does).
int readFileBytes(core::Interpreter& in, int n, size_t count, std::string& bytes);

} // namespace tessaly::io
