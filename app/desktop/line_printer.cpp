#include "app/desktop/line_printer.h"

#include <QPainter>
#include <QPrinterInfo>

#include "app/desktop/print_job.h"
#include "io/listing_pages.h"
#include "io/print_pages.h"

namespace tessaly::desktop {

namespace {
constexpr size_t kJobLimit = 1 << 20;
// Printer output is laid out as a listing of 50 rows a page (the A4 page length).
constexpr int kRowsPerPage = 50;
} // namespace

LinePrinter::LinePrinter()
    : m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
{
}

LinePrinter::~LinePrinter() = default;

bool LinePrinter::available() const
{
    return !m_printer->outputFileName().isEmpty() || !QPrinterInfo::defaultPrinter().isNull();
}

core::PrinterWrite LinePrinter::write(std::string_view bytes)
{
    if (!available())
        return core::PrinterWrite::NoPrinter;
    if (m_job.size() + bytes.size() > kJobLimit)
        return core::PrinterWrite::Failed;
    m_job.append(bytes);
    return core::PrinterWrite::Written;
}

void LinePrinter::endJob(const screen::Font& font)
{
    if (m_job.empty())
        return;
    std::string job = std::move(m_job);
    m_job.clear();
    if (available())
        PrintPrinterBytes(*m_printer, job, font);
}

void PrintPrinterBytes(QPrinter& printer, std::string_view bytes, const screen::Font& font)
{
    auto pages = io::PaginatePrinterBytes(bytes, kRowsPerPage);
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    QSize area = printer.pageLayout().paintRectPixels(printer.resolution()).size();
    auto target = io::PageCanvasTarget(area.width(), area.height());
    for (size_t page = 0; page < pages.size(); ++page) {
        if (page > 0)
            printer.newPage();
        auto canvas = io::PrinterPageCanvas(pages[page], static_cast<int>(page + 1), kRowsPerPage, font);
        painter.drawImage(QRect(target.x, target.y, target.width, target.height), imageOf(canvas));
    }
    painter.end();
}

} // namespace tessaly::desktop
