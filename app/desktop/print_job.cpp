#include "app/desktop/print_job.h"

#include <QImage>

#include "app/desktop/document_prompts.h"
#include "core/interpreter.h"
#include "io/print_pages.h"
#include "screen/colours.h"
#include "screen/renderer.h"

namespace tessaly::desktop {

namespace {

QRect rectOf(io::PrintRect rect) { return {rect.x, rect.y, rect.width, rect.height}; }

} // namespace

QImage imageOf(const screen::Plane& plane)
{
    QImage image(plane.width(), plane.height(), QImage::Format_RGB32);
    for (int y = 0; y < plane.height(); ++y) {
        const screen::Pixel* from = plane.row(y);
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < plane.width(); ++x)
            to[x] = 0xFF000000u | from[x];
    }
    return image;
}

bool PrintJob::prepare(core::Interpreter& in, DocumentPrompts& prompts)
{
    PrintChoice choice;
    do {
        if (!prompts.printChoice(choice))
            return false;
    } while (choice.endLine < choice.startLine);
    m_choice = choice;
    m_linesPerPage = choice.pageLength == 1 ? 75 : choice.pageLength == 2 ? 100 : 50;
    m_pages = io::PaginateListing(in.program(), choice.startLine, choice.endLine, m_linesPerPage);
    // The screen is one page.
    if (choice.kind == PrintChoice::Kind::Screen)
        m_pages.resize(1);
    return true;
}

void PrintJob::paintPage(QPainter& painter, int page, QSize area, core::Interpreter& in, screen::Renderer& renderer) const
{
    if (page < 1 || page > pageCount())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    if (m_choice.kind == PrintChoice::Kind::Listing) {
        auto canvas = io::ListingPageCanvas(in.program(), m_pages[static_cast<size_t>(page - 1)], page,
            m_linesPerPage, renderer.font());
        painter.drawImage(rectOf(io::PageCanvasTarget(area.width(), area.height())), imageOf(canvas));
        return;
    }
    QRect target = rectOf(io::ScreenPrintTarget(area.width(), area.height()));
    const auto& colours = in.colours();
    painter.fillRect(target, QColor::fromRgb(colours.palette[static_cast<size_t>(colours.backgroundColour & 15)]));
    painter.drawImage(target, imageOf(io::ScreenPrintImage(renderer.composite(), m_choice.negative)));
}

} // namespace tessaly::desktop
