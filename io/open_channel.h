// Giving a file number to a disk file or a device, as OPEN does once it has read its statement;
// program transfers through a device open their channel the same way.
#pragma once

#include <string>

#include "io/file_table.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// Opens the upper-cased name (a disk file, "COMn:...", a printer port, "SCRN:", "KYBD:") in mode as
// file number (1..15), closing the number first when it is open. Returns 0, or kFailed with the
// error raised.
int openChannel(core::Interpreter& interpreter, int number, FileMode mode, const std::string& name);

} // namespace tessaly::io
