// tessaly --headless --screenshot writes the 640 x 400 screen as a PNG.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
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

std::string fileBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::stringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

// The first run keeps the font's glyphs in the cache folder and the next one reads them from there;
// with a cache folder that cannot be made the runner reads the font itself and says nothing. The
// screen is the same each time: a yen sign and an overline stand for the backslash and the tilde.
TEST(Screenshot, TheFontCacheChangesNoPixel)
{
    namespace fs = std::filesystem;
    char pattern[] = "/tmp/tessaly-screenshot-cache-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::path folder = pattern;
    std::ofstream(folder / "plain-file") << "x";
    const std::string program = "PRINT \"\\~ \x93\xfa\"\n";
    std::string pictures[3];
    const fs::path cacheHomes[3] = {folder / "cache", folder / "cache", folder / "plain-file" / "cache"};
    for (int k = 0; k < 3; ++k) {
        setenv("XDG_CACHE_HOME", cacheHomes[k].c_str(), 1);
        std::string path = (folder / ("screen" + std::to_string(k) + ".png")).string();
        auto run = tessaly::test::runBinary({"--headless", "--screenshot", path}, program);
        EXPECT_EQ(run.status, 0) << k;
        EXPECT_EQ(run.errors, "") << k;
        pictures[k] = fileBytes(path);
        if (k == 0) {
            EXPECT_FALSE(fs::is_empty(folder / "cache" / "tessaly"));
        }
    }
    setenv("XDG_CACHE_HOME", TESSALY_TEST_CACHE, 1);
    EXPECT_GT(pictures[0].size(), 100U);
    EXPECT_EQ(pictures[1], pictures[0]);
    EXPECT_EQ(pictures[2], pictures[0]);
    fs::remove_all(folder);
}

} // namespace
