// The files a program has open: numbers 1 to 15 mapped to disk files and devices (the screen, a
// printer port). Reading and writing go through the descriptor of a disk file, untranslated.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tessaly::io {

enum class FileMode : uint8_t { Random = 0, Input = 1, Output = 2, Append = 3, Com = 4 };
enum class DeviceKind : uint8_t { Disk = 0, Serial = 1, Keyboard = 2, Screen = 3, Printer = 4 };

inline constexpr int kHighestFileNumber = 15;

struct FileChannel {
    int handle = 0; // above 0 while open
    int fd = -1;    // the descriptor of a disk file
    FileMode mode = FileMode::Random;
    DeviceKind device = DeviceKind::Disk;
    int recordLength = 256;

    [[nodiscard]] bool isOpen() const { return handle > 0; }
};

class FileTable {
public:
    FileTable() = default;
    FileTable(const FileTable&) = delete;
    FileTable& operator=(const FileTable&) = delete;
    ~FileTable() { closeAll(); }

    // Entry n (1..15); any other number reads as an entry that is never open.
    FileChannel& entry(int n) { return m_entries[static_cast<size_t>(n >= 1 && n <= kHighestFileNumber ? n : 0)]; }
    // Closes entry n; false when closing its descriptor failed (the entry then stays as it was).
    bool close(int n);
    // Closes every open entry (the view's reset).
    void closeAll();

private:
    std::array<FileChannel, kHighestFileNumber + 1> m_entries {};
};

} // namespace tessaly::io
