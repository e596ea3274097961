#include "app/headless/print_to_pdf.h"

#include "app/headless/pdf_writer.h"
#include "core/interpreter.h"
#include "io/listing_pages.h"
#include "io/print_pages.h"
#include "screen/colours.h"
#include "screen/renderer.h"

namespace tessaly::app {

bool printListingToPdf(core::Interpreter& in, const screen::Renderer& renderer, int linesPerPage,
    const std::string& path, std::string& error)
{
    const auto& store = in.program();
    auto listing = io::PaginateListing(store, 1, store.count(), linesPerPage);
    std::vector<PdfPage> pages;
    for (size_t k = 0; k < listing.size(); ++k) {
        pages.push_back({io::ListingPageCanvas(store, listing[k], static_cast<int>(k + 1), linesPerPage,
                             renderer.font()),
            io::PageCanvasTarget(kPdfAreaWidth, kPdfAreaHeight)});
    }
    return writePdf(pages, path, error);
}

bool printScreenToPdf(core::Interpreter& in, screen::Renderer& renderer, bool negative, const std::string& path,
    std::string& error)
{
    const auto& colours = in.colours();
    PdfPage page {io::ScreenPrintImage(renderer.composite(), negative),
        io::ScreenPrintTarget(kPdfAreaWidth, kPdfAreaHeight), true,
        colours.palette[static_cast<size_t>(colours.backgroundColour & 15)]};
    return writePdf({page}, path, error);
}

} // namespace tessaly::app
