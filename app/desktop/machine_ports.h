// The machine's I/O ports through /dev/port, which the system opens only for a process allowed to
// reach them (root). Access is tried again at every INP and OUT until it is granted.
#pragma once

#include <cstdint>

namespace tessaly::desktop {

class MachinePorts {
public:
    MachinePorts() = default;
    MachinePorts(const MachinePorts&) = delete;
    MachinePorts& operator=(const MachinePorts&) = delete;
    ~MachinePorts();

    // Whether the ports can be reached; opens /dev/port the first time it can.
    bool available();
    [[nodiscard]] uint8_t in(uint16_t port) const;
    void out(uint16_t port, uint8_t value) const;

private:
    int m_descriptor = -1;
};

} // namespace tessaly::desktop
