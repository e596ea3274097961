// Printing and print preview: the user chooses the listing (a range of lines, 50, 75 or 100 rows a
// page) or the screen (positive or negative); the job cuts the listing into pages and paints each
// page onto a printer's, a preview's or an image's painter.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSize>
#include <vector>

#include "io/listing_pages.h"

namespace tessaly::core {
class Interpreter;
}
namespace tessaly::screen {
class Font;
class Plane;
class Renderer;
} // namespace tessaly::screen

namespace tessaly::desktop {

class DocumentPrompts;

// A plane of our raster layer as a Qt image.
QImage imageOf(const screen::Plane& plane);

struct PrintChoice {
    enum class Kind { Listing = 0, Screen = 1 };
    Kind kind = Kind::Listing;
    int startLine = 1;  // positions in the program, 1 = the first stored line
    int endLine = 65536;
    int pageLength = 0; // 0: 50 rows a page, 1: 75, 2: 100
    bool negative = false;
};

class PrintJob {
public:
    // Asks what to print (again while the end lies before the start) and cuts the pages; false
    // when the user cancels.
    bool prepare(core::Interpreter& interpreter, DocumentPrompts& prompts);
    [[nodiscard]] int pageCount() const { return static_cast<int>(m_pages.size()); }
    [[nodiscard]] int linesPerPage() const { return m_linesPerPage; }
    // Paints page (from 1) into the painter's drawing area of the given size, in its device units.
    void paintPage(QPainter& painter, int page, QSize area, core::Interpreter& interpreter,
        screen::Renderer& renderer) const;

private:
    PrintChoice m_choice;
    int m_linesPerPage = 50;
    std::vector<io::ListingPage> m_pages;
};

} // namespace tessaly::desktop
