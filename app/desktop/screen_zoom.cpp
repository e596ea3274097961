// The screen's placement in the view, and the zoom choice in QSettings ("View" group).
#include "app/desktop/screen_zoom.h"

#include <QSettings>
#include <algorithm>

#include "screen/raster.h"

namespace tessaly::desktop {

namespace {
const QString kZoomKey = QStringLiteral("View/Zoom");
const QString kFullScreenKey = QStringLiteral("View/FullScreen");

int floorDiv(int value, int divisor) { return value >= 0 ? value / divisor : -((-value + divisor - 1) / divisor); }
} // namespace

QSize zoomedScreenSize(int factor) { return {screen::kScreenWidth * factor, screen::kScreenHeight * factor}; }

QRect ScreenPlacement::screenArea() const { return {origin, zoomedScreenSize(factor)}; }

QRect ScreenPlacement::toView(const QRect& screenRect) const
{
    return {origin + screenRect.topLeft() * factor, screenRect.size() * factor};
}

bool ScreenPlacement::toScreen(QPoint viewPoint, QPoint& screenPoint) const
{
    if (!screenArea().contains(viewPoint))
        return false;
    QPoint offset = viewPoint - origin;
    screenPoint = QPoint(offset.x() / factor, offset.y() / factor);
    return true;
}

QRect ScreenPlacement::screenPixelsUnder(const QRect& viewRect) const
{
    QRect inside = viewRect.intersected(screenArea());
    if (inside.isEmpty())
        return {};
    QPoint first = inside.topLeft() - origin;
    QPoint last = inside.bottomRight() - origin;
    return QRect(QPoint(floorDiv(first.x(), factor), floorDiv(first.y(), factor)),
        QPoint(floorDiv(last.x(), factor), floorDiv(last.y(), factor)));
}

QSize frameOuterSize(int factor, QSize bars, const QMargins& decoration, QSize available)
{
    QSize outer = (zoomedScreenSize(factor) + bars).grownBy(decoration).expandedTo(QSize(kFrameWidth, kFrameHeight));
    return available.isValid() ? outer.boundedTo(available) : outer;
}

QPoint frameCornerWithin(QPoint corner, QSize outer, const QRect& available)
{
    if (!available.isValid())
        return corner;
    int left = std::max(available.left(), std::min(corner.x(), available.left() + available.width() - outer.width()));
    int top = std::max(available.top(), std::min(corner.y(), available.top() + available.height() - outer.height()));
    return {left, top};
}

ScreenPlacement placeScreen(QSize area, int factor)
{
    ScreenPlacement placement;
    placement.factor = std::max(1, factor);
    QSize screen = zoomedScreenSize(placement.factor);
    placement.origin = QPoint(std::max(0, (area.width() - screen.width()) / 2), std::max(0, (area.height() - screen.height()) / 2));
    return placement;
}

int largestFittingZoom(QSize area)
{
    return std::max(1, std::min(area.width() / screen::kScreenWidth, area.height() / screen::kScreenHeight));
}

ZoomChoice loadZoomChoice()
{
    QSettings settings;
    ZoomChoice choice;
    // A value that is not a known factor (an edited file, a later version's) counts as 1x.
    bool isNumber = false;
    int factor = settings.value(kZoomKey, 1).toInt(&isNumber);
    choice.factor = isNumber && factor >= kMinZoom && factor <= kMaxZoom ? factor : 1;
    choice.fullScreen = settings.value(kFullScreenKey, false).toBool();
    return choice;
}

void saveZoomChoice(const ZoomChoice& choice)
{
    QSettings settings;
    settings.setValue(kZoomKey, choice.factor);
    settings.setValue(kFullScreenKey, choice.fullScreen);
}

} // namespace tessaly::desktop
