#include "assets/AssetGenerator.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QRandomGenerator>
#include <QString>
#include <string>
#include <vector>

#include "app/TextFile.h"
#include "assets/PrintAssets.h"
#include "core/RunError.h"
#include "ledger/Currency.h"
#include "print/ReceiptLayout.h"

namespace zw {
namespace {

namespace fs = std::filesystem;
using F = FormElement;

enum class TaxFields { Shown, Hidden };

// Cream paper with a faint grain; the seed is fixed so every build draws the same picture.
QImage paper(int width, int height, QColor base, quint32 seed)
{
    QImage image(width, height, QImage::Format_RGB32);
    QRandomGenerator random(seed);
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            int grain = static_cast<int>(random.bounded(7)) - 3;
            line[x] = qRgb(qBound(0, base.red() + grain, 255), qBound(0, base.green() + grain, 255),
                           qBound(0, base.blue() + grain, 255));
        }
    }
    return image;
}

QRect pixels(const LayoutEntry& entry)
{
    return {entry.leftPixels(), entry.topPixels(), entry.widthPixels(), entry.heightPixels()};
}

// A fill-in form: a frame, a title band, writing lines under the text fields and boxes for the amounts.
QImage receiptForm(TaxFields tax)
{
    QImage image = paper(kBackgroundWidthPixels, kBackgroundHeightPixels, QColor(251, 248, 238), 1202);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QColor ink(120, 138, 160);
    painter.setPen(QPen(ink, 1));
    painter.drawRect(3, 3, image.width() - 7, image.height() - 7);
    painter.setPen(QPen(ink.lighter(130), 1));
    painter.drawRect(6, 6, image.width() - 13, image.height() - 13);
    painter.fillRect(QRect(8, 8, 248, 38), QColor(234, 238, 244));
    painter.setPen(QPen(ink, 1));
    painter.drawLine(8, 47, 256, 47);

    auto underline = [&](F element) {
        if (auto entry = layoutOf(element)) {
            QRect r = pixels(*entry);
            painter.drawLine(r.left(), r.bottom() + 1, std::min(r.right(), image.width() - 12), r.bottom() + 1);
        }
    };
    auto box = [&](F element) {
        if (auto entry = layoutOf(element)) {
            QRect r = pixels(*entry).adjusted(-2, -2, 1, 1);
            painter.fillRect(r, QColor(255, 255, 255));
            painter.drawRect(r);
        }
    };
    painter.setPen(QPen(ink.lighter(120), 1, Qt::DotLine));
    for (F element : {F::Text4, F::Text5, F::Text6, F::Text7, F::Text8, F::Text9})
        underline(element);
    painter.setPen(QPen(ink, 1));
    box(F::Text1);
    box(F::Text2);
    box(F::Text12);
    if (tax == TaxFields::Shown) {
        box(F::Text10);
        box(F::Text11);
        // The sum line above the gross amount.
        if (auto entry = layoutOf(F::Text12)) {
            QRect r = pixels(*entry);
            painter.drawLine(r.left() - 100, r.top() - 4, r.right(), r.top() - 4);
        }
    }
    // Issuer area, booking note and signature field as light panels.
    painter.setPen(QPen(ink.lighter(140), 1));
    for (F element : {F::RTFBox, F::Text14, F::Image6}) {
        if (auto entry = layoutOf(element))
            painter.drawRect(pixels(*entry).adjusted(-3, -3, 2, 2));
    }
    return image;
}

bool save(const QImage& image, const fs::path& file, const char* format, int quality = -1)
{
    return image.save(QString::fromStdString(file.string()), format, quality);
}

bool writeLines(const fs::path& file, const std::vector<std::string>& lines)
{
    try {
        writeTextLines(file, lines);
        return true;
    } catch (const RunError&) {
        return false;
    }
}

// A text of the content folder, line by line, into the program's code page.
bool convertLines(const fs::path& source, const fs::path& target)
{
    try {
        return writeLines(target, splitLines(readFileBytes(source)));
    } catch (const RunError&) {
        return false;
    }
}

// The receipt colours: the form tinted with the colour, and a plain stamp area in a lighter shade of it.
bool drawReceiptColours(const fs::path& folder)
{
    struct Tint
    {
        const char* name;
        QColor colour;
    };
    const Tint tints[] = {{"rot", QColor(255, 0, 0)},       {"orange", QColor(255, 170, 0)},
                          {"gelb", QColor(255, 255, 0)},    {"gruen", QColor(0, 255, 0)},
                          {"blau", QColor(0, 0, 255)},      {"purpur", QColor(153, 0, 153)},
                          {"hellgrau", QColor(211, 211, 211)}};
    const QImage form = receiptForm(TaxFields::Shown);
    const auto stampEntry = layoutOf(F::Image3);
    const QSize stampSize = stampEntry ? QSize(stampEntry->widthPixels(), stampEntry->heightPixels()) : QSize(120, 90);
    auto blend = [](QRgb pixel, const QColor& tint, double share) {
        auto mix = [share](int from, int to) { return static_cast<int>(from * (1 - share) + to * share); };
        return qRgb(mix(qRed(pixel), tint.red()), mix(qGreen(pixel), tint.green()), mix(qBlue(pixel), tint.blue()));
    };
    bool ok = true;
    for (const auto& tint : tints) {
        QImage tinted = form.copy();
        for (int y = 0; y < tinted.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(tinted.scanLine(y));
            for (int x = 0; x < tinted.width(); ++x)
                line[x] = blend(line[x], tint.colour, 0.28);
        }
        ok &= save(tinted, folder / (std::string("quittung_") + tint.name + ".bmp"), "BMP");
        QImage stamp(stampSize, QImage::Format_RGB32);
        stamp.fill(QColor(blend(qRgb(255, 255, 255), tint.colour, 0.18)));
        QPainter painter(&stamp);
        painter.setPen(QPen(tint.colour.darker(130), 1, Qt::DashLine));
        painter.drawRect(0, 0, stamp.width() - 1, stamp.height() - 1);
        painter.end();
        ok &= save(stamp, folder / (std::string("stempel_") + tint.name + ".bmp"), "BMP");
    }
    QImage white(stampSize, QImage::Format_RGB32);
    white.fill(Qt::white);
    ok &= save(white, folder / "stempel_weiss.bmp", "BMP");
    return ok;
}

