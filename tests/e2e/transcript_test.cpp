// End-to-end transcripts: every tests/transcripts/NAME.bas (run as a file) or NAME.in (typed on
// standard input) is run through `tessaly --headless`; standard output must equal NAME.out and the
// exit status NAME.status (0 when absent). NAME.args adds options; NAME.stdin feeds a NAME.bas.
// Each runs in a fresh temporary folder holding a copy of the program, so that the files a program
// writes (and the folder that loading the program makes current) stay out of the source tree.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

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

std::string shellQuote(const std::string& text)
{
    std::string quoted = "'";
    for (char c : text) {
        if (c == '\'')
            quoted += "'\\''";
        else
            quoted += c;
    }
    return quoted + "'";
}

class TranscriptTest : public ::testing::TestWithParam<Transcript> {};

TEST_P(TranscriptTest, MatchesExpectedOutput)
{
    const auto& t = GetParam();
    auto base = t.program.parent_path() / t.name;
    std::string args;
    if (fs::exists(base.string() + ".args")) {
        args = readFile(base.string() + ".args");
        while (!args.empty() && (args.back() == '\n' || args.back() == '\r'))
            args.pop_back();
    }
    char pattern[] = "/tmp/tessaly-transcript-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::path folder = pattern;
    fs::path program = folder / t.program.filename();
    fs::copy_file(t.program, program);
    std::string command = "cd " + shellQuote(folder.string()) + " && " + shellQuote(TESSALY_BINARY) + " --headless " + args;
    if (t.typed)
        command += " < " + shellQuote(program.string());
    else if (fs::exists(base.string() + ".stdin"))
        command += " " + shellQuote(program.string()) + " < " + shellQuote(base.string() + ".stdin");
    else
        command += " " + shellQuote(program.string()) + " < /dev/null";
    FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string output;
    std::array<char, 4096> chunk {};
    size_t got = 0;
    while ((got = fread(chunk.data(), 1, chunk.size(), pipe)) > 0)
        output.append(chunk.data(), got);
    int status = pclose(pipe);
    int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    fs::remove_all(folder);

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

} // namespace
