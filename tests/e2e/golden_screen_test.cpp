// Golden screens: each tests/golden/NAME.bas is run with --screenshot and the picture is compared
// with NAME.png by decoded pixels. On a difference the actual picture and a difference picture
// (red where pixels differ) are written next to the test output for a person to look at.
#include <gtest/gtest.h>

#include <png.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "support/binary_process.h"

namespace {

namespace fs = std::filesystem;

struct Image {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> rgb;
};

bool readPng(const std::string& path, Image& image)
{
    png_image png {};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&png, path.c_str()))
        return false;
    png.format = PNG_FORMAT_RGB;
    image.width = static_cast<int>(png.width);
    image.height = static_cast<int>(png.height);
    image.rgb.resize(PNG_IMAGE_SIZE(png));
    return png_image_finish_read(&png, nullptr, image.rgb.data(), 0, nullptr) != 0;
}

void writePng(const std::string& path, const Image& image)
{
    png_image png {};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGB;
    png_image_write_to_file(&png, path.c_str(), 0, image.rgb.data(), 0, nullptr);
}

std::vector<std::string> goldenNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(TESSALY_GOLDEN)) {
        if (entry.path().extension() == ".bas")
            names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class GoldenScreen : public ::testing::TestWithParam<std::string> {};

void comparePicture(const std::string& name);

// Compiled statements and statements read from their text draw the same pixels.
TEST_P(GoldenScreen, MatchesThePicture)
{
    for (bool textPath : {false, true}) {
        SCOPED_TRACE(textPath ? "statements read from their text" : "compiled statements");
        if (textPath)
            setenv("TESSALY_TEXT_PATH", "1", 1);
        comparePicture(GetParam());
        unsetenv("TESSALY_TEXT_PATH");
    }
}

void comparePicture(const std::string& name)
{
    std::string base = std::string(TESSALY_GOLDEN) + "/" + name;
    std::string actualPath = ::testing::TempDir() + "golden_" + name + ".actual.png";
    auto run = tessaly::test::runBinaryWithInputFile({"--headless", "--screenshot", actualPath, base + ".bas"}, "/dev/null");
    ASSERT_FALSE(run.timedOut) << name << " still running after its time limit";
    Image expected;
    Image actual;
    ASSERT_TRUE(readPng(base + ".png", expected)) << base;
    ASSERT_TRUE(readPng(actualPath, actual)) << actualPath;
    ASSERT_EQ(actual.width, expected.width);
    ASSERT_EQ(actual.height, expected.height);
    Image difference = actual;
    size_t differing = 0;
    for (size_t k = 0; k + 2 < actual.rgb.size(); k += 3) {
        bool same = actual.rgb[k] == expected.rgb[k] && actual.rgb[k + 1] == expected.rgb[k + 1] &&
            actual.rgb[k + 2] == expected.rgb[k + 2];
        difference.rgb[k] = same ? 0 : 255;
        difference.rgb[k + 1] = 0;
        difference.rgb[k + 2] = 0;
        differing += same ? 0 : 1;
    }
    if (differing != 0) {
        std::string differencePath = ::testing::TempDir() + "golden_" + name + ".difference.png";
        writePng(differencePath, difference);
        ADD_FAILURE() << differing << " pixels differ; see " << actualPath << " and " << differencePath;
    }
}

INSTANTIATE_TEST_SUITE_P(Screen, GoldenScreen, ::testing::ValuesIn(goldenNames()));

} // namespace
