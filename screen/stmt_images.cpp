// GET@ and PUT@: rectangles of the active page kept in numeric arrays, drawn back with a raster
// operation; PUT@ also draws a double-byte character given by its JIS code (KANJI).
//
// An array image, in the array's cells from its first element (or the element named): width w and
// height h (16 bits each, low byte first), then h rows from the bottom row of the rectangle up, each
// w + 1 pixels of blue, green, red, with no padding. Cells that begin with "BM" hold a bitmap file
// instead: w at byte 18, h at byte 22, the pixels from byte 54 in the same order.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "core/upper_case_pass.h"
#include "expr/arrays.h"
#include "expr/cell_bytes.h"
#include "expr/evaluator.h"
#include "expr/variables.h"
#include "screen/colours.h"
#include "screen/figure_arguments.h"
#include "screen/graphics.h"
#include "screen/renderer.h"
#include "screen/statements.h"

namespace tessaly::screen {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

enum class RasterOp : uint8_t { Xor, Pset, Preset, Or, And };

// A picture of width x height pixels, top row first.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;
    [[nodiscard]] Pixel at(int x, int y) const { return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)]; }
};

std::string_view statementText(core::Interpreter& in, int end)
{
    return in.buffer().view().substr(0, static_cast<size_t>(end));
}

// A point written [STEP](x, y), its coordinates truncated to whole pixels (a STEP point counts
// from `from`).
int readImagePoint(core::Interpreter& in, std::string_view text, size_t& pos, int fromX, int fromY, int& x, int& y)
{
    FigurePoint point;
    bool found = false;
    TRY_BASIC(readFigurePoint(in, text, pos, point, found));
    if (!found)
        return in.raise(ErrorId::SyntaxError);
    x = deviceCoordinate(point.x);
    y = deviceCoordinate(point.y);
    if (point.step) {
        x += fromX;
        y += fromY;
    }
    return 0;
}

// The array named in text (NAME, or NAME(subscripts) for an element to start at): its cells from
// there to its end. A string array is "Type mismatch in ".
int arrayCells(core::Interpreter& in, std::string_view text, expr::ArrayStore::CellRange& range)
{
    std::string reference = core::trimBlanks(text);
    size_t nameEnd = 0;
    while (nameEnd < reference.size() && core::isNameChar(reference[nameEnd]))
        ++nameEnd;
    if (nameEnd == 0 || !core::isLetter(reference[0]))
        return in.raise(ErrorId::SyntaxError);
    std::string name = core::upperCased(reference.substr(0, nameEnd));
    std::vector<int32_t> subscripts;
    std::string rest = core::trimBlanks(std::string_view(reference).substr(nameEnd));
    if (!rest.empty()) {
        if (rest.front() != '(' || core::matchingParen(rest, 0) != rest.size() - 1)
            return in.raise(ErrorId::SyntaxError);
        std::vector<expr::Value> args;
        TRY_BASIC(expr::evaluateArguments(in, std::string_view(rest).substr(1, rest.size() - 2), args));
        bool none = args.size() == 1 && args[0].empty;
        for (size_t k = 0; k < args.size() && !none; ++k) {
            if (args[k].isString())
                return in.raise(ErrorId::TypeMismatch);
            int32_t subscript = 0;
            if (!expr::toSubscript(args[k].number, subscript))
                return in.raise(ErrorId::SubscriptOutOfRange);
            subscripts.push_back(subscript);
        }
    }
    auto type = in.variables().typeOfName(name);
    if (type == expr::ValueType::String)
        return in.raise(ErrorId::TypeMismatch);
    switch (in.arrays().cellsFrom(name, type, subscripts, range)) {
    case expr::ArrayStatus::Ok: return 0;
    case expr::ArrayStatus::OutOfMemory: return in.raise(ErrorId::OutOfMemory);
    default: return in.raise(ErrorId::SubscriptOutOfRange);
    }
}

