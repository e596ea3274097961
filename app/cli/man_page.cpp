// Each section of the help text becomes a section of the page, its lines kept as they are (no
// filling), so that the page says word for word what --help says.
#include "app/cli/man_page.h"

#include <cctype>
#include <string_view>

#include "app/cli/help_text.h"

namespace tessaly::app {

namespace {

// Text as roff prints it: a backslash is the escape \e, a minus sign \- (options can be copied), and
// a line that starts with a control character (. or ') starts with \& instead.
std::string roffText(std::string_view text)
{
    std::string out;
    bool lineStart = true;
    for (char c : text) {
        if (lineStart && (c == '.' || c == '\''))
            out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
        lineStart = c == '\n';
    }
    return out;
}

std::string upperCase(std::string_view text)
{
    std::string out(text);
    for (char& c : out)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

std::string verbatim(std::string_view body) { return ".nf\n" + roffText(body) + ".fi\n"; }

} // namespace

std::string ManPage()
{
    std::string version = VersionLine();
    std::string page = ".TH TESSALY 1 \"\" \"" + version + "\" \"User Commands\"\n";
    page += ".SH NAME\ntessaly, tessaly\\-window \\- " + roffText(kSummary) + "\n";
    for (const HelpSection& section : HelpSections()) {
        page += ".SH " + (section.title.empty() ? std::string("SYNOPSIS") : "\"" + upperCase(section.title) + "\"");
        page += "\n" + verbatim(section.body);
    }
    return page;
}

} // namespace tessaly::app
