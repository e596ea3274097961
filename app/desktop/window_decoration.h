// The window system's decoration (title bar and borders) around a top-level window.
#pragma once

#include <QMargins>

class QWidget;

namespace tessaly::desktop {

// What an X11 window manager says of the window (_NET_FRAME_EXTENTS, read afresh each time: Qt keeps
// a first answer that may come before the manager has framed the window), else the frame geometry
// against the geometry as Qt knows them; no margins where nothing says.
QMargins decorationOf(const QWidget& window);

} // namespace tessaly::desktop
