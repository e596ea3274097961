// Tool-bar images: the desktop icon theme's where it has one, else a small picture of our own.
#pragma once

#include <QIcon>

#include "app/desktop/command_table.h"

namespace tessaly::desktop {

QIcon toolIcon(const ToolButton& button);
QIcon applicationIcon();

} // namespace tessaly::desktop
