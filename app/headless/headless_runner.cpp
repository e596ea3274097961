// The headless runner: options, the stream of the text screen to standard output, typing standard
// input lines, and driving the idle loop until each run ends.
#include "app/headless/headless_runner.h"

#include <csignal>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

#include "app/headless/png_writer.h"
#include "core/interpreter.h"
#include "screen/renderer.h"
#include "io/program_file.h"
#include "io/shift_jis.h"
#include "io/simulated_ports.h"

namespace tessaly::app {

namespace {

// Set by the SIGINT handler; a signal handler can reach nothing else.
volatile std::sig_atomic_t g_interruptRequested = 0;

void onInterrupt(int) { g_interruptRequested = 1; }

constexpr const char* kUsage =
    "Usage: tessaly --headless [--screen] [--screenshot PNG] [FILE]\n"
    "\n"
    "Runs a BASIC program without a window.\n"
    "\n"
    "  FILE      a program file (plain text or line records); it is loaded and run as RUN runs it,\n"
    "            and the process exits when the run ends.\n"
    "  no FILE   each line of standard input is typed on the screen followed by Enter: a numbered\n"
    "            line is stored, any other line is a direct command and runs to its end before the\n"
    "            next line is read. The process exits at the end of the input.\n"
    "  --screen  instead of the stream, print at exit the final 25 text rows, trailing blanks\n"
    "            removed, without the empty rows after the last non-empty one.\n"
    "  --screenshot PNG\n"
    "            write the 640 x 400 screen as it stands when the run ends to the PNG file\n"
    "            (the screen font comes from the Debian package unifont).\n"
    "\n"
    "Standard output receives every text written to the text screen (program output, OK,\n"
    "BREAK, OK, error messages, listings, prompts), converted from Shift-JIS to UTF-8, with a\n"
    "line feed each time the cursor moves on to a following row. Cursor positioning is not shown.\n"
    "Standard input also answers INPUT, LINE INPUT and RANDOMIZE: when a program waits for a line,\n"
    "the next line of standard input is typed followed by Enter (in FILE mode too). At the end of\n"
    "the input a waiting INPUT ends the run as BREAK would. When a program reads keys (INKEY$,\n"
    "INPUT$), the next bytes of standard input arrive one key at a time, each when the program next\n"
    "reads the keyboard (a line end is Enter); at the end of the input INKEY$ returns the empty\n"
    "string and a waiting INPUT$ ends the run as BREAK would. Text is UTF-8 both ways.\n"
    "When standard input is not a terminal, what is read from it is echoed as typed: a direct\n"
    "command before its output, an answer after its prompt.\n"
    "Ctrl+C performs BREAK.\n"
    "\n"
    "Exit status: 0 when the last run ended with OK or BREAK, OK; 1 when it ended with an error\n"
    "message; 2 for a usage error or an unreadable file.\n";

struct Options {
    bool screenDump = false;
    bool help = false;
    const char* file = nullptr;
    const char* screenshot = nullptr;
};

bool parseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--headless")
            continue;
        if (arg == "--screen")
            options.screenDump = true;
        else if (arg == "--screenshot" && i + 1 < argc)
            options.screenshot = argv[++i];
        else if (arg == "--help" || arg == "-h")
            options.help = true;
        else if (arg.starts_with("-") && arg != "-")
            return false;
        else if (options.file == nullptr)
            options.file = argv[i];
        else
            return false;
    }
    return true;
}

class HeadlessHost final : public core::Host {
public:
    void attach(core::Interpreter* interpreter) { m_interpreter = interpreter; }
    [[nodiscard]] bool inputExhausted() const { return m_exhausted; }

    // Keys for INKEY$ and INPUT$ come from standard input, one byte each time the program reads.
    void keyboardRead() override
    {
        if (m_interpreter == nullptr)
            return;
        if (m_pending.empty() && !fetchCharacter())
            return;
        int key = static_cast<unsigned char>(m_pending.front());
        m_pending.erase(0, 1);
        m_interpreter->onChar(key);
    }

    core::LocalTime localTime() override
    {
        std::time_t now = std::time(nullptr);
        std::tm local {};
        localtime_r(&now, &local);
        return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
    }

    // INP and OUT reach a port space of their own: there is no machine behind the runner.
    bool portsAvailable() override { return true; }
    uint8_t portIn(uint16_t port) override { return m_ports.in(port); }
    void portOut(uint16_t port, uint8_t value) override { m_ports.out(port, value); }

private:
    // The next character of standard input as Shift-JIS bytes; a line end is the Enter key.
    bool fetchCharacter()
    {
        int first = std::cin.get();
        if (first == EOF) {
            m_exhausted = true;
            return false;
        }
        if (first == '\r')
            return fetchCharacter();
        if (first == '\n') {
            m_pending = "\r";
            return true;
        }
        std::string utf8(1, static_cast<char>(first));
        auto lead = static_cast<unsigned char>(first);
        int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        for (int k = 0; k < more; ++k) {
            int next = std::cin.get();
            if (next == EOF)
                break;
            utf8 += static_cast<char>(next);
        }
        m_pending = io::Utf8ToShiftJis(utf8);
        return !m_pending.empty();
    }

    core::Interpreter* m_interpreter = nullptr;
    std::string m_pending;
    bool m_exhausted = false;
    io::SimulatedPorts m_ports;
};

