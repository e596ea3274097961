// EOF, LOF and LOC of an open file number.
#pragma once

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

enum class FileQuery { AtEnd, Length, Position };

// The answer for file number n: -1 or 0 for EOF, the size in bytes for LOF, the byte offset for
// LOC. "File not open in " when n is not open; LOF and LOC of a device are illegal.
int queryFile(core::Interpreter& in, FileQuery query, int n, double& result);

} // namespace tessaly::io
