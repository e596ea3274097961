// A port space held in memory, for hosts without the machine's ports (the headless runner, tests):
// INP reads back what OUT last wrote to the port; a port never written reads &HFF, as an empty
// bus does.
#pragma once

#include <array>
#include <cstdint>

namespace tessaly::io {

class SimulatedPorts {
public:
    SimulatedPorts() { m_values.fill(0xFF); }
    [[nodiscard]] uint8_t in(uint16_t port) const { return m_values[port]; }
    void out(uint16_t port, uint8_t value) { m_values[port] = value; }

private:
    std::array<uint8_t, 65536> m_values {};
};

} // namespace tessaly::io
