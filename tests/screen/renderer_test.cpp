// Composition of the screen: text in its colour over the page on display, the background colour
// seeing through, graphics hidden, the function-key line.
#include <gtest/gtest.h>

#include "core/interpreter.h"
#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "screen/keyboard.h"
#include "screen/renderer.h"
#include "screen/text_screen.h"
#include "support/test_host.h"

namespace tessaly::screen {
namespace {

// One glyph: "A" fills its whole cell; every other character has no glyph.
constexpr const char* kHex = "0041:FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n";

struct Fixture {
    Font font = Font::parse(kHex);
    test::Session session;
    Renderer renderer {font, session.interpreter().colours(), session.interpreter().functionKeys(),
        session.interpreter().graphics()};
    Fixture() { session.interpreter().setRenderer(&renderer); }
    ~Fixture() { session.interpreter().setRenderer(nullptr); }
};

TEST(Renderer, TextIsDrawnInItsColourOverThePage)
{
    Fixture f;
    f.renderer.page(0).fill({0, 0, 640, 400}, 0x00FF00);
    f.session.type("COLOR 2:PRINT \"A\"");
    const auto& composite = f.renderer.composite();
    // The PRINT row is row 1 (row 0 holds the typed command); its first cell is red.
    EXPECT_EQ(composite.pixel(3, 16 + 5), 0xFF0000U);
    // A cell without a glyph shows the page through the background colour of the text plane.
    EXPECT_EQ(composite.pixel(8 * 10, 16 + 5), 0x00FF00U);
}

TEST(Renderer, GraphicsHiddenOrNoPageShown)
{
    Fixture f;
    f.renderer.page(0).fill({0, 0, 640, 400}, 0x0000FF);
    auto& graphics = f.session.interpreter().graphics();
    graphics.graphicsSwitch = 2;
    f.renderer.composeBand(0, 23);
    EXPECT_EQ(f.renderer.composite().pixel(300, 100), 0U);
    graphics.resetPages();
    graphics.displayPageValue = 17;
    f.renderer.page(1).fill({0, 0, 640, 400}, 0xFFFF00);
    f.renderer.composeBand(0, 23);
    EXPECT_EQ(f.renderer.composite().pixel(300, 100), 0xFFFF00U);
}

TEST(Renderer, FunctionKeyLineBoxes)
{
    Fixture f;
    const auto& composite = f.renderer.composite();
    EXPECT_EQ(composite.pixel(5, 384), 0xFFFFFFU);
    EXPECT_EQ(composite.pixel(52, 399), 0xFFFFFFU);
    EXPECT_EQ(composite.pixel(53, 390), 0U);
    EXPECT_EQ(composite.pixel(69, 390), 0xFFFFFFU);
}

TEST(Renderer, ScrollingMovesThePixelsOfTheWindow)
{
    Fixture f;
    auto& in = f.session.interpreter();
    in.screen().setCursor(0, 23);
    in.screen().Print("A");
    in.screen().NewLine();
    EXPECT_EQ(f.renderer.textPlane().pixel(2, 16 * 22 + 3), 0xFFFFFFU);
    EXPECT_EQ(f.renderer.textPlane().pixel(2, 16 * 23 + 3), 0U);
}

TEST(Renderer, ClsTwoClearsOnlyTheViewOfTheActivePage)
{
    Fixture f;
    f.renderer.page(0).setPixel(50, 50, 0x123456);
    f.session.type("VIEW (100,100)-(199,199),4");
    EXPECT_EQ(f.renderer.page(0).pixel(150, 150), 0x00FF00U);
    f.session.type("CLS 2");
    EXPECT_EQ(f.renderer.page(0).pixel(150, 150), 0U);
    EXPECT_EQ(f.renderer.page(0).pixel(50, 50), 0x123456U);
}

TEST(Renderer, ClsClearsTheTextPlane)
{
    Fixture f;
    f.session.type("PRINT \"AAA\"");
    EXPECT_EQ(f.renderer.textPlane().pixel(3, 16 + 3), 0xFFFFFFU);
    f.session.type("CLS");
    EXPECT_EQ(f.renderer.textPlane().pixel(3, 16 + 3), 0U);
}

TEST(Renderer, ListRedrawsEveryRowInTheColourInForce)
{
    // A character keeps the colour it was printed in until its row is drawn again from the
    // row texts: LIST and KEY LIST redraw all rows in the text colour of that moment.
    for (const char* listing : {"LIST", "KEY LIST"}) {
        Fixture f;
        f.session.type("COLOR 2:PRINT \"A\"");
        ASSERT_EQ(f.renderer.composite().pixel(3, 16 + 5), 0xFF0000U);
        f.session.type("COLOR 7");
        EXPECT_EQ(f.renderer.composite().pixel(3, 16 + 5), 0xFF0000U);
        f.session.type(listing);
        EXPECT_EQ(f.renderer.composite().pixel(3, 16 + 5), 0xFFFFFFU) << listing;
    }
}

TEST(Renderer, WindowDamageCoversWhatWasComposed)
{
    Fixture f;
    EXPECT_EQ(f.renderer.takeWindowDamage().bottom, 400); // the first showing: everything
    EXPECT_TRUE(f.renderer.takeWindowDamage().empty());
    f.session.type("PSET (100,200),2");
    Rect damage = f.renderer.takeWindowDamage();
    EXPECT_FALSE(damage.empty());
    EXPECT_TRUE(damage.left <= 100 && damage.right > 100 && damage.top <= 200 && damage.bottom > 200);
    EXPECT_TRUE(f.renderer.takeWindowDamage().empty());
    // Coming back to the front recomposes the whole screen from the planes, figures included.
    f.renderer.focusGained();
    damage = f.renderer.takeWindowDamage();
    EXPECT_EQ(damage.right - damage.left, 640);
    EXPECT_EQ(damage.bottom - damage.top, 400);
    EXPECT_EQ(f.renderer.composite().pixel(100, 200), 0xFF0000U);
}

// The colour of the cell's glyph ("A" fills its cell) at (column, row).
Pixel cellColour(Renderer& renderer, int column, int row)
{
    return renderer.composite().pixel(column * 8 + 3, row * 16 + 5);
}

TEST(Renderer, EditingMovesCellsWithTheirColours)
{
    Fixture f;
    auto& in = f.session.interpreter();
    in.colours().textColour = 2;
    for (int k = 0; k < 81; ++k)
        in.onChar('A'); // 80 on row 0, the line grows, one on row 1
    ASSERT_EQ(in.screen().link(1).firstRow, 0);
    in.colours().textColour = 7;
    in.screen().setCursor(5, 0);
    in.onKeyDown(vk::kInsert);
    in.onChar('A');
    EXPECT_EQ(cellColour(f.renderer, 5, 0), 0xFFFFFFU);
    EXPECT_EQ(cellColour(f.renderer, 6, 0), 0xFF0000U);
    EXPECT_EQ(cellColour(f.renderer, 79, 0), 0xFF0000U);
    // The cell pushed off row 0 starts row 1; row 1's own character moved on by one.
    EXPECT_EQ(cellColour(f.renderer, 0, 1), 0xFF0000U);
    EXPECT_EQ(cellColour(f.renderer, 1, 1), 0xFF0000U);
    EXPECT_EQ(cellColour(f.renderer, 2, 1), 0U);
    // Delete takes them back: the white cell goes, row 1's first cell returns to row 0's end.
    in.screen().setCursor(5, 0);
    in.onKeyDown(vk::kDelete);
    EXPECT_EQ(cellColour(f.renderer, 5, 0), 0xFF0000U);
    EXPECT_EQ(cellColour(f.renderer, 79, 0), 0xFF0000U);
    EXPECT_EQ(cellColour(f.renderer, 0, 1), 0xFF0000U);
    EXPECT_EQ(cellColour(f.renderer, 1, 1), 0U);
}

TEST(Renderer, BackspaceOnALoneRowLeavesABlankLastCell)
{
    Fixture f;
    auto& in = f.session.interpreter();
    in.colours().textColour = 4;
    for (int k = 0; k < 3; ++k)
        in.onChar('A');
    in.colours().textColour = 7;
    in.screen().setCursor(1, 0);
    in.onChar(vk::kBackspace);
    EXPECT_EQ(cellColour(f.renderer, 0, 0), 0x00FF00U);
    EXPECT_EQ(cellColour(f.renderer, 1, 0), 0x00FF00U);
    EXPECT_EQ(cellColour(f.renderer, 2, 0), 0U);
    EXPECT_EQ(in.screen().row(0), "AA");
}

TEST(Renderer, ThePointsColourFollowsACommaAfterThePoint)
{
    Fixture f;
    f.session.type("PSET (10,10) ,2:PSET (20,20),4:PSET (30,30)");
    EXPECT_EQ(f.renderer.page(0).pixel(10, 10), 0xFF0000U);
    EXPECT_EQ(f.renderer.page(0).pixel(20, 20), 0x00FF00U);
    EXPECT_EQ(f.renderer.page(0).pixel(30, 30), 0xFFFFFFU);
}

TEST(Renderer, PlanesStartInTheBackgroundColourAndTheTileWhite)
{
    Fixture f;
    EXPECT_EQ(f.renderer.sparePlane().pixel(639, 399), 0U);
    EXPECT_EQ(f.renderer.tilePlane().width(), 8);
    EXPECT_EQ(f.renderer.tilePlane().pixel(7, 7), 0xFFFFFFU);
}

} // namespace
} // namespace tessaly::screen
