// Ellipse pixels by the centre rule, limited to an angle range for arcs and sectors. The pixels
// inside an ellipse form, in each row, one run symmetric about the centre, so a row is known by
// the half width of its run; the outline of a row is the part of its run that the runs above and
// below do not cover, plus its two ends. The work follows the rows and the outline, not the box.
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

// The pixel at cx + k and the one at cx - 1 - k lie equally far from the centre, so a row's run is
// cx - 1 - k .. cx + k; -1 for a row with no pixel inside. The square root gives k to within a
// pixel and the centre rule itself settles it, so the run is exactly the pixels the rule accepts.
int halfWidth(const EllipseBox& box, int y)
{
    double dy = (y + 0.5 - box.cy) / box.ry;
    double rest = 1.0 - dy * dy;
    if (rest < 0)
        return -1;
    double reach = box.rx * std::sqrt(rest) - 0.5;
    int k = reach < 0 ? -1 : static_cast<int>(std::min(reach, static_cast<double>(box.rx)));
    while (k >= 0 && !inside(box, box.cx + k, y))
        --k;
    while (k < box.rx && inside(box, box.cx + k + 1, y))
        ++k;
    return k;
}

struct AngleTest {
    const EllipseBox& box;
    bool whole;
    double start, end;

    AngleTest(const EllipseBox& ellipse, const AngleRange& range)
        : box(ellipse)
        , whole(range.whole)
        , start(normalized(range.start))
        , end(normalized(range.end))
    {
    }
    bool operator()(int x, int y) const
    {
        if (whole)
            return true;
        double angle = normalized(std::atan2(-(y + 0.5 - box.cy), x + 0.5 - box.cx));
        return start <= end ? angle >= start && angle <= end : angle >= start || angle <= end;
    }
};

// Calls visit(y, k, kAbove, kBelow) for the rows of the ellipse inside the clip rectangle.
template <typename Visit>
void forEachRow(const Plane& plane, const EllipseBox& box, Visit visit)
{
    if (box.rx <= 0 || box.ry <= 0)
        return;
    const Rect& clip = plane.clip();
    int top = std::max(box.cy - box.ry, clip.top), bottom = std::min(box.cy + box.ry, clip.bottom);
    if (top >= bottom)
        return;
    int above = halfWidth(box, top - 1);
    int here = halfWidth(box, top);
    for (int y = top; y < bottom; ++y) {
        int below = halfWidth(box, y + 1);
        if (here >= 0)
            visit(y, here, above, below);
        above = here;
        here = below;
    }
}

} // namespace

void drawEllipseOutline(Plane& plane, const EllipseBox& box, const AngleRange& range, Pixel colour)
{
    const Rect& clip = plane.clip();
    AngleTest wanted(box, range);
    auto put = [&](int x, int y) {
        if (x >= clip.left && x < clip.right && wanted(x, y))
            plane.setPixel(x, y, colour);
    };
    forEachRow(plane, box, [&](int y, int k, int above, int below) {
        // The pixels from the centre outwards past what the rows above and below both cover.
        int open = std::max(std::min(above, below) + 1, 0);
        for (int x = std::max(box.cx + open, clip.left), last = std::min(box.cx + k, clip.right - 1); x <= last; ++x)
            put(x, y);
        put(box.cx + k, y);
        // The left half, mirrored about cx - 0.5.
        for (int x = std::max(box.cx - 1 - k, clip.left), last = std::min(box.cx - 1 - open, clip.right - 1); x <= last; ++x)
            put(x, y);
        put(box.cx - 1 - k, y);
    });
}

void fillEllipse(Plane& plane, const EllipseBox& box, const AngleRange& range, const Brush& brush)
{
    const Rect& clip = plane.clip();
    AngleTest wanted(box, range);
    forEachRow(plane, box, [&](int y, int k, int, int) {
        for (int x = std::max(box.cx - 1 - k, clip.left), last = std::min(box.cx + k, clip.right - 1); x <= last; ++x)
            if (wanted(x, y))
                plane.setPixel(x, y, brush.at(x, y));
    });
}

} // namespace tessaly::screen
