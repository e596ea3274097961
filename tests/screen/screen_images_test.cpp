// ROLL and COPY: the page scrolled with its uncovered strips filled, and bitmap files of the screen.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

namespace fs = std::filesystem;
using Fixture = test::GraphicsSession;

TEST(Roll, MovesThePageAndFillsTheUncoveredStrip)
{
    Fixture f;
    f.session.type("COLOR 7,1:CLS 3:PSET (100,100),2");
    EXPECT_EQ(f.session.messageOf("ROLL 16"), "");
    EXPECT_EQ(f.at(100, 84), 0xFF0000U);
    EXPECT_EQ(f.at(100, 100), 0x0000FFU); // the background colour moved up with the rest
    EXPECT_EQ(f.at(10, 390), 0U);          // the bottom strip in colour 0
    EXPECT_EQ(f.session.messageOf("ROLL ,-8,Y"), "");
    EXPECT_EQ(f.at(108, 84), 0xFF0000U);
    EXPECT_EQ(f.at(3, 200), 0x0000FFU);   // the left strip in the background colour
    EXPECT_EQ(f.session.messageOf("ROLL 400"), "Syntax error in ");
    EXPECT_EQ(f.session.messageOf("ROLL ,640"), "Syntax error in ");
}

TEST(Copy, WritesNumberedBitmapsOfTheScreen)
{
    fs::path before = fs::current_path();
    char pattern[] = "/tmp/tessaly-copy-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::current_path(pattern);
    Fixture f;
    f.session.type({"10 PSET (0,399),2:COPY 5:COPY 2", "RUN"});
    auto bytesOf = [](const char* name) {
        std::ifstream file(name, std::ios::binary);
        std::stringstream contents;
        contents << file.rdbuf();
        return contents.str();
    };
    std::string first = bytesOf("COPY1.BMP");
    std::string second = bytesOf("COPY2.BMP");
    fs::current_path(before);
    fs::remove_all(pattern);
    ASSERT_EQ(first.size(), 768054U);
    EXPECT_EQ(first.substr(0, 2), "BM");
    EXPECT_EQ(static_cast<uint8_t>(first[18]), 0x80); // width 640 = 0x280
    EXPECT_EQ(static_cast<uint8_t>(first[19]), 0x02);
    EXPECT_EQ(static_cast<uint8_t>(first[28]), 24);
    // The first pixel row written is y = 399: (0, 399) is red, as blue, green, red bytes.
    EXPECT_EQ(first.substr(54, 3), std::string("\x00\x00\xFF", 3));
    // COPY 2: the page inverted.
    EXPECT_EQ(second.substr(54, 3), std::string("\xFF\xFF\x00", 3));
    EXPECT_EQ(f.session.messageOf("COPY 6"), "Syntax error in ");
}

} // namespace
} // namespace tessaly::screen
