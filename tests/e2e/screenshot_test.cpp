// tessaly --headless --screenshot writes the 640 x 400 screen as a PNG.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "support/binary_process.h"

namespace {

TEST(Screenshot, WritesA640By400Png)
{
    std::string path = ::testing::TempDir() + "tessaly_screenshot.png";
    std::remove(path.c_str());
    auto run = tessaly::test::runBinary({"--headless", "--screenshot", path}, "PRINT 1\n");
    ASSERT_EQ(run.status, 0) << run.errors;
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file.good());
    std::string header(24, '\0');
    file.read(header.data(), 24);
    EXPECT_EQ(header.substr(0, 8), "\x89PNG\r\n\x1a\n");
    auto big = [&](size_t at) {
        return (static_cast<unsigned char>(header[at]) << 24) | (static_cast<unsigned char>(header[at + 1]) << 16) |
            (static_cast<unsigned char>(header[at + 2]) << 8) | static_cast<unsigned char>(header[at + 3]);
    };
    EXPECT_EQ(header.substr(12, 4), "IHDR");
    EXPECT_EQ(big(16), 640);
    EXPECT_EQ(big(20), 400);
}

TEST(Screenshot, UnwritablePathIsAUsageFailure)
{
    auto run = tessaly::test::runBinary({"--headless", "--screenshot", "/nonexistent/dir/x.png"}, "PRINT 1\n");
    EXPECT_EQ(run.status, 2);
}

} // namespace
