// Key scripts of the headless runner: characters, line ends, every escape, counts and the errors.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/headless/key_script.h"
#include "screen/keyboard.h"

namespace tessaly::app {
namespace {

namespace vk = screen::vk;

KeyStroke ch(int byte) { return {StrokeKind::Character, byte}; }
KeyStroke key(int code) { return {StrokeKind::Key, code}; }
const KeyStroke kNoKey {StrokeKind::NoKey, 0};

struct Accepted {
    const char* script;
    std::vector<KeyStroke> strokes;
};

TEST(KeyScript, TextLineEndsAndEscapesGiveTheirStrokes)
{
    const Accepted cases[] = {
        {"", {}},
        {"a1 ", {ch('a'), ch('1'), ch(' ')}},
        {"a\nb", {ch('a'), key(vk::kEnter), ch('b')}},
        {"a\r\nb\rc\n\n", {ch('a'), key(vk::kEnter), ch('b'), key(vk::kEnter), ch('c'), key(vk::kEnter),
                              key(vk::kEnter)}},
        {"{ENTER}", {key(vk::kEnter)}},
        {"{ESC}", {key(vk::kEscape)}},
        {"{STOP}", {key(vk::kPause)}},
        {"{UP}{DOWN}{LEFT}{RIGHT}", {key(vk::kUp), key(vk::kDown), key(vk::kLeft), key(vk::kRight)}},
        {"{HOME}{INS}{DEL}", {key(vk::kHome), key(vk::kInsert), key(vk::kDelete)}},
        {"{BS}{TAB}", {key(vk::kBackspace), key(vk::kTab)}},
        {"{F1}{F2}{F9}{F10}", {key(vk::kF1), key(vk::kF1 + 1), key(vk::kF1 + 8), key(vk::kF10)}},
        {"{NOKEY}", {kNoKey}},
        {"{{}", {ch('{')}},
        {"}", {ch('}')}},
        {"{enter}{Left}{f3}{NoKey}", {key(vk::kEnter), key(vk::kLeft), key(vk::kF1 + 2), kNoKey}},
        {"{LEFT 3}", {key(vk::kLeft), key(vk::kLeft), key(vk::kLeft)}},
        {"{{ 2}x", {ch('{'), ch('{'), ch('x')}},
        {"10 PRINT 12{LEFT}{INS}X{ENTER}", {ch('1'), ch('0'), ch(' '), ch('P'), ch('R'), ch('I'), ch('N'), ch('T'),
                                               ch(' '), ch('1'), ch('2'), key(vk::kLeft), key(vk::kInsert), ch('X'),
                                               key(vk::kEnter)}},
        // Text is typed as Shift-JIS: a double-byte character is two bytes, the yen sign a backslash.
        {"\xE3\x81\x82\xC2\xA5", {ch(0x82), ch(0xA0), ch(0x5C)}},
    };
    for (const auto& c : cases) {
        auto read = parseKeyScript(c.script);
        EXPECT_TRUE(read.ok) << c.script << ": " << read.error;
        EXPECT_EQ(read.strokes, c.strokes) << c.script;
    }
}

TEST(KeyScript, ACountUpToItsLimitRepeatsTheKey)
{
    auto read = parseKeyScript("{NOKEY 1000}");
    ASSERT_TRUE(read.ok) << read.error;
    EXPECT_EQ(read.strokes, std::vector<KeyStroke>(1000, kNoKey));
}

TEST(KeyScript, ScriptsReadOneAfterAnotherMakeOne)
{
    auto first = parseKeyScript("a");
    auto both = parseKeyScript("{F1}", first.strokes);
    ASSERT_TRUE(both.ok) << both.error;
    EXPECT_EQ(both.strokes, (std::vector<KeyStroke> {ch('a'), key(vk::kF1)}));
}

struct Refused {
    std::string script;
    std::string error;
};

TEST(KeyScript, WrongScriptsSayWhereAndWhat)
{
    const Refused cases[] = {
        {"{FOO}", "line 1, column 1: unknown key {FOO}"},
        {"ab{F11}", "line 1, column 3: unknown key {F11}"},
        {"{F0}", "line 1, column 1: unknown key {F0}"},
        {"{F01}", "line 1, column 1: unknown key {F01}"},
        {"{}", "line 1, column 1: unknown key {}"},
        {"{ENTER}{}}", "line 1, column 8: unknown key {}"},
        {"{ NOKEY}", "line 1, column 1: unknown key { NOKEY}"},
        {"x\n\xE3\x81\x82{Up}{X}", "line 2, column 6: unknown key {X}"},
        {"{ENTER", "line 1, column 1: unclosed {ENTER"},
        {"{ENTER\n}", "line 1, column 1: unclosed {ENTER"},
        {"{LEFT 0}", "line 1, column 1: repeat count not from 1 to 1000 in {LEFT 0}"},
        {"{LEFT 1001}", "line 1, column 1: repeat count not from 1 to 1000 in {LEFT 1001}"},
        {"{LEFT 99999}", "line 1, column 1: repeat count not from 1 to 1000 in {LEFT 99999}"},
        {"{LEFT x}", "line 1, column 1: repeat count not from 1 to 1000 in {LEFT x}"},
        {"{LEFT }", "line 1, column 1: repeat count not from 1 to 1000 in {LEFT }"},
        {"{LEFT 3 }", "line 1, column 1: repeat count not from 1 to 1000 in {LEFT 3 }"},
        {"{UNKNOWN 2}", "line 1, column 1: unknown key {UNKNOWN 2}"},
        // A long escape is quoted in part.
        {"{" + std::string(40, 'A') + "}", "line 1, column 1: unknown key {" + std::string(32, 'A') + "..."},
        {"{" + std::string(40, 'A'), "line 1, column 1: unclosed {" + std::string(32, 'A') + "..."},
    };
    for (const auto& c : cases) {
        auto read = parseKeyScript(c.script);
        EXPECT_FALSE(read.ok) << c.script;
        EXPECT_EQ(read.error, c.error) << c.script;
        EXPECT_TRUE(read.strokes.empty()) << c.script;
    }
}

TEST(KeyScript, ScriptsPastTheLimitsAreRefused)
{
    std::string manyKeys;
    for (size_t k = 0; k <= kMaxKeyStrokes / 1000; ++k)
        manyKeys += "{NOKEY 1000}";
    auto tooMany = parseKeyScript(manyKeys);
    EXPECT_FALSE(tooMany.ok);
    EXPECT_EQ(tooMany.error, "more than 1000000 keys");
    EXPECT_TRUE(tooMany.strokes.empty());

    auto tooLong = parseKeyScript(std::string(kMaxKeyScriptBytes + 1, 'a'));
    EXPECT_FALSE(tooLong.ok);
    EXPECT_EQ(tooLong.error, "longer than 4194304 bytes");

    auto justEnough = parseKeyScript(std::string(1000, 'a') + "{NOKEY 1000}", std::vector<KeyStroke>(kMaxKeyStrokes - 2000));
    EXPECT_TRUE(justEnough.ok) << justEnough.error;
    EXPECT_EQ(justEnough.strokes.size(), kMaxKeyStrokes);
}

} // namespace
} // namespace tessaly::app
