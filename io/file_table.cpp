// Closing entries of the file table.
#include "io/file_table.h"

#include <unistd.h>

#include "core/host.h"

namespace tessaly::io {

bool FileTable::close(int n)
{
    FileChannel& channel = entry(n);
    if (channel.fd >= 0 && ::close(channel.fd) != 0)
        return false;
    if (channel.device == DeviceKind::Serial && channel.comSlot >= 1 && channel.comSlot <= kComSlots)
        m_comPorts.release(channel.comSlot);
    if (channel.device == DeviceKind::Printer)
        m_host.printerEndJob();
    channel = FileChannel {};
    return true;
}

void FileTable::closeAll()
{
    for (int n = 1; n <= kHighestFileNumber; ++n)
        if (m_entries[static_cast<size_t>(n)].isOpen())
            close(n);
}

} // namespace tessaly::io
