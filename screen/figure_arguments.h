// The pieces of the figure statements (LINE, CIRCLE, PAINT, PSET ...): a point written
// [STEP](x, y), its device position, and the comma-separated arguments after it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "expr/values.h"
#include "screen/graphics.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::screen {

struct FigurePoint {
    bool step = false;
    double x = 0, y = 0;
};

// Reads [STEP](x, y) at pos, after blanks; pos moves past the ")". found is false (and nothing
// raised) when neither STEP nor "(" stands there. Anything but two numbers in the parentheses is
// "Syntax error in ". Returns 0 or kFailed.
int readFigurePoint(core::Interpreter& in, std::string_view text, size_t& pos, FigurePoint& point, bool& found);

// How a figure statement rounds its point when no view is set: PSET, LINE, CIRCLE and their kin
// half away from zero, PAINT by adding one half and truncating.
enum class PointRounding { HalfAwayFromZero, AddHalfTruncate };

// The device position: mapped through VIEW and WINDOW while a view is set, else rounded; a STEP
// point counts from the last point. The last point itself is left to the caller.
void toDevicePoint(const GraphicScreen& g, const FigurePoint& point, int& px, int& py,
    PointRounding rounding = PointRounding::HalfAwayFromZero);

// The texts of the arguments after pos, each trimmed: nothing, or a comma and the comma-separated
// arguments. false when anything else follows.
bool argumentsAfter(std::string_view text, size_t pos, std::vector<std::string>& fields);

// A figure's point at pos and the arguments after it, as CIRCLE and PAINT take them: "Syntax error
// in " when there is no point or anything but a comma follows it. Returns 0 or kFailed.
int readPointAndArguments(core::Interpreter& in, std::string_view text, size_t pos, FigurePoint& point,
    std::vector<std::string>& fields);

// Argument k evaluated to a number; a string is "Type mismatch in ". An omitted argument (missing
// or blank), or one with nothing in it, leaves number as it is. Returns 0 or kFailed.
int numberArgument(core::Interpreter& in, const std::vector<std::string>& fields, size_t k, double& number);
// The same rounded half away from zero, where an argument with nothing in it counts as 0.
int roundedArgument(core::Interpreter& in, const std::vector<std::string>& fields, size_t k, int& number);

// The argument of LINE, CIRCLE and PAINT that is either a number (a style or a colour) or, as a
// string, the tile (or hatch) that a filled figure is painted with.
struct TileOrNumber {
    bool given = false; // the argument stood there, not blank, and was evaluated
    bool tile = false;  // it was a string: the graphics' tile text now holds it
    expr::Value value;  // otherwise its number (which may have nothing in it)
};
int readTileOrNumber(core::Interpreter& in, const std::vector<std::string>& fields, size_t k, TileOrNumber& argument);

} // namespace tessaly::screen
