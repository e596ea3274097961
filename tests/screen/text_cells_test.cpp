// The text plane drawn lazily from its cells against the plane drawn at every change: a reference
// that draws each change on its own plane at once, as the text screen asks, is compared pixel for
// pixel with the renderer's text plane after every step of programs and of random edits.
#include <gtest/gtest.h>

#include <random>

#include "core/interpreter.h"
#include "core/shift_jis.h"
#include "io/program_file.h"
#include "screen/renderer.h"
#include "support/test_host.h"

namespace tessaly::screen {
namespace {

// Every change drawn at once, glyph by glyph.
class EagerTextPlane final : public TextPlane {
public:
    EagerTextPlane(const Font& font, const Colours& colours, const FunctionKeys& keys)
        : m_font(font)
        , m_colours(colours)
        , m_keys(keys)
    {
        m_plane.fill(m_plane.bounds(), background());
    }

    void drawText(int column, int row, std::string_view bytes) override
    {
        if (row < 0 || row >= kRows)
            return;
        std::string text(bytes);
        for (size_t k = 0; k < text.size(); ++k) {
            auto byte = static_cast<uint8_t>(text[k]);
            if (core::IsLeadByte(byte))
                ++k;
            else if (byte == 0xA0)
                text[k] = ' ';
        }
        int x = column * 8, y = row * 16;
        m_plane.fill({x, y, x + static_cast<int>(text.size()) * 8, y + 16}, background());
        m_font.drawText(m_plane, x, y, text, kDigitalColours[static_cast<size_t>(std::clamp(m_colours.textColour, 0, 7))]);
    }
    void scrollUp(int top, int bottom) override
    {
        Rect band = rows(top, bottom - 1);
        m_plane.copyFrom(m_plane, {0, band.top + 16, kScreenWidth, band.bottom}, 0, band.top);
        m_plane.fill({0, band.bottom - 16, kScreenWidth, band.bottom}, background());
    }
    void clearRows(int first, int last) override { m_plane.fill(rows(first, last), background()); }
    void shiftCells(int column, int row, int shift, int followingRows) override
    {
        const int last = std::min(row + followingRows, kRows - 1);
        auto cell = [](int c, int r) { return Rect {c * 8, r * 16, c * 8 + 8, r * 16 + 16}; };
        auto startOf = [&](int r) { return r == row ? column : 0; };
        if (shift > 0) {
            for (int r = last; r >= row; --r) {
                if (r < last)
                    m_plane.copyFrom(m_plane, cell(kColumns - 1, r), 0, (r + 1) * 16);
                int start = startOf(r);
                m_plane.copyFrom(m_plane, {start * 8, r * 16, (kColumns - 1) * 8, r * 16 + 16}, (start + 1) * 8, r * 16);
            }
            return;
        }
        for (int r = row; r <= last; ++r) {
            int start = startOf(r);
            m_plane.copyFrom(m_plane, {(start + 1) * 8, r * 16, kColumns * 8, r * 16 + 16}, start * 8, r * 16);
            if (r < last)
                m_plane.copyFrom(m_plane, cell(0, r + 1), (kColumns - 1) * 8, r * 16);
            else
                m_plane.fill(cell(kColumns - 1, r), background());
        }
    }
    void redrawRows(const TextScreen& screen) override
    {
        int last = m_keys.lineShown ? kFunctionKeyRow - 1 : kRows - 1;
        for (int r = 0; r <= last; ++r) {
            std::string_view text = screen.row(r);
            m_plane.fill(rows(r, r), background());
            drawText(0, r, text.substr(0, std::min<size_t>(text.size(), kColumns + 1)));
        }
    }
    const Plane& plane() const { return m_plane; }

private:
    Pixel background() const { return m_colours.palette[static_cast<size_t>(std::clamp(m_colours.backgroundInEffect, 0, 15))]; }
    static Rect rows(int first, int last)
    {
        first = std::clamp(first, 0, kRows - 1);
        last = std::clamp(last, first, kRows - 1);
        return {0, first * 16, kScreenWidth, (last + 1) * 16};
    }

