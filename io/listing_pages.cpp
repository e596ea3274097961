#include "io/listing_pages.h"

#include <algorithm>
#include <cstdint>

#include "core/program_store.h"

namespace tessaly::io {

namespace {

bool keepsNextByte(unsigned char byte) { return byte == 0 || (byte >= 0x81 && byte <= 0x9F) || byte >= 0xE0; }

std::string_view withoutLineEnd(std::string_view line)
{
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    return line;
}

int rowCount(const core::ProgramStore& store, int position)
{
    return static_cast<int>(PrintedRows(withoutLineEnd(store.textAt(position))).size());
}

} // namespace

std::vector<std::string_view> PrintedRows(std::string_view text)
{
    std::vector<std::string_view> rows;
    while (!text.empty()) {
        size_t length = std::min(text.size(), kPrintedRowBytes);
        if (length == kPrintedRowBytes && text.size() > length
            && keepsNextByte(static_cast<unsigned char>(text[kPrintedRowBytes - 1])))
            ++length;
        rows.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return rows;
}

std::vector<ListingPage> PaginateListing(const core::ProgramStore& store, int start, int end, int linesPerPage)
{
    end = std::min(end, store.count());
    start = std::max(start, 1);
    std::vector<ListingPage> pages;
    ListingPage page {start, start - 1};
    int rows = 0;
    for (int position = start; position <= end; ++position) {
        int lineRows = rowCount(store, position);
        rows += lineRows;
        if (rows >= linesPerPage + 1 && position > page.first) {
            // The line goes to the next page, and is counted there.
            page.last = position - 1;
            pages.push_back(page);
            page = {position, position - 1};
            rows = lineRows;
        }
        page.last = position;
        // A line longer than a page has that page to itself.
        if (rows >= linesPerPage + 1) {
            pages.push_back(page);
            page = {position + 1, position};
            rows = 0;
        }
    }
    if (pages.empty() || page.last >= page.first)
        pages.push_back(page);
    return pages;
}

std::vector<PrinterPage> PaginatePrinterBytes(std::string_view bytes, int rowsPerPage)
{
    std::vector<PrinterPage> pages(1);
    auto addRow = [&](std::string_view row) {
        if (static_cast<int>(pages.back().size()) >= rowsPerPage)
            pages.emplace_back();
        pages.back().push_back(row);
    };
    while (!bytes.empty()) {
        size_t end = bytes.find_first_of("\r\n\f");
        std::string_view line = bytes.substr(0, end);
        if (end == std::string_view::npos) {
            bytes = {};
        } else {
            char ending = bytes[end];
            bytes.remove_prefix(end + 1);
            if (ending == '\r' && !bytes.empty() && bytes.front() == '\n')
                bytes.remove_prefix(1);
            if (ending == '\f') {
                // The text before the form feed ends its page; what follows starts the next.
                if (!line.empty())
                    for (std::string_view row : PrintedRows(line))
                        addRow(row);
                pages.emplace_back();
                continue;
            }
        }
        auto rows = PrintedRows(line);
        if (rows.empty())
            addRow({});
        for (std::string_view row : rows)
            addRow(row);
    }
    // A form feed at the very end asks for no empty page after it.
    if (pages.size() > 1 && pages.back().empty())
        pages.pop_back();
    return pages;
}

} // namespace tessaly::io
