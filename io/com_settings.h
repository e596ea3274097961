// The name of a serial port as OPEN gives it: "COMn:speed,parity,data,stop,flow".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/basic_error.h"

namespace tessaly::io {

enum class Handshaking : uint8_t { RequestToSend = 2, RequestToSendXonXoff = 3 };

struct ComSettings {
    int port = 1;
    int speed = 9600;
    char parity = 'N';        // 'E', 'O' or 'N'
    int dataBits = 8;         // 7 or 8
    std::string stopBits = "1"; // "1", "1.5" or "2"
    Handshaking handshaking = Handshaking::RequestToSend;

    // The line settings as one text, "9600,N,8,1".
    [[nodiscard]] std::string lineText() const;
};

// Reads an upper-cased device name that contains "COM". The port number is the text between "COM"
// and the first ':' (none or 0 is port 1); the five fields follow the ':'. Returns nothing, or the
// error to raise: IllegalFunctionCall for a port below 1, SyntaxError for a bad or missing field.
[[nodiscard]] std::optional<core::ErrorId> parseComName(std::string_view name, ComSettings& settings);

} // namespace tessaly::io
