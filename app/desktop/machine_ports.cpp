// Port bytes read and written at their offsets of /dev/port.
#include "app/desktop/machine_ports.h"

#include <fcntl.h>
#include <unistd.h>

namespace tessaly::desktop {

MachinePorts::~MachinePorts()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool MachinePorts::available()
{
    if (m_descriptor < 0)
        m_descriptor = ::open("/dev/port", O_RDWR | O_CLOEXEC);
    return m_descriptor >= 0;
}

uint8_t MachinePorts::in(uint16_t port) const
{
    uint8_t value = 0xFF;
    if (m_descriptor < 0 || ::pread(m_descriptor, &value, 1, port) != 1)
        return 0xFF;
    return value;
}

void MachinePorts::out(uint16_t port, uint8_t value) const
{
    if (m_descriptor >= 0)
        (void)!::pwrite(m_descriptor, &value, 1, port);
}

} // namespace tessaly::desktop
