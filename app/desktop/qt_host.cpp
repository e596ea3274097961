// Host services through Qt.
#include "app/desktop/qt_host.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QImage>
#include <QMessageBox>
#include <ctime>

#include "app/desktop/beeper.h"
#include "app/desktop/virtual_keys.h"
#include "core/shift_jis.h"

namespace tessaly::desktop {

namespace {
size_t timerSlot(core::TimerId id) { return id == core::TimerId::TimeAlarm ? 0 : 1; }
} // namespace

QtHost::QtHost(QObject* parent)
    : QObject(parent)
    , m_beeper(new Beeper(this))
{
    for (auto id : {core::TimerId::TimeAlarm, core::TimerId::ContinuousBeep})
        connect(&m_timers[timerSlot(id)], &QTimer::timeout, this, [this, id] { emit timerFired(id); });
}

void QtHost::beep() { m_beeper->beep(); }

void QtHost::startTimer(core::TimerId id, int periodMs) { m_timers[timerSlot(id)].start(periodMs); }

void QtHost::stopTimer(core::TimerId id) { m_timers[timerSlot(id)].stop(); }

void QtHost::printerEndJob()
{
    if (m_printerFont != nullptr)
        m_linePrinter.endJob(*m_printerFont);
}

core::LocalTime QtHost::localTime()
{
    std::time_t now = std::time(nullptr);
    std::tm local {};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

void QtHost::setDocumentModified(bool modified) { emit documentModified(modified); }

void QtHost::programLoaded(std::string_view path)
{
    emit programFileLoaded(QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size()))));
}

std::string QtHost::clipboardText() { return shiftJisOf(QApplication::clipboard()->text()); }

void QtHost::setClipboardText(std::string_view text)
{
    QApplication::clipboard()->setText(QString::fromStdString(core::ShiftJisToUtf8(text)));
}

void QtHost::setClipboardImage(const uint32_t* pixels, int width, int height)
{
    QImage image(reinterpret_cast<const uchar*>(pixels), width, height, width * 4, QImage::Format_RGB32);
    QApplication::clipboard()->setImage(image.copy());
}

void QtHost::clearClipboard() { QApplication::clipboard()->clear(); }

core::MessageAnswer QtHost::messageBox(std::string_view text, core::MessageButtons buttons)
{
    QString message = QString::fromStdString(core::ShiftJisToUtf8(text));
    QWidget* parent = QApplication::activeWindow();
    switch (buttons) {
    case core::MessageButtons::Ok:
        QMessageBox::information(parent, QStringLiteral("Tessaly"), message);
        return core::MessageAnswer::Ok;
    case core::MessageButtons::RetryCancel:
        return QMessageBox::warning(parent, QStringLiteral("Tessaly"), message, QMessageBox::Retry | QMessageBox::Cancel)
                == QMessageBox::Retry
            ? core::MessageAnswer::Retry
            : core::MessageAnswer::Cancel;
    case core::MessageButtons::YesNoCancel: {
        auto answer = QMessageBox::question(parent, QStringLiteral("Tessaly"), message,
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        return answer == QMessageBox::Yes ? core::MessageAnswer::Yes
            : answer == QMessageBox::No   ? core::MessageAnswer::No
                                          : core::MessageAnswer::Cancel;
    }
    }
    return core::MessageAnswer::Cancel;
}

} // namespace tessaly::desktop
