// The program listing cut into printed rows and pages, for printing and print preview.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tessaly::core {
class ProgramStore;
}

namespace tessaly::io {

// A printed row holds 120 bytes, or 121 when the 120th is a lead byte (or a zero byte), so that a
// double-byte character is not split.
inline constexpr size_t kPrintedRowBytes = 120;

// The rows a line's text (without its CR LF) prints as; none for an empty text.
std::vector<std::string_view> PrintedRows(std::string_view text);

// The program positions a page prints (1 = the first stored line); first > last for a page with
// no line, as the one page of an empty program.
struct ListingPage {
    int first = 1;
    int last = 0;
};

// The pages of the lines at positions start to end (end lowered to the number of stored lines,
// start at least 1), linesPerPage rows a page: a line that would make the page's row count reach
// linesPerPage + 1 begins the next page.
std::vector<ListingPage> PaginateListing(const core::ProgramStore& store, int start, int end, int linesPerPage);

// The printer's bytes (LPRINT, LLIST, a program saved to a printer port) as pages of printed rows:
// a line ends at CR LF, LF or CR and is cut into rows as a listing line is, a form feed (0x0C)
// starts a new page, and a page holds rowsPerPage rows. An empty line is an empty row.
using PrinterPage = std::vector<std::string_view>;
std::vector<PrinterPage> PaginatePrinterBytes(std::string_view bytes, int rowsPerPage);

} // namespace tessaly::io
