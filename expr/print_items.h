// The item list of PRINT and WRITE: items and the separators between them, split at the top level
// of parentheses and outside string literals.
#pragma once

#include "core/outcome.h"
#include "expr/values.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

struct PrintItem {
    std::string text;     // the expression (SPC( and TAB( already written as SPC$( and TAB$()
    char separator = 0;   // ';', ',' or 0 after the last item
    size_t offset = 0;    // where the item starts in the argument text
};

enum class PrintTarget : uint8_t { Screen, Printer };

// Hands a finished line of PRINT or PRINT USING to the screen (through the output text) or to the
// printer (with a line end when the row is finished). Returns the statement code.
core::Outcome deliverPrintLine(core::Interpreter& in, std::string line, PrintTarget target);

// Builds the line of a PRINT or PRINT USING statement from its text begin..end; 0 or kFailed.
using PrintLineBuilder = int (*)(core::Interpreter& in, int begin, int end, std::string& line);
// The whole statement: the line built, then delivered to the target.
core::Outcome printBuiltLine(core::Interpreter& in, int begin, int end, PrintLineBuilder build, PrintTarget target);

// The text that the item list of PRINT, PRINT USING or WRITE at begin..end makes, for a file:
// zones count from the start of the text and the screen's row state is left alone. endsLine is
// false when the list ends with ";" or ",". Each returns 0 or kFailed.
int formatPrintText(core::Interpreter& in, int begin, int end, std::string& text, bool& endsLine);
int formatPrintUsingText(core::Interpreter& in, int begin, int end, std::string& text, bool& endsLine);
int formatWriteText(core::Interpreter& in, int begin, int end, std::string& text);

// The value of item k of a list (from its text, or compiled); 0 or kFailed.
using ItemEvaluator = std::function<int(size_t item, Value& value)>;
// The line of a PRINT from its items: values in order, "," to the next zone of 14 columns, ";" and
// "," at the end keep the row open (printNewline, the text carried over). 0 or kFailed.
int assemblePrintLine(core::Interpreter& in, const std::vector<PrintItem>& items, std::string& line,
    const ItemEvaluator& evaluate);

// Splits the argument text; false when its parentheses do not balance.
[[nodiscard]] bool splitPrintItems(std::string_view arguments, std::vector<PrintItem>& items);

} // namespace tessaly::expr
