// Generates the tone once and plays it through Qt Multimedia.
#include "app/desktop/beeper.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QBuffer>
#include <QMediaDevices>
#include <QtMath>

namespace tessaly::desktop {

namespace {
constexpr int kSampleRate = 22050;
constexpr int kFrequency = 800;
constexpr int kMilliseconds = 40;
} // namespace

Beeper::Beeper(QObject* parent)
    : QObject(parent)
{
    const int samples = kSampleRate * kMilliseconds / 1000;
    m_tone.resize(samples * 2);
    auto* data = reinterpret_cast<qint16*>(m_tone.data());
    for (int k = 0; k < samples; ++k)
        data[k] = static_cast<qint16>(9000 * qSin(2 * M_PI * kFrequency * k / kSampleRate));
}

Beeper::~Beeper() = default;

void Beeper::beep()
{
    if (m_noDevice)
        return;
    if (m_sink == nullptr) {
        QAudioDevice device = QMediaDevices::defaultAudioOutput();
        QAudioFormat format;
        format.setSampleRate(kSampleRate);
        format.setChannelCount(1);
        format.setSampleFormat(QAudioFormat::Int16);
        if (device.isNull() || !device.isFormatSupported(format)) {
            m_noDevice = true;
            return;
        }
        m_sink = new QAudioSink(device, format, this);
        m_buffer = new QBuffer(&m_tone, this);
    }
    // A beep while one sounds starts it again.
    m_sink->stop();
    m_buffer->close();
    m_buffer->open(QIODevice::ReadOnly);
    m_sink->start(m_buffer);
}

} // namespace tessaly::desktop
