// Drawn fallbacks: a 16 x 15 button face with a short mark for each command.
#include "app/desktop/tool_icons.h"

#include <QPainter>
#include <QPixmap>

#include "app/desktop/command_table.h"

namespace tessaly::desktop {

namespace {

struct ToolImage {
    int id;
    const char* themeName;
    const char* mark;
    QRgb colour;
};

constexpr ToolImage kIcons[] = {
    {cmd::kFileNew, "document-new", "N", 0x2060C0},
    {cmd::kFileOpen, "document-open", "O", 0xC08020},
    {cmd::kFileSave, "document-save", "S", 0x2060C0},
    {cmd::kRun, "media-playback-start", "\u25B6", 0x109010},
    {cmd::kBreak, "media-playback-stop", "\u25A0", 0xC01010},
    {cmd::kCont, "media-seek-forward", "\u25B7", 0x109010},
    {cmd::kCls, nullptr, "C1", 0x404040},
    {cmd::kCls2, nullptr, "C2", 0x404040},
    {cmd::kCls3, nullptr, "C3", 0x404040},
    {cmd::kList, nullptr, "L", 0x404040},
    {cmd::kListEditor, "accessories-text-editor", "E", 0x404040},
    {cmd::kCutAllList, "edit-cut", "X", 0x404040},
    {cmd::kCopyAllList, "edit-copy", "C", 0x404040},
    {cmd::kPasteAllList, "edit-paste", "V", 0x404040},
    {cmd::kFilePrint, "document-print", "P", 0x404040},
    {cmd::kHelpIndex, "help-contents", "?", 0x2060C0},
    {cmd::kContextHelp, "help-whatsthis", "\u2196?", 0x2060C0},
};

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

QIcon toolIcon(int commandId)
{
    for (const auto& image : kIcons) {
        if (image.id != commandId)
            continue;
        QIcon fallback(drawnFace(QString::fromUtf8(image.mark), QColor::fromRgb(image.colour)));
        return image.themeName != nullptr ? QIcon::fromTheme(QString::fromLatin1(image.themeName), fallback) : fallback;
    }
    return {};
}

QIcon applicationIcon()
{
    // The installed icon of the desktop entry, where the theme finds it.
    return QIcon::fromTheme(QStringLiteral("tessaly"), QIcon(drawnFace(QStringLiteral("T"), QColor(0x10, 0x60, 0xC0))));
}

} // namespace tessaly::desktop
