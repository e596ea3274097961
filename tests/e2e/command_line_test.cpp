// The command line of both programs as processes: one help text, the version, usage errors, and a
// window asked for where there is no display.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "support/binary_process.h"

namespace tessaly::test {
namespace {

// The variables that give the window a display are unset while it lives, as on a server or in a
// text console, and put back afterwards.
class WithoutDisplay {
public:
    WithoutDisplay()
    {
        for (const char* name : kNames) {
            const char* value = std::getenv(name);
            m_saved.emplace_back(value == nullptr ? std::nullopt : std::optional<std::string>(value));
            unsetenv(name);
        }
    }
    ~WithoutDisplay()
    {
        for (size_t i = 0; i < std::size(kNames); ++i) {
            if (m_saved[i])
                setenv(kNames[i], m_saved[i]->c_str(), 1);
        }
    }
    WithoutDisplay(const WithoutDisplay&) = delete;
    WithoutDisplay& operator=(const WithoutDisplay&) = delete;

private:
    static constexpr const char* kNames[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    std::vector<std::optional<std::string>> m_saved;
};

struct Invocation {
    const char* program;
    std::vector<std::string> args;
};

FinishedRun run(const Invocation& invocation) { return runProgram(invocation.program, invocation.args); }

std::string describe(const Invocation& invocation)
{
    std::string text = invocation.program;
    for (const auto& arg : invocation.args)
        text += " " + arg;
    return text;
}

TEST(CommandLine, BothProgramsPrintTheSameHelpWithoutADisplay)
{
    WithoutDisplay noDisplay;
    auto reference = run({TESSALY_BINARY, {"--help"}});
    ASSERT_EQ(reference.status, 0);
    EXPECT_EQ(reference.errors, "");
    const std::string& help = reference.output;
    EXPECT_EQ(help.rfind(std::string(TESSALY_VERSION_LINE) + ": ", 0), 0u) << help;
    for (const char* part :
        {"Usage: tessaly [--run] [--com N=PATH]... [FILE]", "tessaly --convert IN OUT [--text | --records]",
            "\nThe window\n", "\nThe headless runner\nUsage: tessaly --headless [--screen]",
            "\nProgram files\n  --list FILE\n", "\nExit status\n  0  ", "tessaly: cannot read FILE"})
        EXPECT_NE(help.find(part), std::string::npos) << part;
    for (const Invocation& same : std::vector<Invocation> {{TESSALY_BINARY, {"-h"}}, {TESSALY_WINDOW_BINARY, {"--help"}},
             {TESSALY_WINDOW_BINARY, {"-h"}}, {TESSALY_BINARY, {"--headless", "--help"}},
             {TESSALY_BINARY, {"prog.bas", "--help"}}, {TESSALY_BINARY, {"--convert", "a", "b", "-h"}}}) {
        auto answer = run(same);
        EXPECT_EQ(answer.status, 0) << describe(same);
        EXPECT_EQ(answer.output, help) << describe(same);
        EXPECT_EQ(answer.errors, "") << describe(same);
    }
}

TEST(CommandLine, VersionComesFromTheProjectVersion)
{
    WithoutDisplay noDisplay;
    for (const char* program : {TESSALY_BINARY, TESSALY_WINDOW_BINARY}) {
        auto answer = run({program, {"--version"}});
        EXPECT_EQ(answer.status, 0) << program;
        EXPECT_EQ(answer.output, std::string(TESSALY_VERSION_LINE) + "\n") << program;
        EXPECT_EQ(answer.errors, "") << program;
    }
}

struct UsageCase {
    Invocation invocation;
    const char* fault; // what the one line on standard error says is wrong
};

// Every usage error is one line on standard error and status 2, and nothing is started.
TEST(CommandLine, UsageErrorsAreOneLineAndStatusTwo)
{
    const std::vector<UsageCase> cases = {
        {{TESSALY_BINARY, {"--bogus"}}, "unknown option --bogus"},
        {{TESSALY_BINARY, {"prog.bas", "-x"}}, "unknown option -x"},
        {{TESSALY_BINARY, {"a.bas", "b.bas"}}, "one FILE only, not a.bas and b.bas"},
        {{TESSALY_BINARY, {"a.bas", "--com"}}, "--com wants N=PATH"},
        {{TESSALY_BINARY, {"--run"}}, "--run wants a FILE"},
        {{TESSALY_WINDOW_BINARY, {"--bogus"}}, "unknown option --bogus"},
        {{TESSALY_WINDOW_BINARY, {"--headless"}}, "unknown option --headless"},
        {{TESSALY_BINARY, {"--headless", "--bogus", "prog.bas"}}, "unknown option --bogus"},
        {{TESSALY_BINARY, {"--headless", "--screenshot"}}, "unknown option, or one without its value: --screenshot"},
        {{TESSALY_BINARY, {"--headless", "a.bas", "b.bas"}}, "one FILE only, not a.bas and b.bas"},
        {{TESSALY_BINARY, {"--headless", "--negative"}}, "--negative goes with --print-screen"},
        {{TESSALY_BINARY, {"--headless", "--page-length", "75"}}, "--page-length goes with --print-listing"},
        {{TESSALY_BINARY, {"--headless", "--print-listing", "x.pdf", "--page-length", "60"}},
            "--page-length wants 50, 75 or 100, not 60"},
        {{TESSALY_BINARY, {"--list"}}, "--list wants one FILE"},
        {{TESSALY_BINARY, {"--list", "a", "b"}}, "--list wants one FILE"},
        {{TESSALY_BINARY, {"--list", "a", "--records"}}, "--list takes no --text or --records"},
        {{TESSALY_BINARY, {"--list", "a", "--bogus"}}, "unknown option --bogus"},
        {{TESSALY_BINARY, {"--convert", "a"}}, "--convert wants IN and OUT"},
        {{TESSALY_BINARY, {"--convert", "a", "b", "c"}}, "--convert wants IN and OUT"},
        {{TESSALY_BINARY, {"--convert", "a", "b", "--text", "--records"}}, "--text or --records, not both"},
        {{TESSALY_BINARY, {"--convert", "a", "b", "--list"}}, "--convert and --list do not go together"},
    };
    for (const auto& usage : cases) {
        auto answer = run(usage.invocation);
        EXPECT_EQ(answer.status, 2) << describe(usage.invocation);
        EXPECT_EQ(answer.errors, "tessaly: " + std::string(usage.fault) + "; tessaly --help lists the options\n")
            << describe(usage.invocation);
        EXPECT_EQ(answer.output, "") << describe(usage.invocation);
    }
}

// Without a display the window is not even started: one line that points to --headless, status 2,
// and no abort of Qt (which would end the process by a signal).
TEST(CommandLine, WithoutADisplayTheWindowSaysSoAndEndsWithStatusTwo)
{
    WithoutDisplay noDisplay;
    const std::string message = "tessaly: no display (DISPLAY and WAYLAND_DISPLAY are unset); use tessaly --headless "
                                "FILE to run without a window\n";
    for (const Invocation& window : std::vector<Invocation> {{TESSALY_BINARY, {}}, {TESSALY_BINARY, {"prog.bas"}},
             {TESSALY_BINARY, {"--run", "prog.bas", "--com", "1=/dev/null"}}, {TESSALY_WINDOW_BINARY, {}},
             {TESSALY_WINDOW_BINARY, {"prog.bas"}}}) {
        auto answer = run(window);
        EXPECT_FALSE(answer.timedOut) << describe(window);
        EXPECT_EQ(answer.status, 2) << describe(window);
        EXPECT_EQ(answer.errors, message) << describe(window);
        EXPECT_EQ(answer.output, "") << describe(window);
    }
}

} // namespace
} // namespace tessaly::test
