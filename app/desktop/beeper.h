// The beep: an 800 Hz tone of 40 ms on the default audio output; nothing where there is none.
#pragma once

#include <QByteArray>
#include <QObject>

class QAudioSink;
class QBuffer;

namespace tessaly::desktop {

class Beeper : public QObject {
    Q_OBJECT
public:
    explicit Beeper(QObject* parent = nullptr);
    ~Beeper() override;
    void beep();

private:
    QByteArray m_tone;
    QAudioSink* m_sink = nullptr;
    QBuffer* m_buffer = nullptr;
    bool m_noDevice = false;
};

} // namespace tessaly::desktop