// The bytes an image of w x h takes after its header: h rows of w + 1 pixels of 3 bytes.
uint64_t pixelBytes(uint64_t w, uint64_t h) { return 3 * (w + 1) * h; }

// The picture held in an array's cells: (w + 1) x h pixels. A header that promises more pixels than
// the cells hold is "Illegal function call in ".
int pictureFromCells(core::Interpreter& in, const uint8_t* cells, size_t size, Picture& picture, int& w)
{
    bool bitmap = size >= 2 && cells[0] == 'B' && cells[1] == 'M';
    size_t header = bitmap ? 54 : 4;
    if (size < header)
        return in.raise(ErrorId::IllegalFunctionCall);
    uint64_t width = expr::readLittleEndian(cells + (bitmap ? 18 : 0), 2);
    uint64_t height = expr::readLittleEndian(cells + (bitmap ? 22 : 2), 2);
    if (header + pixelBytes(width, height) > size)
        return in.raise(ErrorId::IllegalFunctionCall);
    w = static_cast<int>(width);
    picture.width = w + 1;
    picture.height = static_cast<int>(height);
    picture.pixels.resize(static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height));
    const uint8_t* p = cells + header;
    for (int row = picture.height - 1; row >= 0; --row) {
        for (int x = 0; x < picture.width; ++x, p += 3)
            picture.pixels[static_cast<size_t>(row) * static_cast<size_t>(picture.width) + static_cast<size_t>(x)] =
                static_cast<Pixel>(p[0]) | static_cast<Pixel>(p[1]) << 8 | static_cast<Pixel>(p[2]) << 16;
    }
    return 0;
}

// The Shift-JIS code of a JIS X 0208 code (row in the high byte, cell in the low byte); a high byte
// below &H21 leaves the single-byte character of the low byte. Rows and cells outside &H21..&H7E
// name no character: false.
bool shiftJisOfJis(int32_t jis, uint16_t& sjis)
{
    if (jis < 0 || jis > 0xFFFF)
        return false;
    int row = jis >> 8;
    int cell = jis & 0xFF;
    if (row < 0x21) {
        sjis = static_cast<uint16_t>(cell);
        return true;
    }
    if (row > 0x7E || cell < 0x21 || cell > 0x7E)
        return false;
    int trail = (row & 1) != 0 ? cell + 0x1F : cell + 0x7D;
    if (trail >= 0x7F)
        ++trail;
    int lead = (row - 0x21) / 2 + 0x81;
    if (lead > 0x9F)
        lead += 0x40;
    sjis = static_cast<uint16_t>(lead << 8 | trail);
    return true;
}

// The character cell of KANJI(code): 16 x 16 (8 x 16 for a single-byte character), the glyph in fg
// over bg.
int kanjiPicture(core::Interpreter& in, std::string_view argument, const std::vector<std::string>& fields,
    Picture& picture)
{
    double code = 0;
    TRY_BASIC(expr::evaluateNumber(in, argument, code));
    uint16_t sjis = 0;
    double whole = std::trunc(code);
    if (!(whole >= 0 && whole <= 0xFFFF) || !shiftJisOfJis(static_cast<int32_t>(whole), sjis))
        return in.raise(ErrorId::IllegalFunctionCall);
    auto& colours = in.colours();
    int colourNumbers[2] = {colours.foregroundColour, colours.backgroundInEffect};
    for (size_t k = 0; k < 2; ++k) {
        if (fields.size() <= k + 1 || fields[k + 1].empty())
            continue;
        expr::Value given;
        TRY_BASIC(expr::evaluateText(in, fields[k + 1], given));
        if (given.isString())
            return in.raise(ErrorId::TypeMismatch);
        int number = roundHalfAway(given.number);
        if (colours.isValid(number))
            colourNumbers[k] = number;
    }
    Pixel fg = colours.palette[static_cast<size_t>(std::clamp(colourNumbers[0], 0, 15))];
    Pixel bg = colours.palette[static_cast<size_t>(std::clamp(colourNumbers[1], 0, 15))];
    bool wide = sjis > 0xFF;
    picture.width = wide ? 16 : 8;
    picture.height = 16;
    Plane cell(picture.width, picture.height, bg);
    if (auto* renderer = in.renderer()) {
        std::string bytes;
        if (wide)
            bytes += static_cast<char>(sjis >> 8);
        bytes += static_cast<char>(sjis & 0xFF);
        renderer->font().drawText(cell, 0, 0, bytes, fg);
    }
    picture.pixels.assign(cell.row(0), cell.row(0) + picture.width * picture.height);
    return 0;
}

