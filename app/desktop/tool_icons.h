// Tool-bar images: the desktop icon theme's where it has one, else a small picture of our own.
#pragma once

#include <QIcon>

namespace tessaly::desktop {

QIcon toolIcon(int commandId);
QIcon applicationIcon();

} // namespace tessaly::desktop
