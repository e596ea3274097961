// What printing puts on paper, drawn on planes of our own raster layer so that the window's
// printer and a PDF file get the same pixels: a page of the program listing, and the screen
// positive or negative.
#pragma once

#include "io/listing_pages.h"
#include "screen/raster.h"

namespace tessaly::core {
class ProgramStore;
}
namespace tessaly::screen {
class Font;
}

namespace tessaly::io {

// The listing canvas is 1,024 units wide (the screen's 640 pixels times 1.6); rows stand 18 apart.
inline constexpr int kListingCanvasWidth = 1024;
inline constexpr int kListingRowHeight = 18;
inline constexpr screen::Pixel kPaper = 0xFFFFFF;
inline constexpr screen::Pixel kInk = 0x000000;

// Page pageNumber (from 1) of a listing cut by PaginateListing: white, (linesPerPage + 5) rows of
// 18 high; each printed row of its lines at x 1, the first at y 18; "-n-" at x 200 on row
// linesPerPage + 3. The characters are the screen font's 8 x 16 glyphs.
screen::Plane ListingPageCanvas(const core::ProgramStore& store, const ListingPage& page, int pageNumber,
    int linesPerPage, const screen::Font& font);

// A page of printer output: rows drawn as the listing's are, the page number below them.
screen::Plane PrinterPageCanvas(const PrinterPage& rows, int pageNumber, int linesPerPage, const screen::Font& font);

// Where a listing or printer page and where the screen go in a page's drawing area of width x
// height device units: the page canvas stretched to 24 units in from the sides and 8 from the top
// and the bottom; the screen scaled by the smaller of (width - 16) / 640 and (height - 16) / 400,
// at the top left.
struct PrintRect {
    int x = 0, y = 0, width = 0, height = 0;
};
PrintRect PageCanvasTarget(int areaWidth, int areaHeight);
PrintRect ScreenPrintTarget(int areaWidth, int areaHeight);

// The composite screen as printed: as it is, or with every colour inverted.
screen::Plane ScreenPrintImage(const screen::Plane& composite, bool negative);

} // namespace tessaly::io
