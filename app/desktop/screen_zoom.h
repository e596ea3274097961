// How the 640 x 400 screen sits in the view: a whole number of view pixels per screen pixel
// (nearest neighbour, so every screen pixel is an exact square), centred on black when the view is
// larger. The user's choice (1x, 2x, 3x, full screen) is kept in the settings store.
#pragma once

#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace tessaly::desktop {

inline constexpr int kMinZoom = 1;
inline constexpr int kMaxZoom = 3;

// The screen's place in a view of a given size.
struct ScreenPlacement {
    int factor = 1;
    QPoint origin; // the view position of screen pixel (0, 0)

    [[nodiscard]] QRect screenArea() const;
    // A rectangle of screen pixels as view pixels.
    [[nodiscard]] QRect toView(const QRect& screenRect) const;
    // The screen pixel under a view position; false in the black border around the screen.
    [[nodiscard]] bool toScreen(QPoint viewPoint, QPoint& screenPoint) const;
    // The screen pixels that cover a rectangle of view pixels (clipped to the screen).
    [[nodiscard]] QRect screenPixelsUnder(const QRect& viewRect) const;
};

// The screen at factor, centred in a view of size area (at the top left when the view is smaller).
ScreenPlacement placeScreen(QSize area, int factor);
// The largest whole factor at which the screen fits into area (1 when it does not fit at all).
int largestFittingZoom(QSize area);
// The screen's size at factor.
QSize zoomedScreenSize(int factor);

// The frame's size and place at start-up, decoration included: 640 x 400 grown by the frame's
// margins (665 x 506) at (99, 75).
inline constexpr int kFrameWidth = static_cast<int>(640 * 1.04);
inline constexpr int kFrameHeight = static_cast<int>(400 * 1.2653);
inline constexpr int kFrameLeft = static_cast<int>(kFrameWidth * 0.15);
inline constexpr int kFrameTop = static_cast<int>(kFrameHeight * 0.15);

// The frame's outer size (decoration included) for the screen at factor, with bars (menu bar, tool
// bar, status bar) around it and the window system's decoration: 665 x 506 where the screen fits
// in it, else as large as the screen needs, but never larger than the display's available area
// (there the screen scrolls).
QSize frameOuterSize(int factor, QSize bars, const QMargins& decoration, QSize available);
// The frame's top left corner moved (as little as it takes) so that a frame of size outer stays in
// the display's available area (an invalid area: the corner as it is).
QPoint frameCornerWithin(QPoint corner, QSize outer, const QRect& available);

// The user's choice, remembered between runs.
struct ZoomChoice {
    int factor = 1;
    bool fullScreen = false;
};
ZoomChoice loadZoomChoice();
void saveZoomChoice(const ZoomChoice& choice);

} // namespace tessaly::desktop
