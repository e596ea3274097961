// The settings store: the four most recently used program files, kept under the application's
// company and name.
#pragma once

#include <QObject>
#include <QStringList>

namespace tessaly::desktop {

inline constexpr int kRecentFileCount = 4;

class RecentFiles : public QObject {
    Q_OBJECT
public:
    explicit RecentFiles(QObject* parent = nullptr);
    [[nodiscard]] const QStringList& paths() const { return m_paths; }
    // Puts path first, dropping an older entry of the same path and any beyond four.
    void add(const QString& path);

signals:
    void changed();

private:
    QStringList m_paths;
};

} // namespace tessaly::desktop
