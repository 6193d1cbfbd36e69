#include "print/ArchivePdf.h"

#include <QBuffer>
#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <functional>

#include "app/Version.h"
#include "core/ReceiptForm.h"
#include "print/Capture.h"

namespace zw {
namespace {

constexpr int kDotsPerInch = 1200;
// The receipt is drawn in the form's pixels, whose fonts are sized in points as on the screen.
constexpr int kFormPixelsPerInch = 96;
constexpr double kMillimetresPerInch = 25.4;

double dots(double millimetres, int perInch = kDotsPerInch) { return millimetres * perInch / kMillimetresPerInch; }

std::string writePdf(const std::string& title, int resolution, const std::function<void(QPainter&)>& draw)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
        writer.setResolution(resolution);
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()));
        writer.setTitle(QString::fromStdString(title));
        writer.setCreator(QString::fromStdString("Zettelwerk " + versionText()));
        QPainter painter(&writer);
        draw(painter);
    }
    return bytes.toStdString();
}

} // namespace

std::string ArchivePdf::pagePdf(const PrintedPage& page) const
{
    return writePdf(page.title, kDotsPerInch, [&page](QPainter& painter) {
        painter.setPen(QPen(Qt::black, dots(0.25)));
        for (const auto& rule : page.rules)
            painter.drawLine(QPointF(dots(rule.leftMm), dots(rule.topMm)), QPointF(dots(rule.rightMm), dots(rule.topMm)));
        for (const auto& piece : page.texts) {
            QFont font(QStringLiteral("Arial"));
            font.setPointSizeF(piece.points);
            font.setBold(piece.bold);
            painter.setFont(font);
            const QString text = QString::fromStdString(piece.text);
            const double width = painter.fontMetrics().horizontalAdvance(text);
            const double left = piece.align == PageText::Align::Right ? dots(piece.leftMm) - width : dots(piece.leftMm);
            painter.drawText(QPointF(left, dots(piece.topMm) + painter.fontMetrics().ascent()), text);
        }
    });
}

std::string ArchivePdf::receiptPdf(const ReceiptForm& form) const
{
    return writePdf("Beleg " + form.text(FormElement::Text1), kFormPixelsPerInch, [this, &form](QPainter& painter) {
        painter.translate(dots(30, kFormPixelsPerInch), dots(20, kFormPixelsPerInch));
        m_capture.paint(painter, form);
    });
}

} // namespace zw
