// The recent-file list in QSettings, in the layout of a "Recent File List" group.
#include "app/desktop/recent_files.h"

#include <QSettings>

namespace tessaly::desktop {

namespace {
QString keyFor(int k) { return QStringLiteral("Recent File List/File%1").arg(k + 1); }
} // namespace

RecentFiles::RecentFiles(QObject* parent)
    : QObject(parent)
{
    QSettings settings;
    for (int k = 0; k < kRecentFileCount; ++k) {
        QString path = settings.value(keyFor(k)).toString();
        if (!path.isEmpty())
            m_paths.append(path);
    }
}

void RecentFiles::add(const QString& path)
{
    m_paths.removeAll(path);
    m_paths.prepend(path);
    while (m_paths.size() > kRecentFileCount)
        m_paths.removeLast();
    QSettings settings;
    for (int k = 0; k < kRecentFileCount; ++k) {
        if (k < m_paths.size())
            settings.setValue(keyFor(k), m_paths[k]);
        else
            settings.remove(keyFor(k));
    }
    emit changed();
}

} // namespace tessaly::desktop
