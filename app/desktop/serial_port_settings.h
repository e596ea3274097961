// The device behind each serial port, as the user sets it in the window: kept in the settings
// ("Serial Ports/COM1" ...), changed in a small dialog. A --com option on the command line goes
// over the settings for that run without changing them.
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <array>

#include "io/com_ports.h"

namespace tessaly::desktop {

// The ports the dialog offers: as many as a program can have open at once.
inline constexpr int kSettablePorts = io::kComSlots;

// Gives the ports the devices kept in the settings.
void loadSerialPortPaths(io::ComPorts& ports);
// Keeps the devices of the settable ports (an empty one is the default and is not kept).
void saveSerialPortPaths(const io::ComPorts& ports);

class SerialPortDialog final : public QDialog {
    Q_OBJECT
public:
    SerialPortDialog(const io::ComPorts& ports, QWidget* parent = nullptr);
    // The device field of port n (1 to kSettablePorts).
    QLineEdit* pathField(int port) { return m_paths[static_cast<size_t>(port - 1)]; }
    // Gives the ports what the fields hold (an empty field: the machine's own serial port).
    void applyTo(io::ComPorts& ports) const;

private:
    std::array<QLineEdit*, kSettablePorts> m_paths {};
};

} // namespace tessaly::desktop
