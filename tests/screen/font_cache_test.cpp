// The font cache: a start after the first reads the glyph table from the cache folder; a cache that
// does not check is built again, a folder that cannot be written keeps nothing, and a changed .hex
// file gets a table of its own.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "screen/font.h"
#include "screen/font_cache.h"

namespace tessaly::screen {
namespace {

namespace fs = std::filesystem;

// A fresh folder holding a small .hex file; the cache folder is inside it.
class FontCache : public ::testing::Test {
protected:
    void SetUp() override
    {
        char pattern[] = "/tmp/tessaly-font-cache-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        m_folder = pattern;
        m_hex = (m_folder / "test_font.hex").string();
        m_cache = (m_folder / "cache" / "tessaly").string();
        writeHex(0x11);
    }
    void TearDown() override { fs::remove_all(m_folder); }

    // "A" with the top row given, and a wide あ.
    void writeHex(int top)
    {
        char line[64];
        std::snprintf(line, sizeof line, "0041:%02X%s\n", top, std::string(30, '0').c_str());
        std::ofstream(m_hex) << line << "3042:" << std::string(64, 'F') << "\n";
    }
    Font loaded(const std::string& cacheFolder)
    {
        std::string error;
        auto font = Font::load(m_hex, error, cacheFolder);
        EXPECT_TRUE(font.has_value()) << error;
        return font ? *font : Font::parse("");
    }
    FontSourceKey key() const
    {
        auto found = FontSourceKeyOf(m_hex);
        EXPECT_TRUE(found.has_value());
        return found.value_or(FontSourceKey {});
    }
    fs::path cacheFile() const { return fs::path(m_cache) / FontCacheFileName(m_hex, key()); }
    std::vector<std::string> cacheFiles() const
    {
        std::vector<std::string> names;
        std::error_code error;
        for (const auto& entry : fs::directory_iterator(m_cache, error))
            names.push_back(entry.path().filename().string());
        return names;
    }

