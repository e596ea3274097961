#include "io/com_ports.h"

namespace tessaly::io {

std::string ComPorts::devicePath(int port) const
{
    auto found = m_paths.find(port);
    if (found != m_paths.end())
        return found->second;
    return "/dev/ttyS" + std::to_string(port - 1);
}

void ComPorts::setDevicePath(int port, std::string path)
{
    if (path.empty())
        m_paths.erase(port);
    else
        m_paths[port] = std::move(path);
}

bool ComPorts::setFromOption(std::string_view option)
{
    size_t equals = option.find('=');
    if (equals == 0 || equals == std::string_view::npos || equals > 2 || equals + 1 == option.size())
        return false;
    int port = 0;
    for (char c : option.substr(0, equals)) {
        if (c < '0' || c > '9')
            return false;
        port = port * 10 + (c - '0');
    }
    if (port < 1)
        return false;
    setDevicePath(port, std::string(option.substr(equals + 1)));
    return true;
}

int ComPorts::slotOfPort(int port) const
{
    for (int k = 1; k <= kComSlots; ++k) {
        const ComSlot& s = m_slots[static_cast<size_t>(k - 1)];
        if (s.isOccupied() && s.port == port)
            return k;
    }
    return 0;
}

int ComPorts::freeSlot() const
{
    for (int k = 1; k <= kComSlots; ++k)
        if (!m_slots[static_cast<size_t>(k - 1)].isOccupied())
            return k;
    return 0;
}

void ComPorts::forgetReceives()
{
    for (auto& s : m_slots)
        s.receiving = false;
}

} // namespace tessaly::io
