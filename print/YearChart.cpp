#include "print/YearChart.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QFontMetricsF>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QImage>
#include <QLegend>
#include <QLocale>
#include <QLineSeries>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

#include "books/YearFigures.h"
#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::array<const char*, 12> kMonthNames = {"Januar", "Februar", "März",      "April",   "Mai",      "Juni",
                                                     "Juli",   "August",  "September", "Oktober", "November", "Dezember"};
constexpr std::array<const char*, 12> kMonthShortNames = {"Jan", "Feb", "Mär", "Apr", "Mai", "Jun",
                                                          "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"};

QFont pixelFont(int pixels, QFont::Weight weight = QFont::Normal)
{
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

QFont labelFont() { return pixelFont(12); }

// About five steps of 1, 2, 2.5 or 5 times a power of ten.
double niceStep(double span)
{
    const double raw = span / 5.0;
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (double factor : {1.0, 2.0, 2.5, 5.0})
        if (factor * power >= raw)
            return factor * power;
    return 10.0 * power;
}

struct AxisScale
{
    double low = 0;
    double step = 1;
    int below = 0; // steps below zero
    int above = 1;
};

AxisScale scaleFor(double low, double high)
{
    low = std::min(low, 0.0);
    high = std::max(high, 0.0);
    if (high - low < 1.0)
        high = low + 100.0;
    AxisScale scale;
    scale.step = niceStep(high - low);
    // A hair of tolerance, so a maximum that is a whole step ends on that step.
    scale.below = static_cast<int>(std::ceil(-low / scale.step - 1e-9));
    scale.above = static_cast<int>(std::ceil(high / scale.step - 1e-9));
    return scale;
}

// Both axes get the same number of steps below and above zero, so their zero and their grid lines coincide.
void applyScales(QValueAxis& left, AxisScale leftScale, QValueAxis& right, AxisScale rightScale)
{
    const int below = std::max(leftScale.below, rightScale.below);
    const int above = std::max({leftScale.above, rightScale.above, 1});
    for (auto [axis, scale] : {std::pair{&left, leftScale}, std::pair{&right, rightScale}}) {
        axis->setRange(-below * scale.step, above * scale.step);
        axis->setTickCount(below + above + 1);
        axis->setLabelFormat(scale.step >= 1.0 ? QStringLiteral("%.0f €") : QStringLiteral("%.2f €"));
        axis->setLabelsFont(labelFont());
        axis->setTitleFont(pixelFont(12, QFont::DemiBold));
    }
}

double euros(Cents cents) { return static_cast<double>(cents) / 100.0; }

void paintVatTable(QPainter& painter, const QRectF& area, const std::vector<VatTableRow>& rows)
{
    const auto lines = static_cast<double>(rows.size() + 1);
    const double rowHeight = area.height() / lines;
    const double firstWidth = area.width() * 0.16;
    const double otherWidth = (area.width() - firstWidth) / static_cast<double>(kVatTableColumns - 1);
    auto cellRect = [&](std::size_t line, std::size_t column) {
        const double left = area.left() + (column == 0 ? 0 : firstWidth + otherWidth * static_cast<double>(column - 1));
        return QRectF(left, area.top() + rowHeight * static_cast<double>(line), column == 0 ? firstWidth : otherWidth,
                      rowHeight);
    };
    painter.fillRect(QRectF(area.left(), area.top(), area.width(), rowHeight), QColor(0xe6, 0xe9, 0xee));
    const int pixels = static_cast<int>(std::clamp(rowHeight * 0.55, 8.0, 13.0));
    painter.setPen(QColor(0x20, 0x20, 0x20));
    for (std::size_t line = 0; line < rows.size() + 1; ++line) {
        const bool header = line == 0;
        const bool sum = line == rows.size();
        const VatTableRow& texts = header ? vatTableCaptions() : rows[line - 1];
        painter.setFont(pixelFont(pixels, header || sum ? QFont::DemiBold : QFont::Normal));
        for (std::size_t column = 0; column < kVatTableColumns; ++column) {
            const QRectF cell = cellRect(line, column).adjusted(6, 0, -6, 0);
            const Qt::Alignment align = column == 0 ? Qt::AlignLeft : Qt::AlignRight;
            painter.drawText(cell, align | Qt::AlignVCenter, QString::fromStdString(texts[column]));
        }
    }
    painter.setPen(QPen(QColor(0xb0, 0xb4, 0xba), 0));
    for (std::size_t line = 0; line <= rows.size() + 1; ++line) {
        const double y = area.top() + rowHeight * static_cast<double>(line);
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    }
    for (std::size_t column = 0; column <= kVatTableColumns; ++column) {
        const double x = column == kVatTableColumns ? area.right() : cellRect(0, column).left();
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
}

void requireFolderOf(const std::filesystem::path& file)
{
    std::error_code error;
    if (file.has_parent_path() && !std::filesystem::is_directory(file.parent_path(), error))
        throw RunError::pathNotFound();
}

} // namespace

QString yearChartTitle(int year) { return QStringLiteral("Auswertung %1").arg(year); }

QStringList monthCaptions(double room)
{
    const bool whole = room >= QFontMetricsF(labelFont()).horizontalAdvance(QStringLiteral("September")) + 8;
    QStringList captions;
    for (std::size_t month = 0; month < 12; ++month)
        captions << QString::fromUtf8(whole ? kMonthNames[month] : kMonthShortNames[month]);
    return captions;
}

QChart* newYearChart(const YearFigures& figures)
{
    auto* chart = new QChart;
    chart->setTitle(yearChartTitle(figures.year));
    chart->setTitleFont(pixelFont(18, QFont::Bold));
    chart->setLocalizeNumbers(true);
    chart->setLocale(QLocale(QLocale::German, QLocale::Germany));
    chart->setBackgroundRoundness(0);
    chart->setBackgroundBrush(Qt::white);
    chart->setMargins(QMargins(6, 6, 6, 6));
    chart->legend()->setAlignment(Qt::AlignBottom);
    chart->legend()->setFont(pixelFont(13));

    auto* takings = new QBarSet(QStringLiteral("Einnahmen"));
    auto* payouts = new QBarSet(QStringLiteral("Ausgaben"));
    auto* balance = new QLineSeries;
    balance->setName(QStringLiteral("Kassenstand"));
    double barLow = 0, barHigh = 0, lineLow = 0, lineHigh = 0;
    for (std::size_t month = 0; month < 12; ++month) {
        const MonthFigures& monthly = figures.months[month];
        *takings << euros(monthly.takings);
        *payouts << euros(monthly.payouts);
        balance->append(static_cast<double>(month), euros(monthly.balance));
        barLow = std::min({barLow, euros(monthly.takings), euros(monthly.payouts)});
        barHigh = std::max({barHigh, euros(monthly.takings), euros(monthly.payouts)});
        lineLow = std::min(lineLow, euros(monthly.balance));
        lineHigh = std::max(lineHigh, euros(monthly.balance));
    }
    for (auto [set, colour] : {std::pair{takings, kTakingsColour}, std::pair{payouts, kPayoutsColour}}) {
        set->setColor(colour);
        set->setBorderColor(colour);
    }
    auto* bars = new QBarSeries;
    bars->append(takings);
    bars->append(payouts);
    bars->setBarWidth(0.7);
    QPen line(kBalanceColour, 3);
    balance->setPen(line);
    balance->setPointsVisible(true);
    chart->addSeries(bars);
    chart->addSeries(balance);

    auto* months = new QBarCategoryAxis;
    months->append(monthCaptions(1000));
    months->setLabelsFont(labelFont());
    months->setGridLineVisible(false);
    auto* amounts = new QValueAxis;
    amounts->setTitleText(QStringLiteral("Einnahmen und Ausgaben"));
    auto* cash = new QValueAxis;
    cash->setTitleText(QStringLiteral("Kassenstand"));
    cash->setLabelsColor(kBalanceColour);
    cash->setTitleBrush(kBalanceColour);
    cash->setGridLineVisible(false);
    applyScales(*amounts, scaleFor(barLow, barHigh), *cash, scaleFor(lineLow, lineHigh));
    chart->addAxis(months, Qt::AlignBottom);
    chart->addAxis(amounts, Qt::AlignLeft);
    chart->addAxis(cash, Qt::AlignRight);
    bars->attachAxis(months);
    bars->attachAxis(amounts);
    balance->attachAxis(months);
    balance->attachAxis(cash);
    return chart;
}

void fitMonthCaptions(QChart& chart)
{
    // Before the first layout the plot area is empty; the axes take about 150 pixels of the width.
    const double width = chart.plotArea().isEmpty() ? chart.size().width() - 150 : chart.plotArea().width();
    const QStringList captions = monthCaptions(width / 12.0);
    for (QAbstractAxis* axis : chart.axes(Qt::Horizontal)) {
        auto* months = qobject_cast<QBarCategoryAxis*>(axis);
        if (months && months->categories() != captions) {
            months->clear();
            months->append(captions);
        }
    }
}

void paintYearPicture(QPainter& painter, const QRectF& area, const YearFigures& figures)
{
    const double scale = painter.device()->logicalDpiX() / 96.0;
    const QSizeF size = area.size() / scale;
    const auto rows = vatTableRows(figures);
    const double tableHeight = std::min(24.0 * static_cast<double>(rows.size() + 1), size.height() * 0.4);
    const QRectF chartArea(0, 0, size.width(), size.height() - tableHeight - 24);
    const QRectF tableArea(12, chartArea.bottom() + 8, size.width() - 24, tableHeight);

    painter.save();
    painter.translate(area.topLeft());
    painter.scale(scale, scale);
    painter.fillRect(QRectF(QPointF(0, 0), size), Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    {
        QGraphicsScene scene;
        QChart* chart = newYearChart(figures);
        scene.addItem(chart); // the scene owns it from here
        chart->setGeometry(chartArea);
        fitMonthCaptions(*chart);
        chart->layout()->activate();
        scene.render(&painter, chartArea, chartArea);
    }
    paintVatTable(painter, tableArea, rows);
    painter.restore();
}

QImage yearPictureImage(const YearFigures& figures, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    paintYearPicture(painter, QRectF(QPointF(0, 0), QSizeF(size)), figures);
    return image;
}

void saveYearPicturePng(const YearFigures& figures, const std::filesystem::path& file, QSize size)
{
    requireFolderOf(file);
    if (!yearPictureImage(figures, size).save(QString::fromStdString(file.string()), "PNG"))
        throw RunError::pathFileAccess();
}

void saveYearPicturePdf(const YearFigures& figures, const std::filesystem::path& file)
{
    requireFolderOf(file);
    QPdfWriter writer(QString::fromStdString(file.string()));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(12, 12, 12, 12),
                                     QPageLayout::Millimeter));
    writer.setTitle(yearChartTitle(figures.year));
    writer.setCreator(QStringLiteral("Zettelwerk"));
    QPainter painter;
    if (!painter.begin(&writer))
        throw RunError::pathFileAccess();
    paintYearPicture(painter, QRectF(QPointF(0, 0), writer.pageLayout().paintRectPixels(writer.resolution()).size()),
                     figures);
    painter.end();
}

void printYearPicture(const YearFigures& figures, QPrinter& printer)
{
    QPainter painter;
    if (!painter.begin(&printer))
        throw RunError::printerFault();
    paintYearPicture(painter, QRectF(QPointF(0, 0), printer.pageLayout().paintRectPixels(printer.resolution()).size()),
                     figures);
    painter.end();
}

} // namespace zw
