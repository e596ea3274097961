// Points and argument lists of the figure statements.
#include "screen/figure_arguments.h"

#include "core/interpreter.h"
#include "core/text_scan.h"
#include "expr/evaluator.h"

namespace tessaly::screen {

int readFigurePoint(core::Interpreter& in, std::string_view text, size_t& pos, FigurePoint& point, bool& found)
{
    found = false;
    size_t at = text.find_first_not_of(' ', pos);
    if (at == std::string_view::npos)
        return 0;
    point.step = text.compare(at, 4, "STEP") == 0;
    if (point.step)
        at = text.find_first_not_of(' ', at + 4);
    if (at == std::string_view::npos || text[at] != '(')
        return point.step ? in.raise(core::ErrorId::SyntaxError) : 0;
    size_t close = core::matchingParen(text, at);
    if (close == std::string_view::npos)
        return in.raise(core::ErrorId::SyntaxError);
    std::vector<expr::Value> values;
    TRY_BASIC(expr::evaluateArguments(in, text.substr(at + 1, close - at - 1), values));
    if (values.size() != 2 || values[0].empty || values[1].empty || values[0].isString() || values[1].isString())
        return in.raise(core::ErrorId::SyntaxError);
    point.x = values[0].number;
    point.y = values[1].number;
    pos = close + 1;
    found = true;
    return 0;
}

void toDevicePoint(const GraphicScreen& g, const FigurePoint& point, int& px, int& py, PointRounding rounding)
{
    if (g.viewActive) {
        px = point.step ? g.toDeviceDistanceX(point.x) : g.toDeviceX(point.x);
        py = point.step ? g.toDeviceDistanceY(point.y) : g.toDeviceY(point.y);
    } else if (rounding == PointRounding::AddHalfTruncate) {
        px = devicePixelHalfUp(point.x);
        py = devicePixelHalfUp(point.y);
    } else {
        px = devicePixel(point.x);
        py = devicePixel(point.y);
    }
    if (point.step) {
        px += g.lastX;
        py += g.lastY;
    }
}

bool argumentsAfter(std::string_view text, size_t pos, std::vector<std::string>& fields)
{
    fields.clear();
    size_t comma = text.find_first_not_of(' ', pos);
    if (comma == std::string_view::npos)
        return true;
    if (text[comma] != ',')
        return false;
    core::splitAtTopLevel(text.substr(comma + 1), [](char c) { return c == ','; }, [&](std::string_view piece, char) {
        fields.push_back(core::trimBlanks(piece));
        return true;
    });
    return true;
}

int readPointAndArguments(core::Interpreter& in, std::string_view text, size_t pos, FigurePoint& point,
    std::vector<std::string>& fields)
{
    bool found = false;
    TRY_BASIC(readFigurePoint(in, text, pos, point, found));
    if (!found || !argumentsAfter(text, pos, fields))
        return in.raise(core::ErrorId::SyntaxError);
    return 0;
}

int numberArgument(core::Interpreter& in, const std::vector<std::string>& fields, size_t k, double& number)
{
    if (k >= fields.size() || fields[k].empty())
        return 0;
    expr::Value value;
    TRY_BASIC(expr::evaluateText(in, fields[k], value));
    if (value.isString())
        return in.raise(core::ErrorId::TypeMismatch);
    if (!value.empty)
        number = value.number;
    return 0;
}

int roundedArgument(core::Interpreter& in, const std::vector<std::string>& fields, size_t k, int& number)
{
    if (k >= fields.size() || fields[k].empty())
        return 0;
    double given = 0;
    TRY_BASIC(numberArgument(in, fields, k, given));
    number = roundHalfAway(given);
    return 0;
}

int readTileOrNumber(core::Interpreter& in, const std::vector<std::string>& fields, size_t k, TileOrNumber& argument)
{
    argument = {};
    if (k >= fields.size() || fields[k].empty())
        return 0;
    TRY_BASIC(expr::evaluateText(in, fields[k], argument.value));
    argument.given = true;
    if (argument.value.isString()) {
        in.graphics().tileText = argument.value.text;
        argument.tile = true;
    }
    return 0;
}

} // namespace tessaly::screen
