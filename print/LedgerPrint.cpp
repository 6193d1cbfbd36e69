#include "print/LedgerPrint.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <utility>

#include "core/RunError.h"
#include "ledger/LedgerOperations.h"

namespace zw {
namespace {

QString qt(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

} // namespace

// The average character width as the printer reports it for a TrueType font: the lowercase letters and the blank
// weighted by their frequency in text. The metric twins of Arial share these widths but not the stored average.
double averageCharacterWidth(const QFontMetricsF& metrics)
{
    static constexpr std::pair<char, int> kWeights[] = {
        {'a', 64}, {'b', 14}, {'c', 27}, {'d', 35}, {'e', 100}, {'f', 20}, {'g', 14}, {'h', 42}, {'i', 63},
        {'j', 3},  {'k', 6},  {'l', 35}, {'m', 20}, {'n', 56},  {'o', 56}, {'p', 17}, {'q', 4},  {'r', 49},
        {'s', 56}, {'t', 71}, {'u', 31}, {'v', 10}, {'w', 18},  {'x', 3},  {'y', 18}, {'z', 2},  {' ', 166}};
    double sum = 0;
    for (auto [character, weight] : kWeights)
        sum += metrics.horizontalAdvance(QChar(character)) * weight;
    return sum / 1000.0;
}

void printLedgerList(const PrintedList& list, QPrinter& printer)
{
    QPainter painter;
    if (!painter.begin(&printer))
        throw RunError::printerFault();
    const double pageHeight = painter.viewport().height();
    double y = 0;
    for (const auto& line : list.lines) {
        QFont font(qt(list.fontFamily));
        font.setPointSize(line.pointSize);
        font.setBold(line.bold);
        painter.setFont(font);
        const QFontMetricsF metrics(font, &printer);
        if (y + metrics.height() > pageHeight) {
            printer.newPage();
            y = 0;
        }
        const double column = averageCharacterWidth(metrics);
        for (const auto& piece : line.pieces)
            painter.drawText(QPointF((piece.tabColumn - 1) * column, y + metrics.ascent()), qt(piece.text));
        y += metrics.height();
    }
    painter.end();
}

} // namespace zw
