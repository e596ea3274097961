// Splitting the item list of PRINT and WRITE.
#include "expr/print_items.h"

#include "core/text_scan.h"

namespace tessaly::expr {

namespace {

bool isNameChar(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == '$';
}

// SPC( and TAB( are the string functions SPC$( and TAB$(; blanks before the "(" go.
std::string rewriteSpacing(std::string_view item)
{
    std::string out;
    bool quoted = false;
    for (size_t pos = 0; pos < item.size(); ++pos) {
        char c = item[pos];
        if (c == '"')
            quoted = !quoted;
        if (!quoted && (item.compare(pos, 3, "SPC") == 0 || item.compare(pos, 3, "TAB") == 0) &&
            (pos == 0 || !isNameChar(item[pos - 1]))) {
            size_t after = pos + 3;
            while (after < item.size() && item[after] == ' ')
                ++after;
            if (after < item.size() && item[after] == '(') {
                out.append(item.substr(pos, 3));
                out += '$';
                pos = after - 1;
                continue;
            }
        }
        out += c;
    }
    return out;
}

} // namespace

bool splitPrintItems(std::string_view arguments, std::vector<PrintItem>& items)
{
    items.clear();
    // The list ends at the end of the statement (a colon, a comment or the line end) at any depth.
    int depth = 0;
    size_t start = 0;
    for (;;) {
        size_t pos = core::findAtTopLevel(arguments, start, [](char c, int level) {
            return (level == 0 && (c == ';' || c == ',')) || c == ':' || c == '\'' || c == '\r' || c == '\n';
        }, &depth);
        char c = pos == std::string_view::npos ? '\0' : arguments[pos];
        if (c != ';' && c != ',') {
            items.push_back({rewriteSpacing(arguments.substr(start, pos == std::string_view::npos ? pos : pos - start)), 0, start});
            return depth == 0;
        }
        items.push_back({rewriteSpacing(arguments.substr(start, pos - start)), c, start});
        start = pos + 1;
    }
}

} // namespace tessaly::expr
