// Printing to a PDF file (libharu) for the headless runner: each page is an A4 sheet whose drawing
// area, 10 mm in from every edge, counts 300 units to the inch, as a printer's dots would; the
// page's images are placed in those units as the window's printer places them.
#pragma once

#include <string>
#include <vector>

#include "io/print_pages.h"
#include "screen/raster.h"

namespace tessaly::app {

// The drawing area of a PDF page, in units (300 to the inch).
inline constexpr int kPdfAreaWidth = 2244;
inline constexpr int kPdfAreaHeight = 3272;

struct PdfPage {
    screen::Plane image;
    io::PrintRect target;         // where the image is stretched to, in units of the drawing area
    bool fillTarget = false;      // the target is filled with fill before the image is drawn
    screen::Pixel fill = 0;
};

// Writes the pages as the whole file; false with a message on failure, the file then as it was.
bool writePdf(const std::vector<PdfPage>& pages, const std::string& path, std::string& error);

} // namespace tessaly::app
