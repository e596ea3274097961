// The graphics screen's state: pages drawn on and shown, the VIEW rectangle, the WINDOW world and
// the mapping between world and device coordinates, and the last point. Drawing is the renderer's.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

#include "core/rounding.h"
#include "screen/draw_state.h"

namespace tessaly::screen {

// Device coordinates are kept within this many pixels of the origin: far outside the screen, and
// small enough that sums and differences of two never overflow.
inline constexpr int kDeviceLimit = 1 << 24;

// A coordinate truncated to a whole device pixel (callers add their rounding first), held within
// the device limit; NaN counts as 0.
[[nodiscard]] inline int deviceCoordinate(double value)
{
    if (!(value == value))
        return 0;
    double whole = std::trunc(value);
    if (whole > kDeviceLimit)
        return kDeviceLimit;
    if (whole < -kDeviceLimit)
        return -kDeviceLimit;
    return static_cast<int>(whole);
}

// A device coordinate rounded half away from zero, within the device limit.
[[nodiscard]] inline int devicePixel(double value) { return deviceCoordinate(core::roundHalfAwayFromZero(value)); }

// A device coordinate rounded as the value plus one half, truncated toward zero (-0.7 gives 0),
// within the device limit.
[[nodiscard]] inline int devicePixelHalfUp(double value) { return deviceCoordinate(core::roundHalfUpTruncated(value)); }

// A number rounded half away from zero to an int; beyond the int range, or NaN, the largest int
// of the value's sign (NaN gives the negative one).
[[nodiscard]] inline int roundHalfAway(double value)
{
    double rounded = core::roundHalfAwayFromZero(value);
    if (!(rounded > -2147483648.0 && rounded < 2147483647.0))
        return value > 0 ? 2147483647 : -2147483647;
    return static_cast<int>(rounded);
}

struct GraphicScreen {
    // Screen pages.
    int graphicsSwitch = 0;   // 0 shown, 2 hidden
    int activePage = 0;
    int displayPageValue = 1; // 0 none, 1 page 0, 17 page 1
    // VIEW, in device pixels (inclusive corners).
    bool viewActive = false;
    bool windowSet = false;
    int viewLeft = 0, viewTop = 0, viewRight = 639, viewBottom = 399;
    int viewFillColour = -1, viewBorderColour = -1;
    // WINDOW, in world units.
    float worldLeft = 0, worldTop = 0, worldRight = 639, worldBottom = 399;
    double scaleX = 1.0, scaleY = 1.0;
    int lastX = 0, lastY = 0;
    // The string of the last PAINT, LINE, CIRCLE or DRAW that filled with a hatch or a tile.
    std::string tileText;
    DrawState draw;
    int copyCounter = 0; // the number of the last COPY file

    [[nodiscard]] int viewWidth() const { return viewRight - viewLeft; }
    [[nodiscard]] int viewHeight() const { return viewBottom - viewTop; }
    [[nodiscard]] float worldWidth() const { return worldRight - worldLeft; }
    [[nodiscard]] float worldHeight() const { return worldBottom - worldTop; }

    [[nodiscard]] int toDeviceX(double x) const { return devicePixelHalfUp((x - worldLeft) / scaleX + viewLeft); }
    [[nodiscard]] int toDeviceY(double y) const { return devicePixelHalfUp((y - worldTop) / scaleY + viewTop); }
    [[nodiscard]] int toDeviceDistanceX(double x) const { return devicePixelHalfUp(x / scaleX); }
    [[nodiscard]] int toDeviceDistanceY(double y) const { return devicePixelHalfUp(y / scaleY); }
    [[nodiscard]] double toWorldX(int px) const { return (px - viewLeft) * scaleX + worldLeft; }
    [[nodiscard]] double toWorldY(int py) const { return (py - viewTop) * scaleY + worldTop; }

    // VIEW and WINDOW back to the whole screen; the last point to (0, 0).
    void resetView()
    {
        viewActive = false;
        windowSet = false;
        viewLeft = viewTop = 0;
        viewRight = 639;
        viewBottom = 399;
        viewFillColour = viewBorderColour = -1;
        worldLeft = worldTop = 0;
        worldRight = 639;
        worldBottom = 399;
        scaleX = scaleY = 1.0;
        lastX = lastY = 0;
    }
    void resetPages()
    {
        graphicsSwitch = 0;
        activePage = 0;
        displayPageValue = 1;
    }
};

} // namespace tessaly::screen
