// The files a program has open: numbers 1 to 15 mapped to disk files and devices (the screen, a
// printer port, a serial port). Reading and writing go through the descriptor of a disk file, untranslated.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "io/com_ports.h"
#include "io/device_transfer.h"

namespace tessaly::core {
class Host;
}

namespace tessaly::io {

enum class FileMode : uint8_t { Random = 0, Input = 1, Output = 2, Append = 3, Com = 4 };
enum class DeviceKind : uint8_t { Disk = 0, Serial = 1, Keyboard = 2, Screen = 3, Printer = 4 };

inline constexpr int kHighestFileNumber = 15;
// Random files: a record holds at most 256 bytes in at most 64 fields; records are numbered 1..65000.
inline constexpr int kMaxRecordLength = 256;
inline constexpr size_t kMaxFields = 64;
inline constexpr int kHighestRecordNumber = 65000;

// One field of a random file's record: where it lies and the string variable it feeds, written as
// in FIELD (an array element with its subscripts), blanks removed.
struct RecordField {
    int offset = 0;
    int width = 0;
    std::string name;
};

struct FileChannel {
    int handle = 0; // above 0 while open
    int fd = -1;    // the descriptor of a disk file
    FileMode mode = FileMode::Random;
    DeviceKind device = DeviceKind::Disk;
    int recordLength = kMaxRecordLength;
    std::vector<RecordField> fields;                          // FIELD's map of the record
    std::string recordBuffer = std::string(kMaxRecordLength, ' '); // the record as PUT writes it
    int currentRecord = 0;                                     // the record of the last GET or PUT
    int comSlot = 0;                                           // a serial port's slot (1..5)

    [[nodiscard]] bool isOpen() const { return handle > 0; }
};

class FileTable {
public:
    explicit FileTable(core::Host& host)
        : m_host(host)
    {
    }
    FileTable(const FileTable&) = delete;
    FileTable& operator=(const FileTable&) = delete;
    ~FileTable() { closeAll(); }

    // Entry n (1..15); any other number reads as an entry that is never open.
    FileChannel& entry(int n) { return m_entries[static_cast<size_t>(n >= 1 && n <= kHighestFileNumber ? n : 0)]; }
    // Closes entry n (a serial port's slot is freed, a printer port's print job ends); false when closing its descriptor failed
    // (the entry then stays as it was).
    bool close(int n);
    // Closes every open entry (the view's reset).
    void closeAll();

    ComPorts& comPorts() { return m_comPorts; }
    DeviceTransfer& transfer() { return m_transfer; }

private:
    core::Host& m_host;
    std::array<FileChannel, kHighestFileNumber + 1> m_entries {};
    ComPorts m_comPorts;
    DeviceTransfer m_transfer;
};

} // namespace tessaly::io