    const Font& m_font;
    const Colours& m_colours;
    const FunctionKeys& m_keys;
    Plane m_plane;
};

// The text screen's calls go to both planes.
class BothPlanes final : public TextPlane {
public:
    BothPlanes(Renderer& renderer, EagerTextPlane& eager)
        : m_renderer(renderer)
        , m_eager(eager)
    {
    }
    void drawText(int column, int row, std::string_view bytes) override
    {
        m_renderer.drawText(column, row, bytes);
        m_eager.drawText(column, row, bytes);
    }
    void scrollUp(int top, int bottom) override
    {
        m_renderer.scrollUp(top, bottom);
        m_eager.scrollUp(top, bottom);
    }
    void clearRows(int first, int last) override
    {
        m_renderer.clearRows(first, last);
        m_eager.clearRows(first, last);
    }
    void presentRows(int first, int last) override { m_renderer.presentRows(first, last); }
    void drawFunctionKeyLine() override { m_renderer.drawFunctionKeyLine(); }
    void clearGraphics() override { m_renderer.clearGraphics(); }
    void redrawRows(const TextScreen& screen) override
    {
        m_renderer.redrawRows(screen);
        m_eager.redrawRows(screen);
    }
    void shiftCells(int column, int row, int shift, int followingRows) override
    {
        m_renderer.shiftCells(column, row, shift, followingRows);
        m_eager.shiftCells(column, row, shift, followingRows);
    }

private:
    Renderer& m_renderer;
    EagerTextPlane& m_eager;
};

const Font& screenFont()
{
    static const Font font = [] {
        std::string error;
        auto loaded = Font::load(kUnifontJapanesePath, error);
        return loaded ? std::move(*loaded) : Font::parse("");
    }();
    return font;
}

struct Fixture {
    test::Session session {200000};
    core::Interpreter& in = session.interpreter();
    Renderer renderer {screenFont(), in.colours(), in.functionKeys(), in.graphics()};
    EagerTextPlane eager {screenFont(), in.colours(), in.functionKeys()};
    BothPlanes both {renderer, eager};

    Fixture()
    {
        in.setRenderer(&renderer);
        in.screen().setPlane(&both);
    }
    ~Fixture() { in.setRenderer(nullptr); }
    Fixture(const Fixture&) = delete;
    Fixture& operator=(const Fixture&) = delete;

    // The first pixel where the planes differ, "" when none does.
    std::string difference()
    {
        const Plane& lazy = renderer.textPlane();
        for (int y = 0; y < kScreenHeight; ++y)
            if (!std::equal(lazy.row(y), lazy.row(y) + kScreenWidth, eager.plane().row(y)))
                for (int x = 0; x < kScreenWidth; ++x)
                    if (lazy.pixel(x, y) != eager.plane().pixel(x, y))
                        return std::to_string(x) + "," + std::to_string(y);
        return "";
    }
};

TEST(TextCells, AProgramShowsThePixelsOfDrawingEveryChangeAtOnce)
{
    ASSERT_GT(screenFont().glyphCount(), 1000U) << "the test needs the screen font";
    Fixture f;
    const std::string program =
        "10 COLOR 6:PRINT \"ABC\";CHR$(&HA0);\"x\";CHR$(&H81);\"|\"\n"
        "20 PRINT \"\x93\xfa\x96\x7b\x8c\xea\";:COLOR 2:PRINT \"\x82\xa0\x82\xa2\"\n"
        "30 FOR I=1 TO 30:COLOR I MOD 8:PRINT STRING$(I*3,65+I MOD 26);\"\x8a\xbf\":NEXT\n"
        "40 LOCATE 78,3:PRINT \"\x8e\x9a\x8e\x9a\";\n"
        "50 CONSOLE 5,10:FOR I=1 TO 14:PRINT I;CHR$(&H1C);CHR$(7);:PRINT:NEXT\n"
        "60 CONSOLE 0,25:KEY OFF:LOCATE 0,24:PRINT \"BOTTOM\";\n"
        "70 COLOR ,,,,2:COLOR 7:PRINT:PRINT \"ON GREEN\"\n"
        "80 LIST 10-20\n"
        "90 KEY ON:COLOR 5:CLS:PRINT \"END\"\n";
    io::ProgramFile::Read(program, f.in.program());
    f.session.start("RUN");
    for (int step = 0; step < 2000 && f.in.isRunning(); ++step) {
        f.session.step(1);
        ASSERT_EQ(f.difference(), "") << "after step " << step;
    }
    EXPECT_FALSE(f.in.isRunning());
    EXPECT_EQ(f.difference(), "");
}

TEST(TextCells, RandomEditsOfCellsShowThePixelsOfDrawingEveryChangeAtOnce)
{
    Fixture f;
    std::mt19937 random(7);
    auto pick = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); };
    const std::string_view pieces[] = {"A", "\x82\xa0", "xyz", "\x93\xfa\x96\x7b", "\xa0", "\x81", " ", "\x88\x9f!"};
    for (int k = 0; k < 3000; ++k) {
        f.in.colours().textColour = pick(8);
        // Rows cleared and scrolled in on changing backgrounds.
        if (pick(50) == 0)
            f.in.colours().backgroundInEffect = pick(3);
        std::string drawn;
        for (int n = pick(4); n > 0; --n)
            drawn += pieces[pick(static_cast<int>(std::size(pieces)))];
        switch (pick(4)) {
        case 0: f.both.drawText(pick(kColumns), pick(kRows), drawn); break;
        case 1: f.both.scrollUp(pick(kRows), pick(kRows) + 1); break;
        case 2: f.both.clearRows(pick(kRows), pick(kRows)); break;
        default: f.both.shiftCells(pick(kColumns), pick(kRows), pick(2) == 0 ? 1 : -1, pick(4)); break;
        }
        if (pick(3) == 0) {
            ASSERT_EQ(f.difference(), "") << "after edit " << k;
        }
    }
    EXPECT_EQ(f.difference(), "");
}

} // namespace
} // namespace tessaly::screen