    fs::path m_folder;
    std::string m_hex;
    std::string m_cache;
};

// Both fonts have the same glyph, or no glyph, for every code.
void expectSameGlyphs(const Font& expected, const Font& actual)
{
    size_t differing = 0;
    for (uint32_t code = 0; code < kShiftJisCodes; ++code) {
        Glyph want = expected.glyphForShiftJis(static_cast<uint16_t>(code));
        Glyph got = actual.glyphForShiftJis(static_cast<uint16_t>(code));
        bool same = want.width == got.width &&
            (want.width == 0 || std::equal(want.rows, want.rows + 2 * want.width, got.rows));
        differing += same ? 0 : 1;
    }
    EXPECT_EQ(differing, 0U);
}

TEST_F(FontCache, TheCachedTableHasTheGlyphsOfTheHexFileForEveryCode)
{
    if (!FontSourceKeyOf(kUnifontJapanesePath))
        GTEST_SKIP() << "no " << kUnifontJapanesePath;
    std::string error;
    auto fromHex = Font::load(kUnifontJapanesePath, error, "");
    auto building = Font::load(kUnifontJapanesePath, error, m_cache);
    ASSERT_TRUE(fromHex && building) << error;
    EXPECT_GT(building->glyphCount(), 7000U); // built from the .hex file, and stored
    auto key = FontSourceKeyOf(kUnifontJapanesePath);
    ASSERT_TRUE(key);
    auto stored = ReadFontCache(m_cache, kUnifontJapanesePath, *key);
    ASSERT_TRUE(stored.has_value());
    auto cached = Font::load(kUnifontJapanesePath, error, m_cache);
    ASSERT_TRUE(cached);
    EXPECT_EQ(cached->glyphCount(), fromHex->glyphCount());
    expectSameGlyphs(*fromHex, *cached);
    expectSameGlyphs(*fromHex, *building);
}

TEST_F(FontCache, TheSecondStartReadsTheCache)
{
    EXPECT_EQ(loaded(m_cache).glyphForShiftJis('A').rows[0], 0x11);
    ASSERT_TRUE(fs::exists(cacheFile()));
    // The cache file is taken as it is: a .hex file changed in place without a new size or time
    // would not be seen, which shows where the glyphs come from.
    struct stat before {};
    ASSERT_EQ(stat(m_hex.c_str(), &before), 0);
    writeHex(0x22);
    struct timespec times[2] = {before.st_mtim, before.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, m_hex.c_str(), times, 0), 0);
    EXPECT_EQ(loaded(m_cache).glyphForShiftJis('A').rows[0], 0x11);
    EXPECT_EQ(loaded("").glyphForShiftJis('A').rows[0], 0x22);
}

TEST_F(FontCache, ACacheThatDoesNotCheckIsBuiltAgain)
{
    EXPECT_EQ(loaded(m_cache).glyphCount(), 2U);
    std::ifstream stored(cacheFile(), std::ios::binary);
    const std::string good((std::istreambuf_iterator<char>(stored)), std::istreambuf_iterator<char>());
    ASSERT_GT(good.size(), kGlyphTableHeaderBytes + 2 * kShiftJisCodes);
    auto changed = [&good](const std::function<void(std::string&)>& change) {
        std::string bytes = good;
        change(bytes);
        return bytes;
    };
    const std::vector<std::pair<const char*, std::string>> spoiled = {
        {"empty", ""},
        {"a header only", good.substr(0, kGlyphTableHeaderBytes)},
        {"cut by one byte", good.substr(0, good.size() - 1)},
        {"one byte more", good + "x"},
        {"another magic", changed([](std::string& b) { b[0] = 'X'; })},
        {"another version", changed([](std::string& b) { b[8] = static_cast<char>(b[8] + 1); })},
        {"more glyphs than held", changed([](std::string& b) { b[12] = static_cast<char>(b[12] + 1); })},
        {"another key", changed([](std::string& b) { b[16] = static_cast<char>(b[16] ^ 1); })},
        {"a changed slot", changed([](std::string& b) { b[kGlyphTableHeaderBytes + 2 * 'B'] = 1; })},
        {"a changed row", changed([](std::string& b) { b[b.size() - 1] = static_cast<char>(b.back() ^ 0x40); })},
    };
    for (const auto& [what, bytes] : spoiled) {
        SCOPED_TRACE(what);
        std::ofstream(cacheFile(), std::ios::binary | std::ios::trunc) << bytes;
        EXPECT_FALSE(ReadFontCache(m_cache, m_hex, key()).has_value());
        Font font = loaded(m_cache);
        EXPECT_EQ(font.glyphForShiftJis('A').rows[0], 0x11);
        EXPECT_EQ(font.glyphForShiftJis(0x82A0).width, 16);
        EXPECT_EQ(font.glyphForShiftJis('B').width, 0);
        EXPECT_TRUE(ReadFontCache(m_cache, m_hex, key()).has_value()); // stored again
        EXPECT_EQ(fs::file_size(cacheFile()), good.size());
    }
}

// Tests run as root, who may write anywhere: a folder below a regular file can be made by nobody.
TEST_F(FontCache, AFolderThatCannotBeWrittenKeepsNothing)
{
    std::ofstream(m_folder / "plain-file") << "x";
    std::string unwritable = (m_folder / "plain-file" / "tessaly").string();
    Font font = loaded(unwritable);
    EXPECT_EQ(font.glyphForShiftJis('A').rows[0], 0x11);
    EXPECT_EQ(font.glyphForShiftJis(0x82A0).width, 16);
    EXPECT_FALSE(WriteFontCache(unwritable, m_hex, key(), GlyphTable::fromHexText("0041:" + std::string(32, '0'))));
    EXPECT_EQ(loaded("").glyphForShiftJis('A').rows[0], 0x11); // no folder at all
}

TEST_F(FontCache, AChangedHexFileGetsATableOfItsOwn)
{
    auto first = key();
    std::string firstName = FontCacheFileName(m_hex, first);
    EXPECT_EQ(loaded(m_cache).glyphForShiftJis('A').rows[0], 0x11);
    EXPECT_EQ(cacheFiles(), std::vector<std::string> {firstName});

    // Another modification time alone changes the key.
    writeHex(0x22);
    struct timespec later[2] = {{first.modifiedNanoseconds / 1'000'000'000 + 10, 0},
        {first.modifiedNanoseconds / 1'000'000'000 + 10, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, m_hex.c_str(), later, 0), 0);
    auto second = key();
    EXPECT_EQ(second.size, first.size);
    EXPECT_NE(second, first);
    EXPECT_NE(FontCacheFileName(m_hex, second), firstName);
    EXPECT_EQ(loaded(m_cache).glyphForShiftJis('A').rows[0], 0x22);
    // The table of the old file is removed with it.
    EXPECT_EQ(cacheFiles(), std::vector<std::string> {FontCacheFileName(m_hex, second)});

    // So does another size.
    std::ofstream(m_hex, std::ios::app) << "0042:" << std::string(32, 'F') << "\n";
    EXPECT_NE(key().size, second.size);
    EXPECT_EQ(loaded(m_cache).glyphForShiftJis('B').width, 8);
    EXPECT_EQ(cacheFiles().size(), 1U);
}

TEST(FontCacheFolder, IsTheUsersCacheFolder)
{
    struct Case {
        const char* cacheHome; // nullptr: not set
        const char* home;
        const char* folder;
    };
    const Case cases[] = {
        {"/var/cache/someone", "/home/someone", "/var/cache/someone/tessaly"},
        {nullptr, "/home/someone", "/home/someone/.cache/tessaly"},
        {"", "/home/someone", "/home/someone/.cache/tessaly"},
        {"relative/cache", "/home/someone", "/home/someone/.cache/tessaly"},
        {nullptr, nullptr, ""},
        {nullptr, "relative", ""},
    };
    std::string savedCacheHome = std::getenv("XDG_CACHE_HOME") ? std::getenv("XDG_CACHE_HOME") : "";
    std::string savedHome = std::getenv("HOME") ? std::getenv("HOME") : "";
    auto put = [](const char* name, const char* value) {
        if (value != nullptr)
            setenv(name, value, 1);
        else
            unsetenv(name);
    };
    for (const auto& c : cases) {
        put("XDG_CACHE_HOME", c.cacheHome);
        put("HOME", c.home);
        EXPECT_EQ(UserFontCacheFolder(), c.folder) << (c.cacheHome ? c.cacheHome : "(unset)");
    }
    setenv("XDG_CACHE_HOME", savedCacheHome.c_str(), 1);
    setenv("HOME", savedHome.c_str(), 1);
}

} // namespace
} // namespace tessaly::screen
