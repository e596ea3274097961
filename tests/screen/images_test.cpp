// GET@ and PUT@: the image layout in an array's bytes, the raster operations, clipping, KANJI and
// the errors of bad arrays and images.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

using Fixture = test::GraphicsSession;

constexpr Pixel kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF, kWhite = 0xFFFFFF;

// A 2 x 2 pattern at (10, 10): red, green / blue, black.
void drawPattern(Fixture& f)
{
    f.session.type("PSET (10,10),2 : PSET (11,10),4 : PSET (10,11),1");
}

std::vector<int> peekedBytes(Fixture& f, const std::string& first, int count)
{
    std::vector<int> bytes;
    for (int k = 0; k < count; ++k)
        bytes.push_back(std::stoi(f.session.valueOf("PEEK(VARPTR(" + first + ") + " + std::to_string(k) + ")")));
    return bytes;
}

TEST(GetImage, StoresWidthHeightAndRowsFromTheBottomWithOneExtraPixel)
{
    Fixture f;
    drawPattern(f);
    for (const char* command : {"GET @(10,10)-(11,11), A%", "GET (11,11)-(10,10),A%", "GET@(10,10)-STEP(1,1),A%"}) {
        f.session.type("DIM A%(10) : DEF SEG = 0");
        EXPECT_EQ(f.session.messageOf(command), "") << command;
        std::vector<int> expected = {2, 0, 2, 0,            // w, h
            255, 0, 0, 0, 0, 0, 0, 0, 0,                    // y = 11: blue, black, black
            0, 0, 255, 0, 255, 0, 0, 0, 0};                 // y = 10: red, green, black
        EXPECT_EQ(peekedBytes(f, "A%(0)", 22), expected) << command;
        EXPECT_EQ(f.session.valueOf("POINT(2)"), " 11 ");
        f.session.type("ERASE A%");
    }
}

TEST(GetImage, FillsArraysOfEveryNumericTypeFromTheNamedElement)
{
    Fixture f;
    drawPattern(f);
    f.session.type("DIM D#(3), S!(6) : DEF SEG = 0");
    EXPECT_EQ(f.session.messageOf("GET @(10,10)-(10,10), D#"), "");
    EXPECT_EQ(peekedBytes(f, "D#(0)", 10), (std::vector<int> {1, 0, 1, 0, 0, 0, 255, 0, 255, 0}));
    // From S!(1) on: 24 bytes remain, enough for a 1 x 2 image (4 + 12).
    EXPECT_EQ(f.session.messageOf("GET @(10,10)-(10,11), S!(1)"), "");
    EXPECT_EQ(peekedBytes(f, "S!(1)", 7), (std::vector<int> {1, 0, 2, 0, 255, 0, 0}));
    EXPECT_EQ(f.session.valueOf("S!(0)"), " 0 ");
}

