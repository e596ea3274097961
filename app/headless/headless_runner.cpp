// The headless runner: options, the stream of the text screen to standard output, typing standard
// input lines, and driving the idle loop until each run ends.
#include "app/headless/headless_runner.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "app/cli/help_text.h"
#include "app/headless/headless_timers.h"
#include "app/headless/interrupt_signal.h"
#include "app/headless/png_writer.h"
#include "app/headless/print_to_pdf.h"
#include "app/headless/printer_file.h"
#include "app/headless/read_whole_file.h"
#include "app/headless/scripted_keys.h"
#include "app/headless/standard_input.h"
#include "core/interpreter.h"
#include "core/shift_jis.h"
#include "io/file_table.h"
#include "io/program_file.h"
#include "io/simulated_ports.h"
#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "screen/keyboard.h"
#include "screen/renderer.h"
#include "screen/text_screen.h"

namespace tessaly::app {

namespace {

struct Options {
    bool screenDump = false;
    bool help = false;
    const char* file = nullptr;
    const char* screenshot = nullptr;
    const char* lprint = nullptr;
    const char* listingPdf = nullptr;
    const char* screenPdf = nullptr;
    bool negative = false;
    int pageLength = 50;
    std::vector<std::string> comPorts; // N=PATH
    std::vector<KeySource> keys;
    std::string fault; // what is wrong with the arguments
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
        else if (arg == "--com" && i + 1 < argc)
            options.comPorts.emplace_back(argv[++i]);
        else if ((arg == "--keys" || arg == "--keys-file") && i + 1 < argc)
            options.keys.push_back({argv[++i], arg == "--keys-file"});
        else if (arg == "--lprint" && i + 1 < argc)
            options.lprint = argv[++i];
        else if (arg == "--print-listing" && i + 1 < argc)
            options.listingPdf = argv[++i];
        else if (arg == "--print-screen" && i + 1 < argc)
            options.screenPdf = argv[++i];
        else if (arg == "--negative")
            options.negative = true;
        else if (arg == "--page-length" && i + 1 < argc) {
            std::string length = argv[++i];
            if (length != "50" && length != "75" && length != "100") {
                options.fault = "--page-length wants 50, 75 or 100, not " + length;
                return false;
            }
            options.pageLength = std::stoi(length);
        }
        else if (arg == "--help" || arg == "-h")
            options.help = true;
        else if (arg.starts_with("-") && arg != "-") {
            options.fault = (i + 1 == argc ? "unknown option, or one without its value: " : "unknown option ") + arg;
            return false;
        } else if (options.file == nullptr)
            options.file = argv[i];
        else {
            options.fault = "one FILE only, not " + std::string(options.file) + " and " + arg;
            return false;
        }
    }
    // --negative and --page-length say how to print; alone they are a mistake.
    if (options.negative && options.screenPdf == nullptr)
        options.fault = "--negative goes with --print-screen";
    else if (options.pageLength != 50 && options.listingPdf == nullptr)
        options.fault = "--page-length goes with --print-listing";
    return options.fault.empty();
}

class HeadlessHost final : public core::Host {
public:
    HeadlessHost(StandardInput& input, PrinterFile& printer, ScriptedKeys& keys)
        : m_input(input)
        , m_printer(printer)
        , m_keys(keys)
    {
    }
    void attach(core::Interpreter* interpreter) { m_interpreter = interpreter; }
    [[nodiscard]] bool inputExhausted() const { return m_exhausted; }
    HeadlessTimers& timers() { return m_timers; }

    void startTimer(core::TimerId id, int periodMs) override { m_timers.start(id, periodMs); }
    void stopTimer(core::TimerId id) override { m_timers.stop(id); }
    bool hasPrinter() override { return m_printer.isOpen(); }
    core::PrinterWrite printerWrite(std::string_view bytes) override { return m_printer.write(bytes); }

