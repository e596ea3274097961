// Ellipse pixels by the centre rule, limited to an angle range for arcs and sectors.
#include "screen/ellipse.h"

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

template <typename Visit>
void forEachInside(const EllipseBox& box, Visit visit)
{
    if (box.rx <= 0 || box.ry <= 0)
        return;
    for (int y = box.cy - box.ry; y < box.cy + box.ry; ++y)
        for (int x = box.cx - box.rx; x < box.cx + box.rx; ++x)
            if (inside(box, x, y))
                visit(x, y);
}

} // namespace

void drawEllipseOutline(Plane& plane, const EllipseBox& box, const AngleRange& range, Pixel colour)
{
    forEachInside(box, [&](int x, int y) {
        bool edge = !inside(box, x - 1, y) || !inside(box, x + 1, y) || !inside(box, x, y - 1) || !inside(box, x, y + 1);
        if (edge && inRange(box, range, x, y))
            plane.setPixel(x, y, colour);
    });
}

void fillEllipse(Plane& plane, const EllipseBox& box, const AngleRange& range, const Brush& brush)
{
    forEachInside(box, [&](int x, int y) {
        if (inRange(box, range, x, y))
            plane.setPixel(x, y, brush.at(x, y));
    });
}

} // namespace tessaly::screen
