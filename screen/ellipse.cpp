// Ellipse pixels by the centre rule, limited to an angle range for arcs and sectors.
#include "screen/ellipse.h"

#include <algorithm>
#include <cmath>

namespace tessaly::screen {

namespace {

constexpr double kTurn = 2 * 3.141592653589793;

double normalized(double angle)
{
    angle = std::fmod(angle, kTurn);
    return angle < 0 ? angle + kTurn : angle;
}

bool inside(const EllipseBox& box, int x, int y)
{
    double dx = (x + 0.5 - box.cx) / box.rx;
    double dy = (y + 0.5 - box.cy) / box.ry;
    return dx * dx + dy * dy <= 1.0;
}

bool inRange(const EllipseBox& box, const AngleRange& range, int x, int y)
{
    if (range.whole)
        return true;
    double angle = normalized(std::atan2(-(y + 0.5 - box.cy), x + 0.5 - box.cx));
    double start = normalized(range.start);
    double end = normalized(range.end);
    return start <= end ? angle >= start && angle <= end : angle >= start || angle <= end;
}

// The pixels of the ellipse that lie in the plane's clip rectangle.
template <typename Visit>
void forEachInside(const Plane& plane, const EllipseBox& box, Visit visit)
{
    if (box.rx <= 0 || box.ry <= 0)
        return;
    const Rect& clip = plane.clip();
    int top = std::max(box.cy - box.ry, clip.top), bottom = std::min(box.cy + box.ry, clip.bottom);
    int left = std::max(box.cx - box.rx, clip.left), right = std::min(box.cx + box.rx, clip.right);
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            if (inside(box, x, y))
                visit(x, y);
}

} // namespace

void drawEllipseOutline(Plane& plane, const EllipseBox& box, const AngleRange& range, Pixel colour)
{
    forEachInside(plane, box, [&](int x, int y) {
        bool edge = !inside(box, x - 1, y) || !inside(box, x + 1, y) || !inside(box, x, y - 1) || !inside(box, x, y + 1);
        if (edge && inRange(box, range, x, y))
            plane.setPixel(x, y, colour);
    });
}

void fillEllipse(Plane& plane, const EllipseBox& box, const AngleRange& range, const Brush& brush)
{
    forEachInside(plane, box, [&](int x, int y) {
        if (inRange(box, range, x, y))
            plane.setPixel(x, y, brush.at(x, y));
    });
}

} // namespace tessaly::screen
