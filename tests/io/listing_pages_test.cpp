// Printed rows of a listing line, and the pages of a listing.
#include <gtest/gtest.h>

#include "core/program_store.h"
#include "io/listing_pages.h"

namespace tessaly::io {
namespace {

std::vector<size_t> rowLengths(std::string_view text)
{
    std::vector<size_t> lengths;
    for (auto row : PrintedRows(text))
        lengths.push_back(row.size());
    return lengths;
}

TEST(PrintedRows, CutAt120BytesWithoutSplittingACharacter)
{
    EXPECT_EQ(rowLengths(std::string(250, 'A')), (std::vector<size_t> {120, 120, 10}));
    EXPECT_EQ(rowLengths(std::string(119, 'A') + "\x82\xA0" + "BC"), (std::vector<size_t> {121, 2}));
    EXPECT_EQ(rowLengths(std::string(119, 'A') + std::string(1, '\0') + "BC"), (std::vector<size_t> {121, 1}));
    EXPECT_EQ(rowLengths(std::string(119, 'A') + "\xFF"), (std::vector<size_t> {120}));
    EXPECT_EQ(rowLengths(std::string(120, 'A')), (std::vector<size_t> {120}));
    EXPECT_EQ(rowLengths(""), (std::vector<size_t> {}));
}

// A store of lines of the given numbers of rows (a row of 100 bytes each).
core::ProgramStore storeOfRows(const std::vector<int>& rowsPerLine)
{
    std::vector<core::ProgramStore::Line> lines;
    int number = 10;
    for (int rows : rowsPerLine) {
        std::string text = std::to_string(number) + " REM ";
        text.resize(static_cast<size_t>(rows) * kPrintedRowBytes - 20, 'X');
        lines.push_back({number, text + "\r\n"});
        number += 10;
    }
    core::ProgramStore store;
    store.replaceAll(std::move(lines));
    return store;
}

std::vector<std::pair<int, int>> pagesOf(const core::ProgramStore& store, int start, int end, int linesPerPage)
{
    std::vector<std::pair<int, int>> pages;
    for (auto page : PaginateListing(store, start, end, linesPerPage))
        pages.emplace_back(page.first, page.last);
    return pages;
}

TEST(PaginateListing, APageTakesLinesUntilItsRowsWouldPassItsLength)
{
    using Pages = std::vector<std::pair<int, int>>;
    auto sixty = storeOfRows(std::vector<int>(60, 1));
    EXPECT_EQ(pagesOf(sixty, 1, 65536, 50), (Pages {{1, 50}, {51, 60}}));
    EXPECT_EQ(pagesOf(sixty, 5, 20, 50), (Pages {{5, 20}}));
    EXPECT_EQ(pagesOf(sixty, 1, 65536, 75), (Pages {{1, 60}}));
    // A line of two rows that would be the page's 51st row begins the next page.
    std::vector<int> rows(49, 1);
    rows.push_back(2);
    EXPECT_EQ(pagesOf(storeOfRows(rows), 1, 65536, 50), (Pages {{1, 49}, {50, 50}}));
    // A line longer than a page has that page to itself.
    EXPECT_EQ(pagesOf(storeOfRows({1, 60, 1}), 1, 65536, 50), (Pages {{1, 1}, {2, 2}, {3, 3}}));
    // An empty program prints one page without lines.
    EXPECT_EQ(pagesOf(core::ProgramStore(), 1, 65536, 50), (Pages {{1, 0}}));
}

} // namespace
} // namespace tessaly::io

namespace tessaly::io {
namespace {

struct PrinterBytesCase {
    const char* name;
    std::string bytes;
    int rowsPerPage;
    std::vector<std::vector<std::string>> pages;
};

class PrinterBytePages : public ::testing::TestWithParam<PrinterBytesCase> {};

TEST_P(PrinterBytePages, CutAtLineEndsFormFeedsAndFullPages)
{
    std::vector<std::vector<std::string>> pages;
    for (const auto& page : PaginatePrinterBytes(GetParam().bytes, GetParam().rowsPerPage))
        pages.emplace_back(page.begin(), page.end());
    EXPECT_EQ(pages, GetParam().pages) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(Io, PrinterBytePages,
    ::testing::Values(PrinterBytesCase {"nothing", "", 50, {{}}},
        PrinterBytesCase {"every line end", "A\r\nB\nC\rD", 50, {{"A", "B", "C", "D"}}},
        PrinterBytesCase {"empty lines stay", "A\r\n\r\n\nB\r\n", 50, {{"A", "", "", "B"}}},
        PrinterBytesCase {"a full page", "1\r\n2\r\n3\r\n4\r\n5\r\n", 2, {{"1", "2"}, {"3", "4"}, {"5"}}},
        PrinterBytesCase {"form feeds", "A\r\n\fB\fC", 50, {{"A"}, {"B"}, {"C"}}},
        PrinterBytesCase {"a closing form feed", "A\r\n\f", 50, {{"A"}}},
        PrinterBytesCase {"long lines", std::string(130, 'X') + "\r\nY", 2,
            {{std::string(120, 'X'), std::string(10, 'X')}, {"Y"}}}),
    [](const auto& info) {
        std::string name = info.param.name;
        for (char& c : name)
            if (c == ' ')
                c = '_';
        return name;
    });

} // namespace
} // namespace tessaly::io
