#include "app/desktop/serial_port_settings.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QSettings>

namespace tessaly::desktop {

namespace {
QString keyFor(int port) { return QStringLiteral("Serial Ports/COM%1").arg(port); }
} // namespace

void loadSerialPortPaths(io::ComPorts& ports)
{
    QSettings settings;
    for (int port = 1; port <= kSettablePorts; ++port) {
        QString path = settings.value(keyFor(port)).toString();
        if (!path.isEmpty())
            ports.setDevicePath(port, path.toStdString());
    }
}

void saveSerialPortPaths(const io::ComPorts& ports)
{
    QSettings settings;
    for (int port = 1; port <= kSettablePorts; ++port) {
        auto found = ports.devicePaths().find(port);
        if (found != ports.devicePaths().end())
            settings.setValue(keyFor(port), QString::fromStdString(found->second));
        else
            settings.remove(keyFor(port));
    }
}

SerialPortDialog::SerialPortDialog(const io::ComPorts& ports, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("通信ﾎﾟｰﾄの設定"));
    auto* form = new QFormLayout(this);
    form->addRow(new QLabel(QStringLiteral("空欄: /dev/ttyS0, /dev/ttyS1, ...")));
    for (int port = 1; port <= kSettablePorts; ++port) {
        auto* field = new QLineEdit(this);
        auto found = ports.devicePaths().find(port);
        if (found != ports.devicePaths().end())
            field->setText(QString::fromStdString(found->second));
        field->setPlaceholderText(QString::fromStdString(io::ComPorts().devicePath(port)));
        m_paths[static_cast<size_t>(port - 1)] = field;
        form->addRow(QStringLiteral("COM%1:").arg(port), field);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

void SerialPortDialog::applyTo(io::ComPorts& ports) const
{
    for (int port = 1; port <= kSettablePorts; ++port)
        ports.setDevicePath(port, m_paths[static_cast<size_t>(port - 1)]->text().trimmed().toStdString());
}

} // namespace tessaly::desktop
