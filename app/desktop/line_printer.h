// The window's system printer for LPRINT, LLIST and printer ports: bytes are kept while a run goes
// on and printed as one job, in pages of 50 rows, when the run ends or a printer port is closed.
#pragma once

#include <QPrinter>
#include <memory>
#include <string>
#include <string_view>

#include "core/host.h"

namespace tessaly::screen {
class Font;
}

namespace tessaly::desktop {

class LinePrinter {
public:
    LinePrinter();
    ~LinePrinter();

    // The printer that print, preview, printer setup and the line printer share.
    QPrinter& printer() { return *m_printer; }
    // A printer to print on: the system's default one, or a file chosen in the print dialog.
    [[nodiscard]] bool available() const;
    // Keeps bytes for the job; at most 1 MiB a job, beyond which a write fails.
    core::PrinterWrite write(std::string_view bytes);
    // Prints what was kept since the last job, if anything; the font draws the characters.
    void endJob(const screen::Font& font);

private:
    std::unique_ptr<QPrinter> m_printer;
    std::string m_job;
};

// Paints printer bytes onto a printer, one page for each 50 rows or form feed.
void PrintPrinterBytes(QPrinter& printer, std::string_view bytes, const screen::Font& font);

} // namespace tessaly::desktop
