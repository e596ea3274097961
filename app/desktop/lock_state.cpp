// Reads the X keyboard indicators by name through the display Qt has open.
#include "app/desktop/lock_state.h"

#include <QGuiApplication>

#include <X11/XKBlib.h>

namespace tessaly::desktop {

namespace {
bool indicator(Display* display, const char* name)
{
    Atom atom = XInternAtom(display, name, True);
    if (atom == None)
        return false;
    Bool on = False;
    if (!XkbGetNamedIndicator(display, atom, nullptr, &on, nullptr, nullptr))
        return false;
    return on != False;
}
} // namespace

LockState readLockState()
{
    auto* x11 = qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = x11 != nullptr ? x11->display() : nullptr;
    if (display == nullptr)
        return {};
    return {indicator(display, "Kana"), indicator(display, "Caps Lock"), indicator(display, "Num Lock"),
        indicator(display, "Scroll Lock")};
}

} // namespace tessaly::desktop
