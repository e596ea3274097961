// Whether the window can have a display, told from the environment before anything of Qt is made:
// without one Qt would end the process with an abort.
#pragma once

namespace tessaly::app {

inline constexpr char kNoDisplayMessage[] =
    "tessaly: no display (DISPLAY and WAYLAND_DISPLAY are unset); use tessaly --headless FILE to run "
    "without a window\n";

// DISPLAY or WAYLAND_DISPLAY is set, or QT_QPA_PLATFORM names a platform (an empty value counts as
// unset).
bool HasDisplay();

} // namespace tessaly::app
