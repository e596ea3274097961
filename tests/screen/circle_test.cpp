// CIRCLE as the edge cases of the system draw it: the box it is inscribed in, half circles, arcs
// with radius lines, aspect ratios, filled circles and sectors.
#include <gtest/gtest.h>

#include "core/interpreter.h"
#include "screen/ellipse.h"
#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

struct Fixture : test::GraphicsSession {
    // The first and last set columns of row y, and the first and last set rows of column x.
    std::pair<int, int> columns(int y)
    {
        int first = -1, last = -1;
        for (int x = 0; x < 640; ++x)
            if (at(x, y) != 0) {
                first = first < 0 ? x : first;
                last = x;
            }
        return {first, last};
    }
    std::pair<int, int> rows(int x)
    {
        int first = -1, last = -1;
        for (int y = 0; y < 400; ++y)
            if (at(x, y) != 0) {
                first = first < 0 ? y : first;
                last = y;
            }
        return {first, last};
    }
};

TEST(Circle, IsInscribedInItsBoxWithoutTheRightAndBottomEdges)
{
    Fixture f;
    EXPECT_EQ(f.session.messageOf("CIRCLE (100,100),50"), "");
    EXPECT_EQ(f.columns(100), std::make_pair(50, 149));
    EXPECT_EQ(f.rows(100), std::make_pair(50, 149));
    EXPECT_EQ(f.at(100, 100), 0U);
    EXPECT_EQ(f.at(50, 100), 0xFFFFFFU);
    // Only the outline: a pixel just inside is not set.
    EXPECT_EQ(f.at(53, 100), 0U);
}

TEST(Circle, AnArcFromStartToEndCounterClockwise)
{
    Fixture f;
    f.session.type("CIRCLE (100,100),50,2,0,3.14159");
    EXPECT_EQ(f.at(100, 50), 0xFF0000U); // the top is on the upper half
    EXPECT_EQ(f.rows(100).second, 50);   // nothing below it in that column
    // Negative angles add the radius lines from the centre.
    Fixture g;
    g.session.type("CIRCLE (100,100),50,,-0.5,-2");
    EXPECT_NE(g.at(100, 100), 0U);
    EXPECT_EQ(g.at(100, 140), 0U);
}

TEST(Circle, TheRatioSqueezesOneAxis)
{
    Fixture f;
    f.session.type("CIRCLE (100,100),50,,,,0.5");
    EXPECT_EQ(f.columns(100), std::make_pair(50, 149));
    EXPECT_EQ(f.rows(100), std::make_pair(75, 124));
    Fixture g;
    g.session.type("CIRCLE (100,100),50,,,,2");
    EXPECT_EQ(g.columns(100), std::make_pair(75, 124));
    EXPECT_EQ(g.rows(100), std::make_pair(50, 149));
}

TEST(Circle, FilledCirclesAndSectors)
{
    Fixture f;
    f.session.type("CIRCLE (100,100),50,4,,,,F");
    EXPECT_EQ(f.at(100, 100), 0x00FF00U);
    EXPECT_EQ(f.at(60, 100), 0x00FF00U);
    f.session.type("CIRCLE (300,100),50,7,0.5,2,,F,1");
    EXPECT_EQ(f.at(300, 80), 0x0000FFU);  // inside the sector, in the paint colour
    EXPECT_EQ(f.at(300, 120), 0U);        // below the centre: outside the sector
}

TEST(Circle, Failures)
{
    Fixture f;
    EXPECT_EQ(f.session.messageOf("CIRCLE (100,100),50,,7"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("CIRCLE (100,100),-5"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("CIRCLE (100,100)"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("CIRCLE 100,100,5"), "Syntax error in ");
}

TEST(Ellipse, ADegenerateBoxDrawsNothing)
{
    Plane plane(20, 20, 0);
    drawEllipseOutline(plane, {10, 10, 0, 5}, {}, 1);
    fillEllipse(plane, {10, 10, 5, 0}, {}, 1);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            ASSERT_EQ(plane.pixel(x, y), 0U);
}

} // namespace
} // namespace tessaly::screen