// The raster operation named by the mode argument (the words looked for in this order); an
// argument that names none of them is "Syntax error in ".
int rasterOp(core::Interpreter& in, const std::vector<std::string>& fields, RasterOp& op)
{
    op = RasterOp::Xor;
    if (fields.empty() || fields[0].empty())
        return 0;
    std::string mode = core::upperCased(fields[0]);
    static constexpr std::pair<std::string_view, RasterOp> kWords[] = {
        {"XOR", RasterOp::Xor}, {"PSET", RasterOp::Pset}, {"PRESET", RasterOp::Preset}, {"OR", RasterOp::Or},
        {"AND", RasterOp::And}};
    for (const auto& [word, found] : kWords) {
        if (mode.find(word) != std::string::npos) {
            op = found;
            return 0;
        }
    }
    return in.raise(ErrorId::SyntaxError);
}

Pixel combine(RasterOp op, Pixel page, Pixel image)
{
    switch (op) {
    case RasterOp::Pset: return image;
    case RasterOp::Preset: return ~image & 0xFFFFFF;
    case RasterOp::Or: return page | image;
    case RasterOp::And: return page & image;
    default: return page ^ image;
    }
}

// The w x h rectangle of the picture onto the active page at (x, y), inside the page's clip (the
// VIEW rectangle while a view is set).
void transfer(core::Interpreter& in, const Picture& picture, int w, int h, int x, int y, RasterOp op)
{
    auto* renderer = in.renderer();
    if (renderer == nullptr)
        return;
    Plane& page = renderer->activePage();
    Rect target = Rect {x, y, x + w, y + h}.intersect(page.clip()).intersect(page.bounds());
    if (target.empty())
        return;
    for (int py = target.top; py < target.bottom; ++py) {
        Pixel* line = page.row(py);
        for (int px = target.left; px < target.right; ++px)
            line[px] = combine(op, line[px], picture.at(px - x, py - y));
    }
    renderer->composeRect(target.left, target.top, target.right - 1, target.bottom - 1);
}

// The text after the keyword, with its "@" (which may be left out) skipped.
size_t afterAt(std::string_view text, int begin)
{
    size_t pos = text.find_first_not_of(' ', static_cast<size_t>(begin));
    if (pos != std::string_view::npos && text[pos] == '@')
        ++pos;
    return pos;
}

} // namespace

