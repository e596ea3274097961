// End-to-end transcripts: every tests/transcripts/NAME.bas (run as a file) or NAME.in (typed on
// standard input) is run through `tessaly --headless`; standard output must equal NAME.out and the
// exit status NAME.status (0 when absent). NAME.args adds options; NAME.stdin feeds a NAME.bas;
// NAME.keys is given as --keys-file.
// Each runs in a fresh temporary folder holding a copy of the program, so that the files a program
// writes (and the folder that loading the program makes current) stay out of the source tree.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdlib>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/binary_process.h"

namespace {

namespace fs = std::filesystem;

std::string readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::stringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

struct Transcript {
    std::string name;
    fs::path program; // .bas or .in
    bool typed;
};

std::vector<Transcript> transcripts()
{
    std::vector<Transcript> result;
    for (const auto& entry : fs::directory_iterator(TESSALY_TRANSCRIPTS)) {
        auto ext = entry.path().extension();
        if (ext == ".bas" || ext == ".in")
            result.push_back({entry.path().stem().string(), entry.path(), ext == ".in"});
    }
    std::sort(result.begin(), result.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    return result;
}

std::vector<std::string> wordsOf(const std::string& text)
{
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

class TranscriptTest : public ::testing::TestWithParam<Transcript> {};

void runTranscript(const Transcript& t);

// Every transcript runs twice: with compiled statements, and with every statement read from its
// text (TESSALY_TEXT_PATH=1); both must give the expected output byte for byte.
TEST_P(TranscriptTest, MatchesExpectedOutput)
{
    for (bool textPath : {false, true}) {
        SCOPED_TRACE(textPath ? "statements read from their text" : "compiled statements");
        if (textPath)
            setenv("TESSALY_TEXT_PATH", "1", 1);
        runTranscript(GetParam());
        unsetenv("TESSALY_TEXT_PATH");
    }
}

void runTranscript(const Transcript& t)
{
    auto base = t.program.parent_path() / t.name;
    std::vector<std::string> args {"--headless"};
    if (fs::exists(base.string() + ".args")) {
        auto more = wordsOf(readFile(base.string() + ".args"));
        args.insert(args.end(), more.begin(), more.end());
    }
    if (fs::exists(base.string() + ".keys")) {
        args.push_back("--keys-file");
        args.push_back(base.string() + ".keys");
    }
    char pattern[] = "/tmp/tessaly-transcript-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::path folder = pattern;
    fs::path program = folder / t.program.filename();
    fs::copy_file(t.program, program);
    std::string input = "/dev/null";
    if (t.typed)
        input = program.string();
    else if (fs::exists(base.string() + ".stdin"))
        input = base.string() + ".stdin";
    if (!t.typed)
        args.push_back(program.string());
    auto run = tessaly::test::runBinaryWithInputFile(args, input, folder.string());
    fs::remove_all(folder);
    ASSERT_FALSE(run.timedOut) << "transcript " << t.name << " still running after its time limit:\n"
                               << run.output;
    const std::string& output = run.output;
    int exitCode = run.status;

    EXPECT_EQ(output, readFile(base.string() + ".out")) << "transcript " << t.name;
    int expectedStatus = 0;
    if (fs::exists(base.string() + ".status"))
        expectedStatus = std::stoi(readFile(base.string() + ".status"));
    EXPECT_EQ(exitCode, expectedStatus) << "transcript " << t.name;
}

INSTANTIATE_TEST_SUITE_P(Headless, TranscriptTest, ::testing::ValuesIn(transcripts()),
    [](const ::testing::TestParamInfo<Transcript>& info) {
        std::string name = info.param.name;
        for (char& c : name) {
            if (!std::isalnum(static_cast<unsigned char>(c)))
                c = '_';
        }
        return name;
    });

// A program file longer than LOAD reads is refused with a message, never run cut.
TEST(HeadlessFile, LongerThanLoadReadsIsRefused)
{
    char folder[] = "/tmp/tessaly-long-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    fs::path program = fs::path(folder) / "LONG.BAS";
    {
        std::ofstream file(program, std::ios::binary);
        for (int line = 1; line <= 300; ++line)
            file << line << " PRINT " << std::string(240, '1') << "\r\n";
    }
    auto run = tessaly::test::runBinaryWithInputFile({"--headless", program.string()}, "/dev/null");
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "tessaly: cannot load " + program.string() + ": longer than 65535 bytes\n");
    fs::remove_all(folder);
}

} // namespace