    // Keys for INKEY$ and INPUT$ come from the key script, then from standard input, one each time
    // the program reads. The wait for a key ends when a timer is due or Ctrl+C comes: the program
    // then reads no key this time, and the timer or the break is dealt with before its next statement.
    void keyboardRead() override
    {
        if (m_interpreter == nullptr || m_keys.typeForProgram(*m_interpreter))
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
    // A wait for a key ends when a timer is due, and soon when an ON COM trap is on, so that bytes
    // arriving at a serial port are seen while the program reads the keyboard.
    Deadline keyWaitEnd() const
    {
        Deadline due = m_timers.nextDue();
        if (m_interpreter != nullptr && m_interpreter->pollsDevices()) {
            auto soon = Clock::now() + std::chrono::milliseconds(5);
            if (!due || soon < *due)
                due = soon;
        }
        return due;
    }

    bool fetchCharacter()
    {
        char first = 0;
        for (;;) {
            auto status = m_input.readByte(first, keyWaitEnd());
            if (status == StandardInput::Status::Ended)
                m_exhausted = true;
            if (status != StandardInput::Status::Ready)
                return false;
            if (first != '\r')
                break;
        }
        if (first == '\n') {
            m_pending = "\r";
            return true;
        }
        std::string utf8(1, first);
        auto lead = static_cast<unsigned char>(first);
        int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        for (int k = 0; k < more; ++k) {
            char next = 0;
            if (m_input.readByte(next, std::nullopt) != StandardInput::Status::Ready)
                break;
            utf8 += next;
        }
        m_pending = core::Utf8ToShiftJis(utf8);
        return !m_pending.empty();
    }

    StandardInput& m_input;
    PrinterFile& m_printer;
    ScriptedKeys& m_keys;
    HeadlessTimers m_timers;
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
        // Text that comes while a typed line is still open on the stream stands on the screen's
        // next row (the message of a line refused for its length).
        if (m_echoOpen)
            echoRowBreak();
        std::string utf8 = core::ShiftJisToUtf8(bytes);
        m_shownRow += utf8;
        if (m_enabled)
            write(utf8);
    }
    void rowAdvanced() override
    {
        m_echoOpen = false;
        m_shownRow.clear();
        if (m_suppressRowAdvance) {
            m_suppressRowAdvance = false;
            return;
        }
        if (m_enabled)
            write("\n");
    }
    void echo(std::string_view utf8)
    {
        if (utf8.empty())
            return;
        m_echoOpen = true;
        m_shownRow += utf8;
        if (m_enabled)
            write(utf8);
    }
    // Typing went on at the start of the next row.
    void echoRowBreak()
    {
        m_echoOpen = false;
        m_shownRow.clear();
        if (m_enabled)
            write("\n");
    }
    // The terminal already moved on when the user pressed Enter.
    void suppressNextRowAdvance() { m_suppressRowAdvance = true; }
    void flush() { std::fflush(stdout); }
    // What the stream shows of its last row so far (a prompt, AUTO's line number), as UTF-8.
    [[nodiscard]] const std::string& shownRow() const { return m_shownRow; }

private:
    static void write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

