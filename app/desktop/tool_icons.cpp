// Drawn fallbacks: a 16 x 15 button face with a short mark for each command.
#include "app/desktop/tool_icons.h"

#include <QPainter>
#include <QPixmap>

#include "app/desktop/command_table.h"

namespace tessaly::desktop {

namespace {

QPixmap drawnFace(const QString& mark, QColor colour)
{
    QPixmap pixmap(16, 15);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(colour);
    QFont font = painter.font();
    font.setPixelSize(mark.size() > 1 ? 8 : 12);
    font.setBold(true);
    painter.setFont(font);
    painter.drawRect(0, 0, 15, 14);
    painter.drawText(QRect(0, 0, 16, 15), Qt::AlignCenter, mark);
    return pixmap;
}

} // namespace

QIcon toolIcon(const ToolButton& button)
{
    QIcon fallback(drawnFace(QString::fromUtf8(button.mark), QColor::fromRgb(button.colour)));
    return button.themeName != nullptr ? QIcon::fromTheme(QString::fromLatin1(button.themeName), fallback) : fallback;
}

QIcon applicationIcon()
{
    // The installed icon of the desktop entry, where the theme finds it.
    return QIcon::fromTheme(QStringLiteral("tessaly"), QIcon(drawnFace(QStringLiteral("T"), QColor(0x10, 0x60, 0xC0))));
}

} // namespace tessaly::desktop
