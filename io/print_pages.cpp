#include "io/print_pages.h"

#include <algorithm>
#include <string>

#include "core/program_store.h"
#include "screen/font.h"

namespace tessaly::io {

namespace {

std::string_view withoutLineEnd(std::string_view line)
{
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace

screen::Plane ListingPageCanvas(const core::ProgramStore& store, const ListingPage& page, int pageNumber,
    int linesPerPage, const screen::Font& font)
{
    PrinterPage rows;
    for (int position = page.first; position <= page.last && position <= store.count(); ++position)
        for (std::string_view row : PrintedRows(withoutLineEnd(store.textAt(position))))
            rows.push_back(row);
    return PrinterPageCanvas(rows, pageNumber, linesPerPage, font);
}

screen::Plane PrinterPageCanvas(const PrinterPage& rows, int pageNumber, int linesPerPage, const screen::Font& font)
{
    screen::Plane canvas(kListingCanvasWidth, (linesPerPage + 5) * kListingRowHeight, kPaper);
    int y = kListingRowHeight;
    for (std::string_view row : rows) {
        font.drawText(canvas, 1, y, row, kInk);
        y += kListingRowHeight;
    }
    font.drawText(canvas, 200, (linesPerPage + 3) * kListingRowHeight, "-" + std::to_string(pageNumber) + "-", kInk);
    return canvas;
}

PrintRect PageCanvasTarget(int areaWidth, int areaHeight) { return {24, 8, areaWidth - 48, areaHeight - 16}; }

PrintRect ScreenPrintTarget(int areaWidth, int areaHeight)
{
    double scale = std::min((areaWidth - 16) / 640.0, (areaHeight - 16) / 400.0);
    return {0, 0, static_cast<int>(640 * scale + 0.5), static_cast<int>(400 * scale + 0.5)};
}

screen::Plane ScreenPrintImage(const screen::Plane& composite, bool negative)
{
    screen::Plane image(composite.width(), composite.height());
    for (int y = 0; y < composite.height(); ++y) {
        const screen::Pixel* from = composite.row(y);
        screen::Pixel* to = image.row(y);
        for (int x = 0; x < composite.width(); ++x)
            to[x] = negative ? (from[x] ^ 0xFFFFFF) & 0xFFFFFF : from[x];
    }
    return image;
}

} // namespace tessaly::io
