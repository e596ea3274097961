// Programs sent and received through a device: SAVE "COMn:..." and SAVE "LPTn:" send the listing
// in blocks of whole lines, LOAD "COMn:..." gathers what arrives until the user breaks, and the
// bytes then become the program. One block (or one look at the port) per run-loop step: the
// statement repeats until the transfer is done, so the window stays responsive.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// A block sent at once holds whole lines of at most this many bytes (a longer line goes alone).
inline constexpr size_t kTransferBlockBytes = 1024;

struct DeviceTransfer {
    enum class Kind : uint8_t { None, Save, Load };
    Kind kind = Kind::None;
    int fileNumber = 0;
    std::string listing;  // a save: the program as text, each line ending in CR LF
    size_t sent = 0;
    std::string received; // a load: what has arrived so far
};

// SAVE and LOAD of a device name (upper-cased, "COM" or "LPT" with a ':'). Each returns 0 when the
// transfer is done, or kFailed: with an error raised, or with RunState::waitingForDevice set while
// it goes on (the statement runs again at the next step).
int saveThroughDevice(core::Interpreter& interpreter, const std::string& name);
int loadThroughDevice(core::Interpreter& interpreter, const std::string& name);
// BREAK ends a transfer under way: what a load received becomes the program, and the transfer's
// channel is closed.
void endDeviceTransfer(core::Interpreter& interpreter);

} // namespace tessaly::io
