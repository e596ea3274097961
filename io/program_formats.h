// Which program file format was read last and which one the next write uses.
#pragma once

#include <cstdint>

#include "io/program_file.h"

namespace tessaly::io {

inline constexpr uint8_t kFormatNotChosen = 0xFF;

struct ProgramFormats {
    uint8_t loadedFormat = 0;
    // A SAVE statement chooses it; kFormatNotChosen writes the loaded format. Every write resets it.
    uint8_t saveFormat = 0;

    [[nodiscard]] ProgramFileFormat toWrite() const
    {
        uint8_t format = saveFormat == kFormatNotChosen ? loadedFormat : saveFormat;
        return format == 1 ? ProgramFileFormat::LineRecords : ProgramFileFormat::Text;
    }
};

} // namespace tessaly::io
