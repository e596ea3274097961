// The item list of PRINT and WRITE: items and the separators between them, split at the top level
// of parentheses and outside string literals.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly::expr {

struct PrintItem {
    std::string text;     // the expression (SPC( and TAB( already written as SPC$( and TAB$()
    char separator = 0;   // ';', ',' or 0 after the last item
};

// Splits the argument text; false when its parentheses do not balance.
[[nodiscard]] bool splitPrintItems(std::string_view arguments, std::vector<PrintItem>& items);

} // namespace tessaly::expr
