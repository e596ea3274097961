#include "core/printer_output.h"

#include "core/host.h"
#include "core/interpreter.h"

namespace tessaly::core {

int writeToPrinter(Interpreter& in, std::string_view bytes, PrinterFailure failure)
{
    switch (in.host().printerWrite(bytes)) {
    case PrinterWrite::Written:
        return 0;
    case PrinterWrite::NoPrinter:
        return in.raise(ErrorId::FileNotOpenPrinter);
    case PrinterWrite::Failed:
        break;
    }
    return in.raise(failure == PrinterFailure::WithIn ? ErrorId::DiskIoError : ErrorId::DiskIoErrorPrinter);
}

} // namespace tessaly::core
