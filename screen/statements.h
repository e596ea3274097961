// Handlers of the text-screen statements: CLS, LOCATE, COLOR, CONSOLE, KEY and KEY LIST.
#pragma once

#include "core/outcome.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::screen {

using core::Failure;
using core::Flow;
using core::kDone;
using core::Outcome;

class TextScreen;

Outcome stmtCls(core::Interpreter&, int begin, int end);     // screen/stmt_cls.cpp
Outcome stmtLocate(core::Interpreter&, int begin, int end);  // screen/stmt_locate.cpp
Outcome stmtColor(core::Interpreter&, int begin, int end);   // screen/stmt_color.cpp
Outcome stmtConsole(core::Interpreter&, int begin, int end); // screen/stmt_console.cpp
Outcome stmtKey(core::Interpreter&, int begin, int end);     // screen/stmt_key.cpp
Outcome stmtKeyList(core::Interpreter&, int begin, int end);

// The arguments of a statement, each evaluated on its own; an omitted one is empty.
int evaluateStatementArguments(core::Interpreter& in, int begin, int end, std::vector<expr::Value>& values);
// An argument as a whole number (0.5 added, truncated), or `omitted` when it was left out.
[[nodiscard]] int argumentOr(const std::vector<expr::Value>& values, size_t k, int omitted);

Outcome stmtScreen(core::Interpreter&, int begin, int end);  // screen/stmt_graphics.cpp
Outcome stmtView(core::Interpreter&, int begin, int end);
Outcome stmtWindow(core::Interpreter&, int begin, int end);
Outcome stmtPset(core::Interpreter&, int begin, int end);
// screen/stmt_line.cpp
Outcome stmtLine(core::Interpreter&, int begin, int end);
Outcome stmtLineParen(core::Interpreter&, int begin, int end); // LINE( with no blank
// screen/stmt_screen_images.cpp
Outcome stmtRoll(core::Interpreter&, int begin, int end);
Outcome stmtCopy(core::Interpreter&, int begin, int end);
// The clipboard copies of the window's menu: rows 0..23 as text (a CR LF before each row unless
// the text already ends with one), and graphics page 0 as a picture (the clipboard is only emptied
// while no graphics are shown).
std::string textScreenForClipboard(const TextScreen& screen);
void copyTextScreenToClipboard(core::Interpreter&);
void copyGraphicsToClipboard(core::Interpreter&);
// screen/stmt_images.cpp: GET @(x1, y1)-(x2, y2), array and PUT @(x, y), array or KANJI(code)
Outcome stmtGetImage(core::Interpreter&, int begin, int end);
Outcome stmtPutImage(core::Interpreter&, int begin, int end);
// screen/stmt_draw.cpp
Outcome stmtDraw(core::Interpreter&, int begin, int end);
// screen/stmt_paint.cpp
Outcome stmtPaint(core::Interpreter&, int begin, int end);
// screen/stmt_circle.cpp
Outcome stmtCircle(core::Interpreter&, int begin, int end);
// A line style's 16 bits, from bit 15 down, as lengths of drawn and skipped runs (a drawn run
// first, 0 long when bit 15 is clear; a skipped run of 0 closes a pattern that ends drawn).
std::vector<int> lineStyleToDashes(uint32_t style);
Outcome stmtPreset(core::Interpreter&, int begin, int end);
Outcome stmtPoint(core::Interpreter&, int begin, int end);

enum class GraphicsFunction : uint8_t { Point, Map, View, Window };
// POINT, MAP, VIEW and WINDOW as functions.
int graphicsFunction(core::Interpreter&, GraphicsFunction function, const std::vector<expr::Value>& args,
    bool hasParentheses, expr::Value& result);

// CLS n with n 1 (text), 2 (graphics) or 3 (both).
void clearScreen(core::Interpreter& in, int n);

} // namespace tessaly::screen