TEST(GetImage, RefusesArraysTooSmallStringArraysAndBadSyntax)
{
    Fixture f;
    f.session.type("DIM B%(9), S$(100) : B%(0) = 77");
    EXPECT_EQ(f.session.messageOf("GET @(0,0)-(1,1), B%"), "Illegal function call in ");
    EXPECT_EQ(f.session.valueOf("B%(0)"), " 77 ");
    EXPECT_EQ(f.session.messageOf("GET @(0,0)-(639,399), B%"), "Illegal function call in ");
    EXPECT_EQ(f.session.messageOf("GET @(0,0)-(1,1), S$"), "Type mismatch in ");
    EXPECT_EQ(f.session.messageOf("GET @(0,0)-(1,1)"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("GET @(0,0) (1,1), B%"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("GET @0,0-(1,1), B%"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("GET @(0,0)-(1,1), B%(10)"), "Subscript out of range in ");
}

struct PutCase {
    const char* mode;
    Pixel background; // of the target square before PUT
    Pixel atRed, atBlack;
};

TEST(PutImage, CombinesWithThePageByEachRasterOperation)
{
    const PutCase cases[] = {
        {"", kWhite, kWhite ^ kRed, kWhite},
        {",XOR", kBlue, kBlue | kRed, kBlue},
        {",PSET", kWhite, kRed, 0},
        {",PRESET", kWhite, 0x00FFFF, kWhite},
        {",OR", kBlue, kBlue | kRed, kBlue},
        {",AND", kWhite, kRed, 0},
        {",and", kBlue, 0, 0},
    };
    for (const auto& c : cases) {
        Fixture f;
        drawPattern(f);
        f.session.type("DIM A%(10) : GET @(10,10)-(11,11), A%");
        int colour = c.background == kWhite ? 7 : 1;
        f.session.type("LINE (100,100)-(120,120)," + std::to_string(colour) + ",BF");
        EXPECT_EQ(f.session.messageOf(std::string("PUT @(100,100), A%") + c.mode), "") << c.mode;
        EXPECT_EQ(f.at(100, 100), c.atRed) << c.mode;
        EXPECT_EQ(f.at(101, 101), c.atBlack) << c.mode;
        EXPECT_EQ(f.at(102, 100), c.background) << c.mode; // the extra pixel is not drawn
        EXPECT_EQ(f.at(100, 102), c.background) << c.mode;
    }
}

TEST(PutImage, TwoExclusiveOrsRestoreThePage)
{
    Fixture f;
    drawPattern(f);
    f.session.type({"DIM A%(10) : GET @(10,10)-(11,11), A%", "LINE (100,100)-(120,120),6,BF"});
    f.session.type("PUT @(100,100), A%");
    EXPECT_EQ(f.at(101, 100), 0xFFFF00U ^ kGreen);
    f.session.type("PUT (100,100), A%");
    EXPECT_EQ(f.at(100, 100), 0xFFFF00U);
    EXPECT_EQ(f.at(101, 100), 0xFFFF00U);
    EXPECT_EQ(f.session.valueOf("POINT(2)"), " 100 ");
    f.session.type("PUT @STEP(5,5), A%, PSET");
    EXPECT_EQ(f.at(105, 105), kRed);
}

TEST(PutImage, IsClippedAtThePageAndTheView)
{
    Fixture f;
    drawPattern(f);
    f.session.type("DIM A%(10) : GET @(10,10)-(11,11), A%");
    EXPECT_EQ(f.session.messageOf("PUT @(639,399), A%, PSET"), "");
    EXPECT_EQ(f.at(639, 399), kRed);
    EXPECT_EQ(f.session.messageOf("PUT @(-1,0), A%, PSET"), "");
    EXPECT_EQ(f.at(0, 0), kGreen);
    EXPECT_EQ(f.session.messageOf("PUT @(-5000,-5000), A%, PSET"), "");
    f.session.type("VIEW (50,50)-(60,60)");
    EXPECT_EQ(f.session.messageOf("PUT @(59,59), A%, PSET"), "");
    EXPECT_EQ(f.at(59, 59), kRed);
    EXPECT_EQ(f.at(60, 59), 0U); // the view's clip ends one pixel before its second corner
    EXPECT_EQ(f.at(59, 60), 0U);
}

TEST(PutImage, ReadsBitmapFilesAndRefusesInconsistentHeaders)
{
    Fixture f;
    f.session.type("DIM M%(40), H%(3), S$(3) : DEF SEG = 0 : P = VARPTR(M%(0))");
    // "BM", width 1 at byte 18, height 1 at byte 22, pixels from byte 54: red, then green.
    f.session.type("POKE P, 66 : POKE P + 1, 77 : POKE P + 18, 1 : POKE P + 22, 1");
    f.session.type("POKE P + 56, 255 : POKE P + 58, 255");
    EXPECT_EQ(f.session.messageOf("PUT @(300,300), M%, PSET"), "");
    EXPECT_EQ(f.at(300, 300), kRed);
    EXPECT_EQ(f.at(301, 300), 0U);
    EXPECT_EQ(f.session.messageOf("POKE P + 22, 10"), "");
    EXPECT_EQ(f.session.messageOf("PUT @(300,300), M%, PSET"), "Illegal function call in ");
    f.session.type("H%(0) = 100 : H%(1) = 100");
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), H%"), "Illegal function call in ");
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), S$"), "Type mismatch in ");
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), M%, PSET, \"A\""), "Type mismatch in ");
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), H%, FOO"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("PUT @(0,0)"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("PUT @(0,0) H%"), "Syntax error in ");
}

std::string repeated(const std::string& piece, int times)
{
    std::string out;
    for (int k = 0; k < times; ++k)
        out += piece;
    return out;
}

// A font with a full top row for hiragana A (JIS &H2422) and a full first column for the first
// kanji (JIS &H3021).
struct KanjiFixture {
    Font font = Font::parse("3042:FFFF" + std::string(60, '0') + "\n4E9C:" + repeated("8000", 16) + "\n"
        "0041:FF" + std::string(30, '0') + "\n");
    test::Session session;
    Renderer renderer {font, session.interpreter().colours(), session.interpreter().functionKeys(),
        session.interpreter().graphics()};
    KanjiFixture() { session.interpreter().setRenderer(&renderer); }
    ~KanjiFixture() { session.interpreter().setRenderer(nullptr); }
    Pixel at(int x, int y) { return renderer.page(0).pixel(x, y); }
};

TEST(PutKanji, DrawsTheCharacterInItsCellWithTheColoursGiven)
{
    KanjiFixture f;
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), KANJI(&H2422), PSET, 2, 1"), "");
    EXPECT_EQ(f.at(0, 0), kRed);
    EXPECT_EQ(f.at(15, 0), kRed);
    EXPECT_EQ(f.at(15, 15), kBlue);
    EXPECT_EQ(f.at(16, 0), 0U);
    EXPECT_EQ(f.session.messageOf("PUT @(100,0), KANJI(&H3021), PSET, 2, 1"), "");
    EXPECT_EQ(f.at(100, 0), kRed); // Shift-JIS &H889F: the glyph with its first column set
    EXPECT_EQ(f.at(100, 15), kRed);
    EXPECT_EQ(f.at(101, 0), kBlue);
    EXPECT_EQ(f.session.messageOf("PUT @(200,0), KANJI(&H41), PSET, 4, 9"), "");
    EXPECT_EQ(f.at(207, 0), kGreen);  // a single-byte character is 8 wide
    EXPECT_EQ(f.at(207, 1), 0U);      // colour 9 is not valid: the background in effect
    EXPECT_EQ(f.at(208, 0), 0U);
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), KANJI(&H2422)"), "");
    EXPECT_EQ(f.at(0, 0), kRed ^ kWhite);
    for (const char* bad : {"PUT @(0,0), KANJI(&H2420)", "PUT @(0,0), KANJI(&H7F21)", "PUT @(0,0), KANJI(-1)",
             "PUT @(0,0), KANJI(70000)"})
        EXPECT_EQ(f.session.messageOf(bad), "Illegal function call in ") << bad;
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), KANJI(\"A\")"), "Type mismatch in ");
    EXPECT_EQ(f.session.messageOf("PUT @(0,0), KANJI &H2422"), "Syntax error in ");
}

} // namespace
} // namespace tessaly::screen