// The four window backgrounds: soft gradients with a pattern of their own each.
bool drawWindowBackgrounds(const fs::path& folder)
{
    const QSize size(1280, 960);
    struct Look
    {
        QColor top;
        QColor bottom;
        Qt::BrushStyle pattern;
    };
    const Look looks[] = {{QColor(214, 228, 245), QColor(164, 190, 224), Qt::NoBrush},
                          {QColor(236, 240, 226), QColor(190, 206, 170), Qt::BDiagPattern},
                          {QColor(246, 236, 222), QColor(214, 186, 150), Qt::Dense7Pattern},
                          {QColor(120, 130, 150), QColor(52, 60, 78), Qt::CrossPattern}};
    bool ok = true;
    int number = 1;
    for (const auto& look : looks) {
        QImage image(size, QImage::Format_RGB32);
        QPainter painter(&image);
        QLinearGradient gradient(0, 0, size.width() / 3.0, size.height());
        gradient.setColorAt(0, look.top);
        gradient.setColorAt(1, look.bottom);
        painter.fillRect(image.rect(), gradient);
        if (look.pattern != Qt::NoBrush)
            painter.fillRect(image.rect(), QBrush(look.top.lighter(108), look.pattern));
        painter.end();
        ok &= save(image, folder / ("hg" + std::to_string(number++) + ".jpg"), "JPG", 90);
    }
    return ok;
}

} // namespace

bool generateDistribution(const fs::path& folder, const fs::path& content)
{
    std::error_code error;
    for (const char* sub : {"daten", "hintergrund", "temp", "hilfe"})
        fs::create_directories(folder / sub, error);
    if (error)
        return false;
    bool ok = true;
    ok &= save(receiptForm(TaxFields::Shown), folder / "hintergrund" / "quittung_leer.jpg", "JPG", 92);
    ok &= save(receiptForm(TaxFields::Hidden), folder / "hintergrund" / "quittung_steueraus.jpg", "JPG", 92);
    fs::copy_file(content / "hilfe" / "index.html", folder / "hilfe" / "index.html",
                  fs::copy_options::overwrite_existing, error);
    ok &= !error;
    ok &= convertLines(content / "Tipofday.txt", folder / "daten" / "Tipofday.txt");
    ok &= convertLines(content / "neu_in_dieser_version.txt", folder / "neu_in_dieser_version.txt");
    ok &= writeLines(folder / "daten" / "waehrung.dat", defaultCurrencySuggestions());
    // A first print works at once: the rate, and a receipt 30 mm from the left and 20 mm from the top edge, so
    // that it stands centred on A4 and ends above the second receipt of a sheet (160 mm), one copy.
    ok &= writeLines(folder / "daten" / "mwst.dat", {"19"});
    ok &= writeLines(folder / "daten" / "druck.dat", {"30", "1", "20"});
    // Earlier entries for the name, purpose and place fields, so the first keystrokes show what completion does.
    ok &= writeLines(folder / "daten" / "autocom.dat",
                     {"Müller GmbH", "Bäckerei Schröder", "Hauptstraße 12", "10115 Berlin", "Büromaterial",
                      "Beratung und Planung", "Mitgliedsbeitrag 2026", "München", "Hamburg"});
    // The payer and article lists, so a first start shows what they are for.
    ok &= writeLines(folder / "daten" / "von_liste.txt",
                     {"Müller GmbH;Hauptstraße 12, 10115 Berlin", "Bäckerei Schröder;Marktplatz 3, 80331 München",
                      "Sportverein Blau-Weiß e. V.;Am Sportplatz 1, 20095 Hamburg"});
    ok &= writeLines(folder / "daten" / "artikel_fuer.txt",
                     {"Büromaterial;23,80;19", "Beratung und Planung (1 Stunde);95,00;19", "Fachbuch;39,90;7",
                      "Mitgliedsbeitrag 2026;60,00;0"});
    ok &= writeLines(folder / "daten" / "adressbuch.dat", {}); // the mail window's address book starts empty
    ok &= drawReceiptColours(folder / "hintergrund") && drawWindowBackgrounds(folder / "hintergrund");
    ok &= generatePrintAssets(folder);
    return ok;
}

} // namespace zw
