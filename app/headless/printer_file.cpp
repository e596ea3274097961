#include "app/headless/printer_file.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tessaly::app {

PrinterFile::~PrinterFile()
{
    if (m_fd >= 0)
        close(m_fd);
}

bool PrinterFile::open(const std::string& path)
{
    m_fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    return m_fd >= 0;
}

core::PrinterWrite PrinterFile::write(std::string_view bytes)
{
    if (m_fd < 0)
        return core::PrinterWrite::NoPrinter;
    while (!bytes.empty()) {
        ssize_t written = ::write(m_fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return core::PrinterWrite::Failed;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return core::PrinterWrite::Written;
}

} // namespace tessaly::app
