#include "assets/PrintAssets.h"

#include <QFont>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <fstream>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "print/Capture.h"
#include "print/ReceiptLayout.h"

namespace zw {
namespace {

namespace fs = std::filesystem;
using F = FormElement;

// A rubber stamp: a double frame and the word, slightly worn, in the stamp's ink.
QImage stamp(const QString& word, QColor ink)
{
    QImage image(116, 37, QImage::Format_RGB32);
    image.fill(Qt::white);
    if (word.isEmpty())
        return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 2));
    painter.drawRoundedRect(QRectF(3, 3, 110, 31), 4, 4);
    painter.setPen(QPen(ink, 1));
    painter.drawRoundedRect(QRectF(6, 6, 104, 25), 3, 3);
    QFont font("Liberation Sans");
    font.setPixelSize(16);
    font.setBold(true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1.5);
    painter.setFont(font);
    painter.drawText(QRect(6, 6, 104, 25), Qt::AlignCenter, word);
    return image;
}

bool writeTemplate(const fs::path& folder)
{
    // The form as a blank print shows it: headings and pictures' frames, no values.
    ProgramPaths paths(folder);
    ReceiptForm form;
    form.setFormBackground("\\hintergrund\\quittung_leer.jpg");
    for (F hidden : {F::Text1, F::Text2, F::Text10, F::Text11, F::Text12, F::RTFBox, F::steuernummer2, F::Text4,
                     F::Text5, F::Text6, F::Text7, F::Text8, F::Text9, F::Text14, F::para19})
        form.setVisible(hidden, false);
    QImage photo = Capture(paths)(form);

    QPdfWriter pdf(QString::fromStdString((folder / "ZW-Schablone.pdf").string()));
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setResolution(300);
    pdf.setTitle("Zettelwerk Schablone zum Einscannen");
    pdf.setCreator("Zettelwerk");
    QPainter painter;
    if (!painter.begin(&pdf))
        return false;
    const double dotsPerMillimetre = 300 / 25.4;
    auto mm = [&](double value) { return value * dotsPerMillimetre; };
    QFont heading("Liberation Sans");
    heading.setPointSize(14);
    heading.setBold(true);
    painter.setFont(heading);
    painter.drawText(QRectF(mm(20), mm(15), mm(170), mm(10)), Qt::AlignLeft, "Schablone zum Einscannen");
    QFont body("Liberation Sans");
    body.setPointSize(10);
    painter.setFont(body);
    painter.drawText(QRectF(mm(20), mm(26), mm(170), mm(20)), Qt::TextWordWrap,
                     "Drucken Sie diese Seite aus, setzen Sie Logo, Stempel oder Unterschrift in die gestrichelten "
                     "Felder und scannen Sie die Seite mit 96 dpi ein. Schneiden Sie die Felder aus dem Scan aus "
                     "und wählen Sie sie im Menü Ausfüllen als Logodatei oder Stempel-/Unterschriftsdatei.");
    const QRectF receipt(mm(20), mm(50), mm(570 * 25.4 / 96), mm(429 * 25.4 / 96));
    painter.drawImage(receipt, photo);
    const double scale = receipt.width() / photo.width();
    painter.setPen(QPen(Qt::black, mm(0.3), Qt::DashLine));
    QFont small("Liberation Sans");
    small.setPointSize(7);
    painter.setFont(small);
    const std::pair<F, const char*> fields[] = {{F::Image7, "Logo, 313 x 97 Pixel"},
                                                {F::Image6, "Stempel/Unterschrift, 257 x 57 Pixel"}};
    for (auto [element, caption] : fields) {
        auto entry = layoutOf(element);
        if (!entry)
            continue;
        QRectF box(receipt.left() + entry->leftPixels() * scale, receipt.top() + entry->topPixels() * scale,
                   entry->widthPixels() * scale, entry->heightPixels() * scale);
        painter.fillRect(box, Qt::white);
        painter.drawRect(box);
        painter.drawText(box.adjusted(mm(1), mm(1), 0, 0), Qt::AlignLeft | Qt::AlignTop, caption);
    }
    return painter.end();
}

} // namespace

bool generatePrintAssets(const fs::path& folder)
{
    bool ok = true;
    auto save = [&](const QImage& image, const char* name) {
        ok &= image.save(QString::fromStdString((folder / name).string()), "JPG", 95);
    };
    save(stamp({}, Qt::white), "stempel_leer.jpg");
    save(stamp("ORIGINAL", QColor(200, 20, 30)), "stempel_original.jpg");
    save(stamp("KOPIE", QColor(20, 50, 170)), "stempel_kopie.jpg");
    ok &= writeTemplate(folder);
    // The issuer window opens only on an existing file: a new installation starts with an empty issuer.
    std::error_code error;
    fs::create_directories(folder / "daten", error);
    std::ofstream(folder / "daten" / "aussteller.dat", std::ios::binary | std::ios::trunc);
    ok &= fs::exists(folder / "daten" / "aussteller.dat");
    return ok;
}

} // namespace zw
