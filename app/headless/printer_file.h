// The runner's printer: with --lprint FILE, the bytes of LPRINT, LLIST and printer ports are
// written to FILE as they come, unchanged (Shift-JIS, CR LF line ends).
#pragma once

#include <string>
#include <string_view>

#include "core/host.h"

namespace tessaly::app {

class PrinterFile {
public:
    PrinterFile() = default;
    PrinterFile(const PrinterFile&) = delete;
    PrinterFile& operator=(const PrinterFile&) = delete;
    ~PrinterFile();

    // Creates or empties the file; false when it cannot be written.
    bool open(const std::string& path);
    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }
    // No printer unless a file is open; a write that does not reach the file fails.
    core::PrinterWrite write(std::string_view bytes);

private:
    int m_fd = -1;
};

} // namespace tessaly::app
