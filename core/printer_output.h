// Bytes for the system printer, through the host, with the errors a missing or failing printer
// raises.
#pragma once

#include <string_view>

namespace tessaly::core {

class Interpreter;

// How a failed write is reported: LPRINT, LPRINT USING, WRITE and SAVE to a printer say
// "Disk I/O error " and LLIST says "Disk I/O error in "; no printer is "File not open " for all.
enum class PrinterFailure : bool { Plain, WithIn };

// Writes the bytes unchanged; 0, or the failure value after raising the error.
int writeToPrinter(Interpreter& in, std::string_view bytes, PrinterFailure failure = PrinterFailure::Plain);

} // namespace tessaly::core
