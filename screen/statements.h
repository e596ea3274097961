// What the screen's statements share with other files: argument readers, the clipboard copies,
// line styles and CLS. The handlers are reached through the dispatch table.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/outcome.h"
#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::screen {


class TextScreen;


// The arguments of a statement, each evaluated on its own; an omitted one is empty.
int evaluateStatementArguments(core::Interpreter& in, int begin, int end, std::vector<expr::Value>& values);
// PSET and PRESET once their point and arguments are known: the pixel in the colour given, else in
// defaultColour; the point becomes the last point.
struct FigurePoint;
core::Outcome plotPixel(core::Interpreter& in, const FigurePoint& point, int givenColour, int defaultColour);
// An argument as a whole number (0.5 added, truncated), or `omitted` when it was left out.
[[nodiscard]] int argumentOr(const std::vector<expr::Value>& values, size_t k, int omitted);
// A number given as such an argument: rounded half up, held within the int range.
[[nodiscard]] int wholeArgument(double number);

// screen/stmt_screen_images.cpp
// The clipboard copies of the window's menu: rows 0..23 as text (a CR LF before each row unless
// the text already ends with one), and graphics page 0 as a picture (the clipboard is only emptied
// while no graphics are shown).
std::string textScreenForClipboard(const TextScreen& screen);
void copyTextScreenToClipboard(core::Interpreter& interpreter);
void copyGraphicsToClipboard(core::Interpreter& interpreter);
// screen/stmt_line.cpp
// A line style's 16 bits, from bit 15 down, as lengths of drawn and skipped runs (a drawn run
// first, 0 long when bit 15 is clear; a skipped run of 0 closes a pattern that ends drawn).
std::vector<int> lineStyleToDashes(uint32_t style);

// CLS n with n 1 (text), 2 (graphics) or 3 (both).
void clearScreen(core::Interpreter& in, int n);

} // namespace tessaly::screen