// The text screen's stream, as UTF-8 on standard output.
class StreamWriter final : public screen::TextListener {
public:
    explicit StreamWriter(bool enabled)
        : m_enabled(enabled)
    {
    }
    void textWritten(std::string_view bytes) override
    {
        m_suppressRowAdvance = false;
        if (m_enabled)
            write(io::ShiftJisToUtf8(bytes));
    }
    void rowAdvanced() override
    {
        if (m_suppressRowAdvance) {
            m_suppressRowAdvance = false;
            return;
        }
        if (m_enabled)
            write("\n");
    }
    void echo(std::string_view utf8)
    {
        if (m_enabled)
            write(utf8);
    }
    // The terminal already moved on when the user pressed Enter.
    void suppressNextRowAdvance() { m_suppressRowAdvance = true; }
    void flush() { std::fflush(stdout); }

private:
    static void write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

    bool m_enabled;
    bool m_suppressRowAdvance = false;
};

void driveUntilIdle(core::Interpreter& interpreter, const HeadlessHost& host)
{
    while (interpreter.isRunning()) {
        // INPUT$ waiting for keys that standard input will never bring ends as BREAK would.
        if (host.inputExhausted() && interpreter.keyboard().keyCapture != 0)
            g_interruptRequested = 1;
        if (g_interruptRequested) {
            g_interruptRequested = 0;
            interpreter.breakProgram();
            continue;
        }
        interpreter.idle();
    }
}

void dumpScreen(core::Interpreter& interpreter)
{
    auto& screen = interpreter.screen();
    int lastUsed = -1;
    std::string rows[screen::kRows];
    for (int r = 0; r < screen::kRows; ++r) {
        std::string text = screen.row(r);
        auto end = text.find_last_not_of(' ');
        text.erase(end == std::string::npos ? 0 : end + 1);
        if (!text.empty())
            lastUsed = r;
        rows[r] = io::ShiftJisToUtf8(text);
    }
    for (int r = 0; r <= lastUsed; ++r) {
        std::fwrite(rows[r].data(), 1, rows[r].size(), stdout);
        std::fputc('\n', stdout);
    }
}

int exitStatusOf(core::Interpreter& interpreter)
{
    return interpreter.run().lastOutcome == core::RunOutcome::Error ? 1 : 0;
}

// Reads one line of standard input; false at its end.
bool readInputLine(std::string& line)
{
    if (!std::getline(std::cin, line))
        return false;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

// Types a line of standard input and Enter, then runs until the interpreter is idle again.
void enterInputLine(core::Interpreter& interpreter, const HeadlessHost& host, StreamWriter& stream,
    const std::string& line, bool terminal)
{
    if (terminal)
        stream.suppressNextRowAdvance();
    else
        stream.echo(line);
    // The typed keys are not part of the stream: the echo above stands for them.
    interpreter.typeLine(io::Utf8ToShiftJis(line));
    driveUntilIdle(interpreter, host);
    stream.flush();
}

// While a program waits for a line, standard input answers it; at its end the run is broken off.
void answerInput(core::Interpreter& interpreter, const HeadlessHost& host, StreamWriter& stream, bool terminal)
{
    std::string line;
    while (interpreter.isWaitingForInput()) {
        stream.flush();
        if (!readInputLine(line)) {
            interpreter.breakProgram();
            driveUntilIdle(interpreter, host);
            return;
        }
        enterInputLine(interpreter, host, stream, line, terminal);
    }
}

int runFile(core::Interpreter& interpreter, const HeadlessHost& host, StreamWriter& stream, const char* path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "tessaly: cannot read %s\n", path);
        return 2;
    }
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (file.bad()) {
        std::fprintf(stderr, "tessaly: cannot read %s\n", path);
        return 2;
    }
    io::ProgramFile::Read(bytes, interpreter.program());
    interpreter.runProgram();
    driveUntilIdle(interpreter, host);
    answerInput(interpreter, host, stream, isatty(STDIN_FILENO) != 0);
    return 0;
}

void runInput(core::Interpreter& interpreter, const HeadlessHost& host, StreamWriter& stream)
{
    bool terminal = isatty(STDIN_FILENO) != 0;
    std::string line;
    while (readInputLine(line))
        enterInputLine(interpreter, host, stream, line, terminal);
    if (interpreter.isWaitingForInput()) {
        interpreter.breakProgram();
        driveUntilIdle(interpreter, host);
    }
}

} // namespace

int runHeadless(int argc, char** argv)
{
    Options options;
    if (!parseOptions(argc, argv, options)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    if (options.help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    struct sigaction action {};
    action.sa_handler = onInterrupt;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);

    HeadlessHost host;
    core::Interpreter interpreter(host);
    host.attach(&interpreter);
    // The screen is drawn as the window would show it; a screenshot needs the font's glyphs, while
    // without one the screen is drawn without characters.
    std::string fontError;
    std::optional<screen::Font> font = screen::Font::load(screen::kUnifontJapanesePath, fontError);
    if (!font && options.screenshot != nullptr) {
        std::fprintf(stderr, "tessaly: %s\n", fontError.c_str());
        return 2;
    }
    if (!font)
        font = screen::Font::parse("");
    auto renderer = std::make_unique<screen::Renderer>(*font, interpreter.colours(), interpreter.functionKeys(),
        interpreter.graphics());
    interpreter.setRenderer(renderer.get());
    StreamWriter stream(!options.screenDump);
    interpreter.screen().setListener(&stream);

    if (options.file != nullptr) {
        if (int status = runFile(interpreter, host, stream, options.file); status != 0)
            return status;
    } else {
        runInput(interpreter, host, stream);
    }
    interpreter.screen().setListener(nullptr);
    if (options.screenDump)
        dumpScreen(interpreter);
    if (options.screenshot != nullptr) {
        std::string error;
        if (!writePng(renderer->composite(), options.screenshot, error)) {
            std::fprintf(stderr, "tessaly: %s\n", error.c_str());
            return 2;
        }
    }
    interpreter.setRenderer(nullptr);
    stream.flush();
    return exitStatusOf(interpreter);
}

} // namespace tessaly::app
