#include "print/PrintJob.h"

#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <array>

#include "core/GermanNumbers.h"
#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::array<PaperRow, 3> kPaperRows = {{
    {9, "", "", true, "160"},
    {11, "111", "90", true, "110"},
    {9, "", "", false, "160"},
}};

constexpr double kMillimetresPerInch = 25.4;
constexpr double kScreenDotsPerInch = 96.0;

RunError printerError(const QString& printer)
{
    return RunError::printerUnavailable(printer.toStdString());
}

} // namespace

const PaperRow& paperRow(Paper paper) { return kPaperRows[static_cast<std::size_t>(paper)]; }

int qualityCode(int comboIndex) { return -(comboIndex + 1); }

int resolutionOf(int qualityCode)
{
    switch (qualityCode) {
    case -1:
        return 150;
    case -2:
        return 300;
    case -4:
        return 1200;
    default:
        return 600;
    }
}

int millimetres(std::string_view text) { return roundHalfEven(leadingNumber(text)); }

int printRuns(std::string_view anzahl) { return roundHalfEven(parseAmount(anzahl)); }

PrintJob::PrintJob(PdfFileOfRun pdfFile) : m_pdfFile(std::move(pdfFile)) {}

std::vector<QString> PrintJob::printerNames()
{
    std::vector<QString> names;
    for (const QString& name : QPrinterInfo::availablePrinterNames())
        names.push_back(name);
    return names;
}

QString PrintJob::defaultPrinterName() { return QPrinterInfo::defaultPrinterName(); }

int PrintJob::print(const QImage& picture, const PrintRequest& request) const
{
    const int runs = printRuns(request.runs);
    const PaperRow& row = paperRow(request.paper);
    int sent = 0;
    for (int run = 1; run <= runs; ++run) {
        QPrinter printer(QPrinter::HighResolution);
        if (m_pdfFile) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(m_pdfFile(run));
        } else {
            // The list may be old: a printer can vanish between the dialog's opening and the click.
            if (QPrinterInfo::printerInfo(request.printer).isNull())
                throw printerError(request.printer);
            printer.setPrinterName(request.printer);
        }
        printer.setPageSize(QPageSize(row.paperCode == 11 ? QPageSize::A5 : QPageSize::A4));
        printer.setColorMode(request.colour == ColourMode::Colour ? QPrinter::Color : QPrinter::GrayScale);
        printer.setResolution(resolutionOf(request.quality));
        printer.setFullPage(true); // positions are measured from the paper's edges
        printer.setDocName("Zettelwerk Beleg");

        const double dotsPerMillimetre = printer.resolution() / kMillimetresPerInch;
        const int w = millimetres(request.width);
        const int h = millimetres(request.height);
        const QSizeF size = w < 1 || h < 1
                                ? QSizeF(picture.width() * kMillimetresPerInch / kScreenDotsPerInch,
                                         picture.height() * kMillimetresPerInch / kScreenDotsPerInch)
                                : QSizeF(w, h);
        auto place = [&](int xMillimetres, int yMillimetres) {
            return QRectF(xMillimetres * dotsPerMillimetre, yMillimetres * dotsPerMillimetre,
                          size.width() * dotsPerMillimetre, size.height() * dotsPerMillimetre);
        };
        QImage shown = request.colour == ColourMode::Colour ? picture
                                                            : picture.convertToFormat(QImage::Format_Grayscale8);
        QPainter painter;
        if (!painter.begin(&printer))
            throw printerError(request.printer);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place(millimetres(request.x), millimetres(request.y)), shown);
        if (request.twoPerSheet)
            painter.drawImage(place(millimetres(request.x), millimetres(row.secondTop)), shown);
        if (!painter.end())
            throw printerError(request.printer);
        ++sent;
    }
    return sent;
}

} // namespace zw
