// Splitting the item list of PRINT and WRITE.
#include "expr/print_items.h"

#include "core/text_scan.h"

namespace tessaly::expr {

namespace {

// SPC( and TAB( are the string functions SPC$( and TAB$(; blanks before the "(" go.
std::string rewriteSpacing(std::string_view item)
{
    std::string out;
    size_t paren = 0;
    // Each walk starts outside quotes: at the start, or at the "(" after a spacing word.
    for (size_t pos = 0;;) {
        size_t word = core::findOutsideQuotesIf(item, pos, [&](size_t at) {
            if (!(item.compare(at, 3, "SPC") == 0 || item.compare(at, 3, "TAB") == 0) ||
                (at > 0 && core::isPrintItemNameChar(item[at - 1])))
                return false;
            paren = item.find_first_not_of(' ', at + 3);
            return paren != std::string_view::npos && item[paren] == '(';
        });
        if (word == std::string_view::npos) {
            out.append(item.substr(pos));
            return out;
        }
        out.append(item.substr(pos, word + 3 - pos));
        out += '$';
        pos = paren;
    }
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
