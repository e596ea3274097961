// The one help text of tessaly and tessaly-window: --help prints it, and the manual page tessaly.1
// is made from it when the project is built. It is written in sections.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tessaly::app {

// What tessaly is, in one line (the manual page's NAME line).
inline constexpr std::string_view kSummary = "an interpreter for a line-numbered BASIC of the Japanese personal computers";

struct HelpSection {
    std::string_view title; // the heading ("Exit status"); empty for the synopsis
    std::string_view body;  // whole lines, each ending in a line feed
};

// The synopsis first, then the window, the headless runner, program files and exit statuses.
std::span<const HelpSection> HelpSections();

// "tessaly" and the version of this build ("tessaly 0.1").
std::string VersionLine();

// What --help prints: the version line and the summary, then every section under its heading.
std::string HelpText();

// When an argument is --help, -h or --version: prints the help text or the version line on
// standard output and returns true (the program then ends with status 0).
bool AnswerHelpOrVersion(int argc, char** argv);

// The one line on standard error for a usage error ("tessaly: unknown option --x; ...").
std::string UsageErrorLine(std::string_view fault);

} // namespace tessaly::app
