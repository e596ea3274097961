// The runner's printer and prints: --lprint collects the printer's bytes, --print-listing and
// --print-screen write PDF pages, checked by their pixels after pdftoppm has rasterised them.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "support/binary_process.h"
#include "support/temp_folder.h"

namespace tessaly::test {
namespace {

// A page rasterised by pdftoppm (a binary PPM), grey levels only.
struct PageImage {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> rgb;
    // The pixel's darkest channel (0 black, 255 white).
    [[nodiscard]] int level(int x, int y) const
    {
        size_t at = (static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)) * 3;
        return std::min({rgb[at], rgb[at + 1], rgb[at + 2]});
    }
    [[nodiscard]] bool inkAt(int x, int y) const { return level(x, y) < 128; }
};

PageImage readPpm(const std::string& path)
{
    PageImage image;
    std::ifstream file(path, std::ios::binary);
    std::string magic;
    int maxValue = 0;
    file >> magic >> image.width >> image.height >> maxValue;
    file.get();
    if (magic != "P6" || maxValue != 255)
        return {};
    image.rgb.resize(static_cast<size_t>(image.width) * static_cast<size_t>(image.height) * 3);
    file.read(reinterpret_cast<char*>(image.rgb.data()), static_cast<std::streamsize>(image.rgb.size()));
    return file ? image : PageImage {};
}

// Every page of the PDF at the given resolution.
std::vector<PageImage> rasterise(const std::string& pdf, int dpi)
{
    std::string command = "pdftoppm -r " + std::to_string(dpi) + " " + pdf + " page";
    if (std::system(command.c_str()) != 0)
        return {};
    std::vector<PageImage> pages;
    for (int n = 1;; ++n) {
        std::ifstream single("page-" + std::to_string(n) + ".ppm");
        std::ifstream padded("page-" + std::string(n < 10 ? "0" : "") + std::to_string(n) + ".ppm");
        if (single)
            pages.push_back(readPpm("page-" + std::to_string(n) + ".ppm"));
        else if (padded)
            pages.push_back(readPpm("page-0" + std::to_string(n) + ".ppm"));
        else
            break;
    }
    return pages;
}

// The bands of rows that hold ink, top to bottom: {first row, last row}.
std::vector<std::pair<int, int>> inkBands(const PageImage& page)
{
    std::vector<std::pair<int, int>> bands;
    bool inBand = false;
    for (int y = 0; y < page.height; ++y) {
        bool ink = false;
        for (int x = 0; x < page.width && !ink; ++x)
            ink = page.inkAt(x, y);
        if (ink && !inBand)
            bands.emplace_back(y, y);
        if (ink)
            bands.back().second = y;
        inBand = ink;
    }
    return bands;
}

class RunnerPrints : public InFolder {};

TEST_F(RunnerPrints, LprintCollectsThePrintersBytesUnchanged)
{
    writeFile("p.bas", "10 LPRINT \"\x82\xA0\";1:LPRINT USING \"##.#\";2.5\r\n20 LLIST 10\r\n");
    auto run = runBinary({"--headless", "--lprint", "out.prn", "p.bas"}, "");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(fileBytes("out.prn"),
        "\x82\xA0 1 \r\n 2.5\r\n10 LPRINT \"\x82\xA0\";1:LPRINT USING \"##.#\";2.5\r\n");
}

struct PrinterRunCase {
    std::vector<std::string> options;
    const char* output;
    int status;
};

// Without --lprint there is no printer; a printer file that cannot take the bytes fails the write;
// one that cannot be made stops the runner before anything runs.
TEST_F(RunnerPrints, AMissingOrFailingPrinterIsABasicError)
{
    writeFile("p.bas", "10 PRINT \"A\"\r\n20 LPRINT \"B\"\r\n30 PRINT \"C\"\r\n");
    const PrinterRunCase cases[] = {
        {{}, "A\nFile not open 20\n", 1},
        {{"--lprint", "/dev/full"}, "A\nDisk I/O error 20\n", 1},
        {{"--lprint", "no/such/folder/out.prn"}, "", 2},
    };
    for (const auto& c : cases) {
        std::vector<std::string> args {"--headless"};
        args.insert(args.end(), c.options.begin(), c.options.end());
        args.emplace_back("p.bas");
        auto run = runBinary(args, "");
        EXPECT_EQ(run.output, c.output) << args[1];
        EXPECT_EQ(run.status, c.status) << args[1];
    }
}

// 60 one-row lines at 50 rows a page: lines 1 to 50 on the first page, 51 to 60 on the second,
// each page with its number below; all ink within the canvas's place on the page.
TEST_F(RunnerPrints, AListingPrintsFiftyRowsAPageWithThePageNumber)
{
    std::string program;
    for (int line = 1; line <= 60; ++line)
        program += std::to_string(line * 10) + " REM LINE " + std::to_string(line) + "\n";
    auto run = runBinary({"--headless", "--print-listing", "listing.pdf"}, program);
    ASSERT_EQ(run.status, 0) << run.errors;
    auto pages = rasterise("listing.pdf", 100);
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(inkBands(pages[0]).size(), 51U);
    EXPECT_EQ(inkBands(pages[1]).size(), 11U);
    // A4 at 100 dots to the inch; the canvas stands 10 mm + 24 units (of 300 to the inch) in from
    // the left and 10 mm + 8 units down from the top, so rows begin at 10 mm + (8 + 18 * 3.29) units.
    const auto& first = pages[0];
    EXPECT_EQ(first.width, 827);
    auto bands = inkBands(first);
    double unit = 100.0 / 300.0;
    double margin = 100.0 / 25.4 * 10;
    EXPECT_NEAR(bands.front().first, margin + (8 + 18 * 3256.0 / 990.0) * unit, 6.0);
    for (int y = 0; y < first.height; ++y) {
        for (int x = 0; x < static_cast<int>(margin + 24 * unit) - 1; ++x)
            ASSERT_FALSE(first.inkAt(x, y)) << x << "," << y;
    }
    // The page number stands under the rows, at x 200 of the canvas's 1,024.
    auto number = bands.back();
    EXPECT_GT(number.first, bands[49].second + 18);
    int leftmost = first.width;
    for (int y = number.first; y <= number.second; ++y)
        for (int x = 0; x < first.width; ++x)
            if (first.inkAt(x, y))
                leftmost = std::min(leftmost, x);
    EXPECT_NEAR(leftmost, margin + (24 + 200 * 2196.0 / 1024.0) * unit, 4.0);
}

// A white box on the black screen's top left quarter: the positive print shows it as it is, the
// negative print inverts it (a black box on white paper); below the screen the paper is white.
TEST_F(RunnerPrints, TheScreenPrintsPositiveOrNegative)
{
    const char* program = "CLS 3:LINE (0,0)-(319,199),7,BF\n";
    auto positive = runBinary({"--headless", "--print-screen", "positive.pdf"}, program);
    auto negative = runBinary({"--headless", "--print-screen", "negative.pdf", "--negative"}, program);
    ASSERT_EQ(positive.status, 0) << positive.errors;
    ASSERT_EQ(negative.status, 0) << negative.errors;
    auto positivePages = rasterise("positive.pdf", 50);
    auto negativePages = rasterise("negative.pdf", 50);
    ASSERT_EQ(positivePages.size(), 1U);
    ASSERT_EQ(negativePages.size(), 1U);
    // The screen is scaled by 3.48125 units a pixel (2244 - 16 across 640), 6 units a dot at 50 dpi.
    double margin = 50.0 / 25.4 * 10;
    auto dot = [&](int screenX, int screenY) {
        return std::pair<int, int> {static_cast<int>(margin + screenX * 3.48125 / 6),
            static_cast<int>(margin + screenY * 3.48125 / 6)};
    };
    auto [boxX, boxY] = dot(160, 100);
    auto [blankX, blankY] = dot(560, 300);
    auto [belowX, belowY] = dot(320, 440);
    const auto& p = positivePages[0];
    const auto& n = negativePages[0];
    EXPECT_EQ(p.level(boxX, boxY), 255);
    EXPECT_EQ(p.level(blankX, blankY), 0);
    EXPECT_EQ(n.level(boxX, boxY), 0);
    EXPECT_EQ(n.level(blankX, blankY), 255);
    EXPECT_EQ(p.level(belowX, belowY), 255);
    EXPECT_EQ(n.level(belowX, belowY), 255);
    // The screen's right edge: black just inside on the positive print, paper just outside.
    auto [edgeX, edgeY] = dot(639, 300);
    EXPECT_EQ(p.level(edgeX - 1, edgeY), 0);
    EXPECT_EQ(p.level(edgeX + 2, edgeY), 255);
}

TEST_F(RunnerPrints, PrintOptionsOutOfPlaceAreUsageErrors)
{
    const std::vector<std::vector<std::string>> cases = {
        {"--headless", "--negative"},
        {"--headless", "--print-listing", "x.pdf", "--page-length", "60"},
        {"--headless", "--page-length", "75"},
    };
    for (const auto& args : cases)
        EXPECT_EQ(runBinary(args, "").status, 2) << args[1];
    auto run = runBinary({"--headless", "--print-screen", "no/such/folder/x.pdf"}, "PRINT 1\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "tessaly: cannot write no/such/folder/x.pdf\n");
}

} // namespace
} // namespace tessaly::test
