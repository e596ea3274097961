// Ellipses drawn row by row give exactly the pixels of the centre rule tested pixel by pixel:
// every radius pair in a range, arcs and sectors, fills with a tile, and clipped boxes.
#include <gtest/gtest.h>

#include <cmath>

#include "screen/ellipse.h"

namespace tessaly::screen {
namespace {

// The rule itself, pixel by pixel over the whole box: inside when the pixel's centre is inside,
// outline when a pixel beside it is not.
struct Rule {
    EllipseBox box;
    AngleRange range;

    [[nodiscard]] bool inside(int x, int y) const
    {
        double dx = (x + 0.5 - box.cx) / box.rx;
        double dy = (y + 0.5 - box.cy) / box.ry;
        return dx * dx + dy * dy <= 1.0;
    }
    [[nodiscard]] bool inRange(int x, int y) const
    {
        if (range.whole)
            return true;
        auto norm = [](double a) {
            a = std::fmod(a, 2 * 3.141592653589793);
            return a < 0 ? a + 2 * 3.141592653589793 : a;
        };
        double angle = norm(std::atan2(-(y + 0.5 - box.cy), x + 0.5 - box.cx));
        double start = norm(range.start), end = norm(range.end);
        return start <= end ? angle >= start && angle <= end : angle >= start || angle <= end;
    }
    void outline(Plane& plane, Pixel colour) const
    {
        forEach(plane, [&](int x, int y) {
            bool edge = !inside(x - 1, y) || !inside(x + 1, y) || !inside(x, y - 1) || !inside(x, y + 1);
            if (edge && inRange(x, y))
                plane.setPixel(x, y, colour);
        });
    }
    void fill(Plane& plane, const Brush& brush) const
    {
        forEach(plane, [&](int x, int y) {
            if (inRange(x, y))
                plane.setPixel(x, y, brush.at(x, y));
        });
    }
    template <typename Visit>
    void forEach(const Plane& plane, Visit visit) const
    {
        if (box.rx <= 0 || box.ry <= 0)
            return;
        const Rect& clip = plane.clip();
        for (int y = std::max(box.cy - box.ry, clip.top); y < std::min(box.cy + box.ry, clip.bottom); ++y)
            for (int x = std::max(box.cx - box.rx, clip.left); x < std::min(box.cx + box.rx, clip.right); ++x)
                if (inside(x, y))
                    visit(x, y);
    }
};

// The first pixel where the planes differ, as "x,y", or "" when they are equal.
std::string firstDifference(const Plane& a, const Plane& b)
{
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                return std::to_string(x) + "," + std::to_string(y);
    return "";
}

void expectSameOutline(const EllipseBox& box, const AngleRange& range, const Rect* clip = nullptr, int size = kScreenWidth)
{
    Plane drawn(size, size), expected(size, size);
    if (clip) {
        drawn.setClip(*clip);
        expected.setClip(*clip);
    }
    drawEllipseOutline(drawn, box, range, 0xFFFFFF);
    Rule {box, range}.outline(expected, 0xFFFFFF);
    EXPECT_EQ(firstDifference(drawn, expected), "")
        << "box " << box.cx << "," << box.cy << " r " << box.rx << "," << box.ry << " range " << range.start << ".." << range.end;
}

void expectSameFill(const EllipseBox& box, const AngleRange& range, const Brush& brush, const Rect* clip = nullptr)
{
    Plane drawn, expected;
    if (clip) {
        drawn.setClip(*clip);
        expected.setClip(*clip);
    }
    fillEllipse(drawn, box, range, brush);
    Rule {box, range}.fill(expected, brush);
    EXPECT_EQ(firstDifference(drawn, expected), "")
        << "box " << box.cx << "," << box.cy << " r " << box.rx << "," << box.ry;
}

TEST(EllipseRows, EveryRadiusPairUpToFortyMatchesThePixelRule)
{
    for (int rx = 1; rx <= 40; ++rx)
        for (int ry = 1; ry <= 40; ++ry) {
            expectSameOutline({45, 45, rx, ry}, {}, nullptr, 90);
            if (::testing::Test::HasFailure())
                return;
        }
}

TEST(EllipseRows, LargeCirclesAndFlatOrTallEllipsesMatch)
{
    const EllipseBox boxes[] = {
        {320, 200, 190, 190}, {320, 200, 190, 95}, {320, 200, 95, 190}, {320, 200, 300, 3},
        {320, 200, 2, 199}, {320, 200, 157, 113}, {319, 201, 301, 1}, {320, 200, 1, 1},
    };
    for (const auto& box : boxes) {
        expectSameOutline(box, {});
        expectSameFill(box, {}, Brush::solid(0x00FF00));
    }
}

TEST(EllipseRows, ArcsAndSectorsKeepTheirAngleRange)
{
    const AngleRange ranges[] = {
        {false, 0, 3.14159}, {false, 1, 0.5}, {false, -0.5, -2}, {false, 6, 0.2}, {false, 2, 2},
    };
    for (const auto& range : ranges)
        for (int r : {7, 50, 133}) {
            expectSameOutline({200, 200, r, r * 3 / 4 + 1}, range);
            expectSameFill({200, 200, r, r / 2 + 1}, range, Brush::solid(0x0000FF));
        }
}

TEST(EllipseRows, ClippedAndOffScreenBoxesDrawOnlyInsideTheClip)
{
    const Rect clip {50, 40, 300, 250};
    const EllipseBox boxes[] = {
        {60, 60, 100, 80}, {290, 240, 120, 30}, {-50, 200, 120, 150}, {320, 600, 400, 250},
        {5000, 200, 4990, 100}, {175, 145, 400, 300},
    };
    for (const auto& box : boxes) {
        expectSameOutline(box, {}, &clip);
        expectSameFill(box, {}, Brush::solid(0xFF00FF), &clip);
        expectSameOutline(box, {false, 0.3, 4}, &clip);
    }
}

TEST(EllipseRows, AnEmptyBoxDrawsNothing)
{
    Plane plane;
    drawEllipseOutline(plane, {100, 100, 0, 30}, {}, 0xFFFFFF);
    fillEllipse(plane, {100, 100, 30, 0}, {}, 0xFFFFFF);
    EXPECT_EQ(firstDifference(plane, Plane {}), "");
}

} // namespace
} // namespace tessaly::screen
