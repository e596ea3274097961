// The runner's --keys and --keys-file as a process: keys typed at the prompt before standard input,
// several options in their order, and scripts refused before anything runs.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "support/binary_process.h"

namespace tessaly::test {
namespace {

struct TypedCase {
    const char* name;
    std::vector<std::string> args;
    std::string input;
    std::string expected;
};

class KeysAtThePrompt : public ::testing::TestWithParam<TypedCase> {};

TEST_P(KeysAtThePrompt, AreTypedBeforeStandardInput)
{
    const auto& c = GetParam();
    std::vector<std::string> args {"--headless"};
    args.insert(args.end(), c.args.begin(), c.args.end());
    auto run = runBinary(args, c.input);
    EXPECT_FALSE(run.timedOut);
    EXPECT_EQ(run.output, c.expected);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

INSTANTIATE_TEST_SUITE_P(Runner, KeysAtThePrompt,
    ::testing::Values(
        TypedCase {"OneLine", {"--keys", "PRINT 1+1{ENTER}"}, "", "PRINT 1+1\n 2 \nOK\n"},
        TypedCase {"ThenStandardInput", {"--keys", "print 1\n"}, "PRINT 2\n", "print 1\n 1 \nOK\nPRINT 2\n 2 \nOK\n"},
        TypedCase {"OptionsInTheirOrder", {"--keys", "PRINT \"{{}", "--keys", "}\"{ENTER}"}, "",
            "PRINT \"{}\"\n{}\nOK\n"},
        // Enter on the row of an earlier line enters it again, as the screen holds it.
        TypedCase {"EnterOnAnEarlierRow", {"--keys", "PRINT 3\n{UP 3}{RIGHT 6}4{ENTER}"}, "",
            "PRINT 3\n 3 \nOK\nPRINT 4\n 4 \nOK\n"},
        // A line longer than a row is echoed in the rows the screen breaks it into.
        TypedCase {"LongLine", {"--keys", "PRINT \"" + std::string(80, 'x') + "\";{ENTER}"}, "",
            "PRINT \"" + std::string(73, 'x') + "\n" + std::string(7, 'x') + "\";\n" + std::string(80, 'x')
                + "\n\nOK\n"},
        // A double-byte character across the row end stays whole at the end of the first row.
        TypedCase {"LongLineCutInACharacter",
            {"--keys", "PRINT \"" + std::string(72, 'x') + "\u3042\u3044\"{ENTER}"}, "",
            "PRINT \"" + std::string(72, 'x') + "\u3042\n\u3044\"\n" + std::string(72, 'x') + "\u3042\u3044\nOK\n"}),
    [](const auto& info) { return std::string(info.param.name); });

struct RefusedCase {
    const char* name;
    const char* keys;       // the script, given with --keys or in a file with --keys-file
    bool inFile;
    const char* message;    // after "tessaly: " (and "--keys-file PATH: " for a file)
};

class WrongKeys : public ::testing::TestWithParam<RefusedCase> {};

// The program would print; nothing runs.
TEST_P(WrongKeys, AreRefusedWithOneLineAndStatusTwo)
{
    const auto& c = GetParam();
    // Files of their own: ctest runs the cases side by side.
    std::string program = ::testing::TempDir() + "tessaly_wrong_keys_" + c.name + ".bas";
    std::string keyFile = ::testing::TempDir() + "tessaly_wrong_keys_" + c.name + ".txt";
    for (const auto& [path, text] : {std::pair {program, "10 PRINT \"ran\"\n"}, std::pair {keyFile, c.keys}}) {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        ASSERT_NE(file, nullptr);
        std::fputs(text, file);
        std::fclose(file);
    }
    auto run = c.inFile ? runBinary({"--headless", "--keys-file", keyFile, program}, "")
                        : runBinary({"--headless", "--keys", c.keys, program}, "");
    std::string expected = std::string("tessaly: ") + (c.inFile ? "--keys-file " + keyFile + ": " : "--keys: ")
        + c.message + "\n";
    EXPECT_EQ(run.errors, expected);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 2);
    std::remove(program.c_str());
    std::remove(keyFile.c_str());
}

INSTANTIATE_TEST_SUITE_P(Runner, WrongKeys,
    ::testing::Values(
        RefusedCase {"UnknownEscape", "RUN{FOO}", false, "line 1, column 4: unknown key {FOO}"},
        RefusedCase {"UnclosedInFile", "RUN\n{F1", true, "line 2, column 1: unclosed {F1"},
        RefusedCase {"WrongCount", "{NOKEY 0}", true, "line 1, column 1: repeat count not from 1 to 1000 in {NOKEY 0}"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(KeyFiles, AFileThatCannotBeReadEndsWithStatusTwo)
{
    auto run = runBinary({"--headless", "--keys-file", "/nonexistent/keys.txt"}, "PRINT 1\n");
    EXPECT_EQ(run.errors, "tessaly: cannot read /nonexistent/keys.txt\n");
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 2);
}

} // namespace
} // namespace tessaly::test
