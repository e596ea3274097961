// The raster layer, pixel by pixel: clipping, copies, the see-through colour, lines without end pixel.
#include <gtest/gtest.h>

#include <functional>

#include <string>

#include "screen/raster.h"

namespace tessaly::screen {
namespace {

// The pixels of a small area as rows of characters: '.' for 0, '#' for anything else.
std::string picture(const Plane& plane, int width, int height)
{
    std::string out;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            out += plane.pixel(x, y) == 0 ? '.' : '#';
        out += '\n';
    }
    return out;
}

TEST(Raster, FillIsClipped)
{
    Plane plane(6, 4);
    plane.setClip({1, 1, 4, 3});
    plane.fill({0, 0, 6, 4}, 1);
    EXPECT_EQ(picture(plane, 6, 4), "......\n.###..\n.###..\n......\n");
    plane.resetClip();
    plane.fill({-5, -5, 1, 1}, 2);
    EXPECT_EQ(plane.pixel(0, 0), 2U);
    EXPECT_EQ(plane.pixel(-1, 0, 99), 99U);
}

struct LineCase {
    int x0, y0, x1, y1;
    const char* pixels;
};

class Lines : public ::testing::TestWithParam<LineCase> {};

TEST_P(Lines, LeaveOutTheEndPixel)
{
    Plane plane(5, 4);
    const auto& c = GetParam();
    plane.line(c.x0, c.y0, c.x1, c.y1, 1);
    EXPECT_EQ(picture(plane, 5, 4), c.pixels);
}

INSTANTIATE_TEST_SUITE_P(Raster, Lines,
    ::testing::Values(LineCase {0, 0, 4, 0, "####.\n.....\n.....\n.....\n"},
        LineCase {0, 0, 0, 3, "#....\n#....\n#....\n.....\n"}, LineCase {0, 0, 3, 3, "#....\n.#...\n..#..\n.....\n"},
        LineCase {4, 3, 0, 3, ".....\n.....\n.....\n.####\n"}, LineCase {2, 2, 2, 2, ".....\n.....\n.....\n.....\n"},
        LineCase {-3, 1, 8, 1, ".....\n#####\n.....\n.....\n"}));

TEST(Raster, StyledLines)
{
    Plane plane(8, 1);
    plane.line(0, 0, 8, 0, 1, 0xAAAA);
    EXPECT_EQ(picture(plane, 8, 1), "#.#.#.#.\n");
}

TEST(Raster, CopiesAndSeeThroughColour)
{
    Plane source(4, 2);
    source.setPixel(0, 0, 5);
    source.setPixel(1, 0, 7);
    source.setPixel(3, 1, 5);
    Plane target(4, 2, 9);
    target.copyKeyed(source, {0, 0, 4, 2}, 0, 0, 0);
    EXPECT_EQ(target.pixel(0, 0), 5U);
    EXPECT_EQ(target.pixel(2, 0), 9U);
    EXPECT_EQ(target.pixel(3, 1), 5U);
    Plane copy(4, 2);
    copy.copyFrom(source, {0, 0, 4, 2}, 1, 0);
    EXPECT_EQ(copy.pixel(1, 0), 5U);
    EXPECT_EQ(copy.pixel(2, 0), 7U);
    EXPECT_EQ(copy.pixel(0, 0), 0U);
}

TEST(Raster, OverlappingCopyWithinAPlaneScrolls)
{
    Plane plane(2, 4);
    for (int y = 0; y < 4; ++y)
        plane.fill({0, y, 2, y + 1}, static_cast<Pixel>(y + 1));
    plane.copyFrom(plane, {0, 1, 2, 4}, 0, 0);
    EXPECT_EQ(plane.pixel(0, 0), 2U);
    EXPECT_EQ(plane.pixel(0, 2), 4U);
    plane.copyFrom(plane, {0, 0, 2, 3}, 0, 1);
    EXPECT_EQ(plane.pixel(0, 1), 2U);
    EXPECT_EQ(plane.pixel(0, 3), 4U);
}

// A plane made of zeros skips filling with zeros until something is drawn on it: every way of
// drawing must end that, so that a later fill with 0 clears what was drawn.
TEST(Raster, FillingWithZeroClearsWhateverWasDrawn)
{
    Plane source(8, 8, 3);
    const std::function<void(Plane&)> draws[] = {
        [](Plane& p) { p.setPixel(2, 2, 5); },
        [](Plane& p) { p.fill({1, 1, 4, 4}, 6); },
        [&](Plane& p) { p.copyFrom(source, {0, 0, 8, 8}, 0, 0); },
        [&](Plane& p) { p.copyKeyed(source, {0, 0, 8, 8}, 0, 0, 0); },
        [](Plane& p) { p.line(0, 0, 7, 7, 4); },
        [](Plane& p) { p.floodFill(3, 3, 9, 1); },
        [](Plane& p) { p.row(5)[5] = 8; },
    };
    for (const auto& draw : draws) {
        Plane plane(8, 8);
        plane.fill(plane.bounds(), 0);
        draw(plane);
        Plane copy = plane;
        plane.fill(plane.bounds(), 0);
        copy.fill(copy.bounds(), 0);
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x) {
                ASSERT_EQ(plane.pixel(x, y), 0U);
                ASSERT_EQ(copy.pixel(x, y), 0U);
            }
    }
    Plane white(4, 4, 0xFFFFFF);
    white.fill(white.bounds(), 0);
    EXPECT_EQ(white.pixel(3, 3), 0U);
}

} // namespace
} // namespace tessaly::screen