    bool m_enabled;
    bool m_suppressRowAdvance = false;
    bool m_echoOpen = false;
    std::string m_shownRow;
};

// What the runner works with while it feeds the interpreter.
struct Runner {
    core::Interpreter& interpreter;
    HeadlessHost& host;
    StreamWriter& stream;
    StandardInput& input;
    ScriptedKeys& keys;
    bool terminal; // standard input is a terminal, which shows what is typed by itself
    unsigned steps = 0; // steps run, counted across the runs of driveUntilIdle
};

void driveUntilIdle(Runner& r)
{
    // What a long run prints reaches standard output as it goes, at least every few tens of
    // milliseconds, not only when the run ends (a serial terminal, a progress report).
    // The clock is read every few steps only: a step is short, and reading it is not free.
    constexpr auto kFlushEvery = std::chrono::milliseconds(50);
    constexpr unsigned kStepsBetweenClockReads = 16;
    auto lastFlush = Clock::now();
    while (r.interpreter.isRunning()) {
        // Counted across calls: a program that waits for keys comes back here every few steps.
        bool lookAtClock = ++r.steps % kStepsBetweenClockReads == 1;
        if (lookAtClock) {
            if (auto now = Clock::now(); now - lastFlush >= kFlushEvery) {
                r.stream.flush();
                lastFlush = now;
            }
        }
        // INPUT$ waiting for keys that standard input will never bring ends as BREAK would.
        if (takeInterrupt() || (r.host.inputExhausted() && r.interpreter.keyboard().keyCapture != 0)) {
            r.interpreter.breakProgram();
            continue;
        }
        // Timers come between two statements, as the window's timer messages do (looked at every
        // few statements, as the window looks between two turns of its event loop).
        if (lookAtClock)
            r.host.timers().deliverDue(r.interpreter);
        r.interpreter.idle();
        r.keys.typeHeld(r.interpreter);
        // A serial port has not brought or taken enough: look again in a moment, not at once.
        if (r.interpreter.isWaitingForDevice())
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

// Control bytes that PRINT stored in a row are shown as their control pictures (U+2400 + byte), so
// that a row stays one line of the dump.
std::string controlPictures(const std::string& utf8)
{
    std::string shown;
    for (char c : utf8) {
        auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20)
            shown += {'\xE2', '\x90', static_cast<char>(0x80 + byte)};
        else
            shown += c;
    }
    return shown;
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
        rows[r] = controlPictures(core::ShiftJisToUtf8(text));
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

enum class LineWait { Line, Ended, Event };

// Waits, asleep, for the next line of standard input. A timer that comes due meanwhile is
// delivered, and Ctrl+C acts as the window's break keys: BREAK while a program or AUTO is under
// way (an INPUT waiting for its line included), nothing at the direct-mode prompt. Event: one of
// these happened and the caller looks again at what the interpreter waits for.
LineWait nextLine(Runner& r, std::string& line)
{
    r.stream.flush();
    switch (r.input.readLine(line, r.host.timers().nextDue())) {
    case StandardInput::Status::Ready:
        return LineWait::Line;
    case StandardInput::Status::Ended:
        return LineWait::Ended;
    case StandardInput::Status::TimedOut:
        r.host.timers().deliverDue(r.interpreter);
        break;
    case StandardInput::Status::Interrupted:
        takeInterrupt();
        if (r.interpreter.isBusy() || r.interpreter.run().autoLine > 0)
            r.interpreter.breakProgram();
        break;
    }
    driveUntilIdle(r);
    r.stream.flush();
    return LineWait::Event;
}

// Types the bytes one character at a time. The typed keys are not part of the screen's stream:
// unless the terminal shows them already, an echo stands for them, broken where the typing moved
// on to the next row, so that a long line appears in rows of 80 columns as LIST shows it (a
// double-byte character across the row end stays whole at the end of the first row).
void typeEchoed(Runner& r, std::string_view bytes)
{
    auto& screen = r.interpreter.screen();
    for (size_t at = 0; at < bytes.size();) {
        size_t length = core::IsLeadByte(static_cast<uint8_t>(bytes[at])) && at + 1 < bytes.size() ? 2 : 1;
        if (!r.terminal)
            r.stream.echo(core::ShiftJisToUtf8(bytes.substr(at, length)));
        bool wrapped = false;
        for (size_t k = 0; k < length; ++k) {
            int column = screen.cursorColumn();
            r.interpreter.onChar(static_cast<unsigned char>(bytes[at + k]));
            wrapped = wrapped || (column >= screen::kColumns - 1 && screen.cursorColumn() == 0);
        }
        if (wrapped && !r.terminal)
            r.stream.echoRowBreak();
        at += length;
    }
}

// Types a line of standard input and Enter, then runs until the interpreter is idle again.
void enterInputLine(Runner& r, const std::string& line)
{
    if (r.terminal)
        r.stream.suppressNextRowAdvance();
    typeEchoed(r, core::Utf8ToShiftJis(line));
    r.interpreter.onChar(screen::vk::kEnter);
    driveUntilIdle(r);
    r.stream.flush();
}

// Before Enter hands over a line of the screen: the line is echoed as the screen holds it, less
// what the stream already shows of its row (an INPUT's prompt, AUTO's number); a line that does
// not begin with that starts on a row of its own.
void echoEnteredLine(Runner& r)
{
    auto rows = rowsEnterTakes(r.interpreter);
    for (size_t k = 0; k < rows.size(); ++k) {
        std::string text = core::ShiftJisToUtf8(rows[k]);
        if (k > 0) {
            r.stream.echoRowBreak();
        } else if (const std::string& shown = r.stream.shownRow(); !shown.empty()) {
            if (text.starts_with(shown))
                text.erase(0, shown.size());
            else
                r.stream.echoRowBreak();
        }
        r.stream.echo(text);
    }
}

// The screen editor waits (the prompt, or an INPUT's line): the key script types its next key and
// the interpreter runs until it is idle again. A line that Enter hands over is echoed as the screen
// holds it. False when the script is used up.
bool typeScriptKey(Runner& r)
{
    std::optional<KeyStroke> stroke = r.keys.take();
    if (!stroke)
        return false;
    if (*stroke == KeyStroke {StrokeKind::Key, screen::vk::kEnter})
        echoEnteredLine(r);
    ScriptedKeys::type(r.interpreter, *stroke);
    driveUntilIdle(r);
    r.stream.flush();
    return true;
}

// While a program waits for a line, the key script and then standard input answer it; at the end
// of both the run is broken off.
void answerInput(Runner& r)
{
    std::string line;
    while (r.interpreter.isWaitingForInput()) {
        if (typeScriptKey(r))
            continue;
        switch (nextLine(r, line)) {
        case LineWait::Line:
            enterInputLine(r, line);
            break;
        case LineWait::Ended:
            r.interpreter.breakProgram();
            driveUntilIdle(r);
            return;
        case LineWait::Event:
            break;
        }
    }
}

int runFile(Runner& r, const char* path)
{
    std::string bytes;
    if (!ReadWholeFile(path, bytes, io::kMaxProgramFileBytes)) {
        std::fprintf(stderr, "tessaly: cannot read %s\n", path);
        return 2;
    }
    // LOAD reads no more of a program file than this; a longer file is refused, not run cut.
    if (bytes.size() > io::kMaxProgramFileBytes) {
        std::fprintf(stderr, "tessaly: cannot load %s: longer than %zu bytes\n", path, io::kMaxProgramFileBytes);
        return 2;
    }
    io::ProgramFile::Read(bytes, r.interpreter.program());
    r.interpreter.runProgram();
    driveUntilIdle(r);
    answerInput(r);
    return 0;
}

void runInput(Runner& r)
{
    std::string line;
    for (;;) {
        if (typeScriptKey(r))
            continue;
        LineWait got = nextLine(r, line);
        if (got == LineWait::Ended)
            break;
        if (got == LineWait::Line)
            enterInputLine(r, line);
    }
    if (r.interpreter.isWaitingForInput()) {
        r.interpreter.breakProgram();
        driveUntilIdle(r);
    }
}

} // namespace

int runHeadless(int argc, char** argv)
{
    Options options;
    if (!parseOptions(argc, argv, options)) {
        std::fputs(UsageErrorLine(options.fault).c_str(), stderr);
        return 2;
    }
    if (options.help) {
        std::fputs(HelpText().c_str(), stdout);
        return 0;
    }
    ScriptedKeys keys;
    if (std::string error; !keys.load(options.keys, error)) {
        std::fprintf(stderr, "tessaly: %s\n", error.c_str());
        return 2;
    }
    installInterruptHandler();

    PrinterFile printer;
    if (options.lprint != nullptr && !printer.open(options.lprint)) {
        std::fprintf(stderr, "tessaly: cannot write %s\n", options.lprint);
        return 2;
    }
    StandardInput input;
    HeadlessHost host(input, printer, keys);
    core::Interpreter interpreter(host);
    host.attach(&interpreter);
    for (const auto& option : options.comPorts) {
        if (!interpreter.files().comPorts().setFromOption(option)) {
            std::fprintf(stderr, "tessaly: --com wants N=PATH with N from 1 to 99, not %s\n", option.c_str());
            return 2;
        }
    }
    // The screen is drawn as the window would show it; a screenshot needs the font's glyphs, while
    // without one the screen is drawn without characters. Loading only looks that the file is there:
    // its glyphs are read when the first character is drawn.
    std::string fontError;
    std::optional<screen::Font> font = screen::Font::load(screen::kUnifontJapanesePath, fontError);
    bool drawsText = options.screenshot != nullptr || options.listingPdf != nullptr || options.screenPdf != nullptr;
    if (!font && drawsText) {
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
    Runner runner {interpreter, host, stream, input, keys, isatty(STDIN_FILENO) != 0};

    if (options.file != nullptr) {
        if (int status = runFile(runner, options.file); status != 0)
            return status;
    } else {
        runInput(runner);
    }
    interpreter.screen().setListener(nullptr);
    if (options.screenDump)
        dumpScreen(interpreter);
    std::string error;
    if ((options.screenshot != nullptr && !writePng(renderer->composite(), options.screenshot, error))
        || (options.listingPdf != nullptr
            && !printListingToPdf(interpreter, *renderer, options.pageLength, options.listingPdf, error))
        || (options.screenPdf != nullptr
            && !printScreenToPdf(interpreter, *renderer, options.negative, options.screenPdf, error))) {
        std::fprintf(stderr, "tessaly: %s\n", error.c_str());
        return 2;
    }
    interpreter.setRenderer(nullptr);
    stream.flush();
    return exitStatusOf(interpreter);
}

} // namespace tessaly::app