// GET @(x1, y1)-[STEP](x2, y2), array. The array must hold the whole image (4 + 3 (w + 1) h bytes
// from the element it starts at), else "Illegal function call in " and nothing is written.
Outcome stmtGetImage(core::Interpreter& in, int begin, int end)
{
    auto text = statementText(in, end);
    auto& g = in.graphics();
    size_t pos = afterAt(text, begin);
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    TRY_BASIC(readImagePoint(in, text, pos, g.lastX, g.lastY, x1, y1));
    size_t dash = text.find_first_not_of(' ', pos);
    if (dash == std::string_view::npos || text[dash] != '-')
        return in.raise(ErrorId::SyntaxError);
    pos = dash + 1;
    TRY_BASIC(readImagePoint(in, text, pos, x1, y1, x2, y2));
    size_t comma = text.find_first_not_of(' ', pos);
    if (comma == std::string_view::npos || text[comma] != ',')
        return in.raise(ErrorId::SyntaxError);
    expr::ArrayStore::CellRange range;
    TRY_BASIC(arrayCells(in, text.substr(comma + 1), range));
    if (x1 > x2)
        std::swap(x1, x2);
    if (y1 > y2)
        std::swap(y1, y2);
    uint64_t w = static_cast<uint64_t>(x2 - x1) + 1;
    uint64_t h = static_cast<uint64_t>(y2 - y1) + 1;
    if (4 + pixelBytes(w, h) > range.size)
        return in.raise(ErrorId::IllegalFunctionCall);
    uint8_t* cells = in.arrays().data() + range.offset;
    expr::writeLittleEndian(cells, w, 2);
    expr::writeLittleEndian(cells + 2, h, 2);
    uint8_t* p = cells + 4;
    auto* renderer = in.renderer();
    // Without pixels the page counts as the background colour; outside the page it is black.
    Pixel blank = in.colours().palette[static_cast<size_t>(std::clamp(in.colours().backgroundInEffect, 0, 15))];
    for (int y = y2; y >= y1; --y) {
        for (int x = x1; x <= x2 + 1; ++x, p += 3) {
            Pixel pixel = renderer != nullptr ? renderer->activePage().pixel(x, y) : blank;
            p[0] = static_cast<uint8_t>(pixel);
            p[1] = static_cast<uint8_t>(pixel >> 8);
            p[2] = static_cast<uint8_t>(pixel >> 16);
        }
    }
    g.lastX = x2;
    g.lastY = y2;
    return kDone;
}

// PUT @([STEP] x, y), array or KANJI(code)[, mode[, fg[, bg]]]. The colours apply to the character
// cell of KANJI; an array image keeps its own colours.
Outcome stmtPutImage(core::Interpreter& in, int begin, int end)
{
    auto text = statementText(in, end);
    auto& g = in.graphics();
    size_t pos = afterAt(text, begin);
    int x = 0, y = 0;
    TRY_BASIC(readImagePoint(in, text, pos, g.lastX, g.lastY, x, y));
    size_t comma = text.find_first_not_of(' ', pos);
    if (comma == std::string_view::npos || text[comma] != ',')
        return in.raise(ErrorId::SyntaxError);
    std::vector<std::string> fields;
    core::splitAtTopLevel(text.substr(comma + 1), [](char c) { return c == ','; }, [&](std::string_view piece, char) {
        fields.push_back(core::trimBlanks(piece));
        return true;
    });
    std::string source = fields.empty() ? std::string() : fields.front();
    std::vector<std::string> rest(fields.size() > 1 ? fields.begin() + 1 : fields.end(), fields.end());
    RasterOp op = RasterOp::Xor;
    TRY_BASIC(rasterOp(in, rest, op));
    Picture picture;
    int w = 0;
    std::string upper = core::upperCased(source);
    if (upper.starts_with("KANJI")) {
        size_t open = source.find_first_not_of(' ', 5);
        if (open == std::string::npos || source[open] != '(' || core::matchingParen(source, open) != source.size() - 1)
            return in.raise(ErrorId::SyntaxError);
        TRY_BASIC(kanjiPicture(in, std::string_view(source).substr(open + 1, source.size() - open - 2), rest, picture));
        w = picture.width;
    } else {
        expr::ArrayStore::CellRange range;
        TRY_BASIC(arrayCells(in, source, range));
        // The colour arguments are checked like any argument even though an image keeps its colours.
        for (size_t k = 1; k < rest.size(); ++k) {
            expr::Value ignored;
            if (!rest[k].empty())
                TRY_BASIC(expr::evaluateText(in, rest[k], ignored));
            if (ignored.isString())
                return in.raise(ErrorId::TypeMismatch);
        }
        TRY_BASIC(pictureFromCells(in, in.arrays().data() + range.offset, range.size, picture, w));
    }
    transfer(in, picture, std::min(w, picture.width), picture.height, x, y, op);
    g.lastX = x;
    g.lastY = y;
    return kDone;
}

} // namespace tessaly::screen
