// The decoration's margins: the X11 property through the display Qt has open, or Qt's own frame.
#include "app/desktop/window_decoration.h"

#include <QGuiApplication>
#include <QWidget>
#include <optional>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace tessaly::desktop {

namespace {

std::optional<QMargins> frameExtentsOf(const QWidget& window)
{
    auto* x11 = qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = x11 != nullptr ? x11->display() : nullptr;
    if (display == nullptr || !window.testAttribute(Qt::WA_WState_Created))
        return std::nullopt;
    Atom extents = XInternAtom(display, "_NET_FRAME_EXTENTS", True);
    if (extents == None)
        return std::nullopt;
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long after = 0;
    unsigned char* data = nullptr;
    int status = XGetWindowProperty(display, static_cast<Window>(window.winId()), extents, 0, 4, False,
        XA_CARDINAL, &type, &format, &count, &after, &data);
    std::optional<QMargins> margins;
    // Four 32-bit values (held as longs): left, right, top, bottom.
    if (status == Success && type == XA_CARDINAL && format == 32 && count == 4 && data != nullptr) {
        const auto* values = reinterpret_cast<const long*>(data);
        margins = QMargins(static_cast<int>(values[0]), static_cast<int>(values[2]), static_cast<int>(values[1]),
            static_cast<int>(values[3]));
    }
    if (data != nullptr)
        XFree(data);
    return margins;
}

} // namespace

QMargins decorationOf(const QWidget& window)
{
    if (auto extents = frameExtentsOf(window))
        return *extents;
    QRect outer = window.frameGeometry();
    QRect inner = window.geometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
        outer.bottom() - inner.bottom()};
}

} // namespace tessaly::desktop
