// The serial ports a program has open: five slots, each owned by a file number, and the device
// path of each port number.
#pragma once

#include <array>
#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "io/serial_device.h"

namespace tessaly::io {

inline constexpr int kComSlots = 5;

struct ComSlot {
    int fileNumber = 0; // the file number that owns the slot; 0 when free
    int port = 0;
    std::unique_ptr<SerialDevice> device;
    bool receiving = false; // a receive waits for data: CLOSE is refused
    // A receive that waits: when it began, and how many bytes had arrived then (new bytes start the
    // wait again).
    std::chrono::steady_clock::time_point waitSince {};
    uint64_t waitReceived = 0;
    // The bytes received when ON COM last fired for this slot.
    uint64_t announced = 0;

    [[nodiscard]] bool isOccupied() const { return fileNumber > 0; }
};

class ComPorts {
public:
    // The device of port n: the path the user gave (--com N=PATH, the window's settings), else the
    // n-th serial port of the machine, /dev/ttyS(n-1).
    [[nodiscard]] std::string devicePath(int port) const;
    void setDevicePath(int port, std::string path);
    // The option "N=PATH" (--com N=PATH) gives port N the device PATH; false when it is not of
    // that form or N is not from 1 to 99.
    bool setFromOption(std::string_view option);
    [[nodiscard]] const std::map<int, std::string>& devicePaths() const { return m_paths; }

    // Slot k, 1 to 5.
    ComSlot& slot(int k) { return m_slots[static_cast<size_t>(k - 1)]; }
    // The occupied slot that has port; 0 when none.
    [[nodiscard]] int slotOfPort(int port) const;
    // The first free slot; 0 when all five are taken.
    [[nodiscard]] int freeSlot() const;
    void release(int k) { slot(k) = ComSlot {}; }
    // No receive waits any more (the run was broken off or reset).
    void forgetReceives();

    // How long a receive waits for data before it asks whether to go on waiting.
    std::chrono::milliseconds inputWait {10'000};

private:
    std::array<ComSlot, kComSlots> m_slots {};
    std::map<int, std::string> m_paths;
};

} // namespace tessaly::io
