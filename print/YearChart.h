#pragma once

#include <QColor>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>
#include <filesystem>

class QChart;
class QImage;
class QPainter;
class QPrinter;

namespace zw {

struct YearFigures;

inline const QColor kTakingsColour{0x3c, 0x9a, 0x5c};
inline const QColor kPayoutsColour{0xd9, 0x54, 0x4d};
inline const QColor kBalanceColour{0x1f, 0x5f, 0xbf};
// The picture as a file when nobody asks for another size.
inline constexpr QSize kYearPictureSize{1280, 800};

// "Auswertung 2025".
QString yearChartTitle(int year);

// The months as the category axis names them: whole names where each month has `room` pixels for "September"
// in the chart's label font, else their three letters.
QStringList monthCaptions(double room);

// The chart of a year: takings and payouts per month as bars against the left axis, the cash at each month's end
// as a line against the right one, both axes in Euro with German numbers. Fonts are given in pixels, so the
// chart keeps its proportions on a painter scaled for a printer. The caller owns the chart.
QChart* newYearChart(const YearFigures& figures);
// Fits the month names to the chart's present width; a window calls it after each resize.
void fitMonthCaptions(QChart& chart);

// The whole picture, chart above and the table of VAT rates below, onto any painter: window, print, PNG and PDF
// draw it here. `area` is in the painter's device pixels; the layout is made at 96 dots per inch and scaled.
void paintYearPicture(QPainter& painter, const QRectF& area, const YearFigures& figures);

QImage yearPictureImage(const YearFigures& figures, QSize size);
// The picture as a PNG file; RunError 76 for a missing folder, 75 for a file that could not be written.
void saveYearPicturePng(const YearFigures& figures, const std::filesystem::path& file, QSize size);
// The picture on one landscape A4 page as a PDF file; the same faults.
void saveYearPicturePdf(const YearFigures& figures, const std::filesystem::path& file);
// The picture on one landscape page of the printer the user chose.
void printYearPicture(const YearFigures& figures, QPrinter& printer);

} // namespace zw
