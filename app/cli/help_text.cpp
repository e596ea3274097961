// The help text of both programs. The runner's section tells its whole contract; the version
// comes from the project's version in CMakeLists.txt.
#include "app/cli/help_text.h"

#include <array>
#include <cstdio>

#ifndef TESSALY_VERSION
#error "TESSALY_VERSION (the project's version) must be defined by the build"
#endif

namespace tessaly::app {

namespace {

constexpr const char* kSynopsis =
    "Usage: tessaly [--run] [--com N=PATH]... [FILE]        the window\n"
    "       tessaly --headless [OPTION]... [FILE]            the headless runner, no window\n"
    "       tessaly --list FILE                              print a program file as UTF-8 text\n"
    "       tessaly --convert IN OUT [--text | --records]    write a program file in a format\n"
    "       tessaly --help | -h                              this text\n"
    "       tessaly --version                                the version\n";

constexpr const char* kWindow =
    "  FILE      a program file (plain text or line records), opened in the window; without it the\n"
    "            window starts with an empty program.\n"
    "  --run     run FILE as soon as it is open.\n"
    "  --com N=PATH\n"
    "            serial port N is the device PATH for this run (otherwise the device chosen in the\n"
    "            File menu's serial-port settings, or /dev/ttyS(N-1)).\n"
    "The window needs a display: DISPLAY or WAYLAND_DISPLAY must be set (or QT_QPA_PLATFORM name\n"
    "a platform). Without one tessaly says so on standard error and ends with status 2, opening\n"
    "no window; tessaly --headless FILE runs the program without a window. The window is a program\n"
    "of its own, tessaly-window (installed in libexec/tessaly), which tessaly starts with the same\n"
    "arguments.\n";

constexpr const char* kRunner =
    "Usage: tessaly --headless [--screen] [--screenshot PNG] [--com N=PATH]... [--lprint FILE]\n"
    "                          [--print-listing PDF [--page-length N]] [--print-screen PDF [--negative]]\n"
    "                          [--keys TEXT | --keys-file KEYS]... [FILE]\n"
    "\n"
    "Runs a BASIC program without a window.\n"
    "\n"
    "  FILE      a program file (plain text or line records); it is loaded and run as RUN runs it,\n"
    "            and the process exits when the run ends.\n"
    "  no FILE   each line of standard input is typed on the screen followed by Enter: a numbered\n"
    "            line is stored, any other line is a direct command and runs to its end before the\n"
    "            next line is read. The process exits at the end of the input.\n"
    "  --screen  instead of the stream, print at exit the final 25 text rows, trailing blanks\n"
    "            removed, without the empty rows after the last non-empty one; control bytes\n"
    "            stored in a row are shown as the control pictures U+2400..U+241F.\n"
    "  --com N=PATH\n"
    "            serial port N (COMN: in OPEN, SAVE and LOAD) is the device PATH, for example\n"
    "            --com 1=/dev/ttyUSB0 or a pseudo-terminal; without it port N is /dev/ttyS(N-1).\n"
    "            The option may be given for several ports.\n"
    "  --screenshot PNG\n"
    "            write the 640 x 400 screen as it stands when the run ends to the PNG file\n"
    "            (the screen font comes from the Debian package unifont).\n"
    "  --lprint FILE\n"
    "            the printer: what LPRINT, LPRINT USING, LLIST, SAVE \"LPT1:\" and printer ports\n"
    "            (OPEN \"LPT1:\" FOR OUTPUT) print is written to FILE as it comes, unchanged (Shift-JIS,\n"
    "            CR LF line ends). Without it there is no printer: printing says \"File not open \" and\n"
    "            opening a printer port \"File can not open in \".\n"
    "  --print-listing PDF\n"
    "            when the run ends, print the program listing to the PDF file as the window's Print\n"
    "            does: A4 pages of N rows (--page-length 50, 75 or 100; 50 unless given), at most 120\n"
    "            bytes a row, each page numbered. To print a listing without running it, give the\n"
    "            program on standard input instead of as FILE (its lines are stored, none is run).\n"
    "  --print-screen PDF\n"
    "            when the run ends, print the screen to the PDF file, scaled to the page width;\n"
    "            --negative inverts every colour (white paper, black text for a black screen).\n"
    "\n"
    "Standard output receives every text written to the text screen (program output, OK,\n"
    "BREAK, OK, error messages, listings, prompts), converted from Shift-JIS to UTF-8, with a\n"
    "line feed each time the cursor moves on to a following row. Cursor positioning is not shown.\n"
    "Standard input also answers INPUT, LINE INPUT and RANDOMIZE: when a program waits for a line,\n"
    "the next line of standard input is typed followed by Enter (in FILE mode too). At the end of\n"
    "the input a waiting INPUT ends the run as BREAK would. When a program reads keys (INKEY$,\n"
    "INPUT$), the next bytes of standard input arrive one key at a time, each when the program next\n"
    "reads the keyboard (a line end is Enter); at the end of the input INKEY$ returns the empty\n"
    "string and a waiting INPUT$ ends the run as BREAK would. A wait for a key also ends when a\n"
    "timer is due (INKEY$ then returns the empty string). Text is UTF-8 both ways.\n"
    "When standard input is not a terminal, what is read from it is echoed as typed: a direct\n"
    "command before its output, an answer after its prompt, broken into rows where the screen\n"
    "breaks the typed line (80 columns, as LIST shows it).\n"
    "Ctrl+C performs BREAK, also while a program waits for a line (the run ends with BREAK, OK;\n"
    "without FILE the next line is then read); at the direct-mode prompt it does nothing, as ESC\n"
    "does in the window, except that it ends AUTO. ON TIME$ alarms and the other timers run on the real clock;\n"
    "while waiting for input the process sleeps until the input or the next timer.\n"
    "\n"
    "Exit status: 0 when the last run ended with OK or BREAK, OK; 1 when it ended with an error\n"
    "message; 2 for a usage error, or a FILE that cannot be read (missing, unreadable, a folder\n"
    "or a device): \"tessaly: cannot read FILE\" on standard error; a FILE longer than 65535\n"
    "bytes (LOAD would cut it): \"tessaly: cannot load FILE: longer than 65535 bytes\".\n"
    "\n"
    "Keys: --keys TEXT and --keys-file KEYS (a UTF-8 file) give keys to type, as the window's\n"
    "keyboard would, before standard input (several of these options are typed in their order).\n"
    "Each key is typed when the program next reads the keyboard (INKEY$, INPUT$) or the screen\n"
    "editor waits for one (the prompt without FILE, a waiting INPUT). Characters type themselves;\n"
    "a line end is Enter; escapes in braces, names in any case: {ENTER} {ESC} {STOP} (the STOP key:\n"
    "BREAK, or the ON STOP trap) {F1}..{F10} (the key trap, else the key's text) {UP} {DOWN}\n"
    "{LEFT} {RIGHT} {HOME} {INS} {DEL} {BS} {TAB}, {{} for a left brace (a right brace types\n"
    "itself), and {NOKEY}: a read that finds no key (INKEY$ gives the empty string). A count\n"
    "repeats one: {LEFT 3}, {NOKEY 100} (1 to 1000). ESC given to a program that reads keys breaks\n"
    "it before its next statement, as in the window; the read gets no key. A program gets keys\n"
    "only while it reads them: one that waits for a key trap reads INKEY$ in its loop. A line\n"
    "entered with Enter is echoed as the screen holds it. When the keys are used up, standard\n"
    "input goes on as above (give </dev/null to end there: INKEY$ then returns the empty string\n"
    "and a waiting INPUT or INPUT$ ends the run as BREAK would); with FILE, keys left when the run\n"
    "ends are not typed. Before anything runs, an unknown escape, a brace without its end or a\n"
    "wrong count gives \"tessaly: --keys: line L, column C: ...\" (\"--keys-file KEYS: ...\" for a\n"
    "file), a file that cannot be read \"tessaly: cannot read KEYS\", on standard error; status 2.\n";

constexpr const char* kProgramFiles =
    "  --list FILE\n"
    "            print the program in FILE to standard output as LIST shows it: UTF-8 text, each\n"
    "            program line ended by a line feed.\n"
    "  --convert IN OUT [--text | --records]\n"
    "            write the program in IN to the program file OUT: with --text (the default) as\n"
    "            plain Shift-JIS text with CR LF line ends, with --records as line records (the\n"
    "            format SAVE writes without ,A).\n"
    "FILE and IN may be line records, Shift-JIS text or UTF-8 text. A file whose first byte is 0xFE\n"
    "is line records. Any other file is text: UTF-8 when it has bytes above 0x7F and all of them\n"
    "form well-formed UTF-8 sequences, Shift-JIS otherwise. (Shift-JIS text whose only such bytes\n"
    "are half-width katakana that happen to pair into UTF-8 is taken as UTF-8; LOAD in the window\n"
    "reads that file as it is.) A UTF-8 byte order mark at the start is left out, and UTF-8 text is\n"
    "converted to Shift-JIS. A text line ends at CR LF, LF or CR; empty lines, lines of blanks or\n"
    "tabs and an end-of-file byte 0x1A on a line of its own are left out. The program is read as\n"
    "LOAD reads it: outside strings, comments and DATA, lower-case letters become upper case.\n"
    "The program is refused, with a one-line message on standard error naming the file and the\n"
    "line, exit status 2 and nothing written (an existing OUT stays as it was), when: the file\n"
    "cannot be read; a character has no Shift-JIS form; a line does not begin with its line number\n"
    "(1 to 65535, each above the one before it); a record is cut short or holds a CR or LF; the\n"
    "program is longer than 65535 bytes in IN or in OUT's format (LOAD reads no more).\n";

constexpr const char* kExitStatus =
    "  0  --help, --version, --list and --convert succeeded; the runner's last run ended with OK\n"
    "     or BREAK, OK; the window was closed.\n"
    "  1  the runner's last run ended with an error message; the window could not start (the\n"
    "     screen font is missing, or FILE cannot be read: said in a message box).\n"
    "  2  a usage error (an unknown option, a missing value: one line on standard error); no\n"
    "     display for the window, or no window program; a file that the runner, --list or\n"
    "     --convert cannot read, load or write.\n";

constexpr std::array kSections = {
    HelpSection {"", kSynopsis},
    HelpSection {"The window", kWindow},
    HelpSection {"The headless runner", kRunner},
    HelpSection {"Program files", kProgramFiles},
    HelpSection {"Exit status", kExitStatus},
};

} // namespace

std::span<const HelpSection> HelpSections() { return kSections; }

std::string VersionLine() { return std::string("tessaly ") + TESSALY_VERSION; }

std::string HelpText()
{
    std::string text = VersionLine() + ": " + std::string(kSummary) + ".\n";
    for (const HelpSection& section : kSections) {
        text += "\n";
        if (!section.title.empty()) {
            text += section.title;
            text += "\n";
        }
        text += section.body;
    }
    return text;
}

bool AnswerHelpOrVersion(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        std::string_view argument = argv[i];
        std::string answer;
        if (argument == "--help" || argument == "-h")
            answer = HelpText();
        else if (argument == "--version")
            answer = VersionLine() + "\n";
        else
            continue;
        std::fwrite(answer.data(), 1, answer.size(), stdout);
        std::fflush(stdout);
        return true;
    }
    return false;
}

std::string UsageErrorLine(std::string_view fault)
{
    return "tessaly: " + std::string(fault) + "; tessaly --help lists the options\n";
}

} // namespace tessaly::app
