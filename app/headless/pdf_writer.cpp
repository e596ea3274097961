// PDF output through libharu.
#include "app/headless/pdf_writer.h"

#include <hpdf.h>

#include <memory>

#include "io/replace_file.h"

namespace tessaly::app {

namespace {

constexpr double kPageWidth = 595.276; // A4 in points
constexpr double kPageHeight = 841.89;
constexpr double kMargin = 28.346;     // 10 mm
constexpr double kPointsPerUnit = 72.0 / 300.0;

struct PdfFailure {
    HPDF_STATUS code = HPDF_OK;
};

void onPdfError(HPDF_STATUS code, HPDF_STATUS, void* data) { static_cast<PdfFailure*>(data)->code = code; }

struct DocumentDeleter {
    void operator()(HPDF_Doc pdf) const { HPDF_Free(pdf); }
};

std::vector<HPDF_BYTE> rgbBytes(const screen::Plane& plane)
{
    std::vector<HPDF_BYTE> bytes;
    bytes.reserve(static_cast<size_t>(plane.width()) * static_cast<size_t>(plane.height()) * 3);
    for (int y = 0; y < plane.height(); ++y) {
        const screen::Pixel* row = plane.row(y);
        for (int x = 0; x < plane.width(); ++x) {
            bytes.push_back(static_cast<HPDF_BYTE>(row[x] >> 16));
            bytes.push_back(static_cast<HPDF_BYTE>(row[x] >> 8));
            bytes.push_back(static_cast<HPDF_BYTE>(row[x]));
        }
    }
    return bytes;
}

// A rectangle of the drawing area in PDF coordinates (points, y up from the bottom).
struct PointRect {
    double x, y, width, height;
};
PointRect pointsOf(io::PrintRect rect)
{
    double width = rect.width * kPointsPerUnit;
    double height = rect.height * kPointsPerUnit;
    return {kMargin + rect.x * kPointsPerUnit, kPageHeight - kMargin - rect.y * kPointsPerUnit - height, width, height};
}

bool addPage(HPDF_Doc pdf, const PdfPage& page)
{
    HPDF_Page sheet = HPDF_AddPage(pdf);
    if (sheet == nullptr)
        return false;
    HPDF_Page_SetWidth(sheet, static_cast<HPDF_REAL>(kPageWidth));
    HPDF_Page_SetHeight(sheet, static_cast<HPDF_REAL>(kPageHeight));
    PointRect at = pointsOf(page.target);
    if (page.fillTarget) {
        HPDF_Page_SetRGBFill(sheet, static_cast<HPDF_REAL>((page.fill >> 16 & 0xFF) / 255.0),
            static_cast<HPDF_REAL>((page.fill >> 8 & 0xFF) / 255.0), static_cast<HPDF_REAL>((page.fill & 0xFF) / 255.0));
        HPDF_Page_Rectangle(sheet, static_cast<HPDF_REAL>(at.x), static_cast<HPDF_REAL>(at.y),
            static_cast<HPDF_REAL>(at.width), static_cast<HPDF_REAL>(at.height));
        HPDF_Page_Fill(sheet);
    }
    auto bytes = rgbBytes(page.image);
    HPDF_Image image = HPDF_LoadRawImageFromMem(pdf, bytes.data(), static_cast<HPDF_UINT>(page.image.width()),
        static_cast<HPDF_UINT>(page.image.height()), HPDF_CS_DEVICE_RGB, 8);
    if (image == nullptr)
        return false;
    return HPDF_Page_DrawImage(sheet, image, static_cast<HPDF_REAL>(at.x), static_cast<HPDF_REAL>(at.y),
               static_cast<HPDF_REAL>(at.width), static_cast<HPDF_REAL>(at.height))
        == HPDF_OK;
}

// The document's bytes, as libharu writes them into its memory stream.
bool documentBytes(HPDF_Doc pdf, std::string& bytes)
{
    if (HPDF_SaveToStream(pdf) != HPDF_OK)
        return false;
    bytes.resize(HPDF_GetStreamSize(pdf));
    size_t filled = 0;
    while (filled < bytes.size()) {
        auto length = static_cast<HPDF_UINT32>(bytes.size() - filled);
        HPDF_STATUS status = HPDF_ReadFromStream(pdf, reinterpret_cast<HPDF_BYTE*>(bytes.data() + filled), &length);
        filled += length;
        if (status == HPDF_STREAM_EOF || length == 0)
            break;
        if (status != HPDF_OK)
            return false;
    }
    bytes.resize(filled);
    return true;
}

} // namespace

bool writePdf(const std::vector<PdfPage>& pages, const std::string& path, std::string& error)
{
    PdfFailure failure;
    std::unique_ptr<std::remove_pointer_t<HPDF_Doc>, DocumentDeleter> pdf(HPDF_New(onPdfError, &failure));
    std::string bytes;
    bool made = pdf != nullptr && HPDF_SetCompressionMode(pdf.get(), HPDF_COMP_ALL) == HPDF_OK;
    for (size_t k = 0; made && k < pages.size(); ++k)
        made = addPage(pdf.get(), pages[k]);
    if (!made || failure.code != HPDF_OK || !documentBytes(pdf.get(), bytes)) {
        error = "cannot make the PDF document for " + path;
        return false;
    }
    if (io::ReplaceFile(path, bytes) != io::ReplaceOutcome::Replaced) {
        error = "cannot write " + path;
        return false;
    }
    return true;
}

} // namespace tessaly::app
