#include "lists/ListReport.h"

#include <algorithm>
#include <cmath>
#include <ctime>

#include "app/AtomicFile.h"
#include "core/GermanNumbers.h"
#include "core/HtmlText.h"
#include "core/RunError.h"

namespace zw {
namespace {

// One line of header or footer with the grid's markers.
void appendMarkedLine(std::string& html, std::string_view text, std::string_view cssClass)
{
    if (text.empty())
        return;
    html += "<table class=\"";
    html += cssClass;
    html += "\"><tr>";
    const std::size_t bar = text.find('|');
    for (std::string_view cell : {text.substr(0, bar), bar == std::string_view::npos ? std::string_view()
                                                                                       : text.substr(bar + 1)}) {
        if (cell.empty() && bar == std::string_view::npos)
            continue;
        const bool right = cell.starts_with('>');
        html += right ? "<td class=\"r\">" : "<td>";
        html += htmlEscaped(right ? cell.substr(1) : cell);
        html += "</td>";
    }
    html += "</tr></table>\n";
}

std::string currency(double value) { return formatPattern(value, "#,##0.00 €"); }

} // namespace

std::string ListReportTexts::pageHeader(int page, int pages) const
{
    return "Seite " + std::to_string(page) + " von " + std::to_string(pages) + "|>Stand: " + m_today;
}

std::string ListReportTexts::pageFooter(int page, int pages, std::int32_t sum) const
{
    const std::string count = "Anzahl Datensätze: " + formatPattern(m_table.rowCount(), "0");
    if (!m_table.kind().hasAmounts)
        return page == pages ? count : std::string();
    if (page < pages)
        return ">Zwischensumme: " + currency(sum);
    return count + "|>Endsumme: " + currency(sum);
}

void ListReportTexts::addRow(int row, std::int32_t& sum) const
{
    if (!m_table.kind().hasAmounts)
        return;
    // A row without an amount, or with text in its place from elsewhere, adds nothing, so that the report of the
    // other rows still stands.
    const std::string& betrag = m_table.cell(row, "betrag");
    if (!isNumeric(betrag))
        return;
    // The currency conversion keeps four decimals; the integer store then rounds the whole sum.
    const double amount = std::round(parseAmount(betrag) * 10000.0) / 10000.0;
    sum = roundHalfEven(static_cast<double>(sum) + amount);
}

std::string listReportHtml(const ListTable& table, const ReportOptions& options, const ReportStyle* style,
                           const std::string& today, std::int32_t& sum, const ReportEvents& events)
{
    const ListReportTexts texts(table, today);
    const int perPage = std::max(1, options.rowsPerPage);
    const int rows = table.rowCount();
    const int pages = reportPageCount(rows, perPage);
    const ReportStyle plain;
    const ReportStyle& look = style != nullptr && options.carryFormatting ? *style : plain;

    std::string html = "<!DOCTYPE html>\n<html lang=\"de\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
                       htmlEscaped(options.title) + "</title>\n<style>\nbody { font-family: \"" +
                       htmlEscaped(look.fontFamily) + "\", sans-serif; font-size: " + std::to_string(look.fontPoints) +
                       "pt; color: " + look.text + "; background: " + look.background +
                       "; }\ntable { width: 100%; border-collapse: collapse; }\n"
                       "table.grid td, table.grid th { border: 1px solid #a0a0a0; padding: 2px 4px; }\n"
                       "table.grid th { background: " +
                       look.heading +
                       "; text-align: left; }\ntd.r { text-align: right; }\n"
                       "section { page-break-after: always; margin-bottom: 2em; }\n</style>\n</head>\n<body>\n";
    for (int page = 1; page <= pages; ++page) {
        if (page == 6 && events.showEarly)
            events.showEarly(html + "</body>\n</html>\n");
        html += "<section>\n<h1>" + htmlEscaped(options.title) + "</h1>\n";
        appendMarkedLine(html, texts.pageHeader(page, pages), "header");
        html += "<table class=\"grid\">\n<thead><tr>";
        for (const ListColumn& column : table.kind().columns)
            html += "<th>" + htmlEscaped(column.heading) + "</th>";
        html += "</tr></thead>\n<tbody>\n";
        const int last = std::min(rows, page * perPage);
        for (int row = (page - 1) * perPage; row < last; ++row) {
            html += "<tr>";
            for (const std::string& cell : table.rows()[static_cast<std::size_t>(row)])
                html += "<td>" + htmlEscaped(cell) + "</td>";
            html += "</tr>\n";
            texts.addRow(row, sum);
            if (events.progress)
                events.progress(row + 1, rows, page, pages);
        }
        html += "</tbody>\n</table>\n";
        appendMarkedLine(html, texts.pageFooter(page, pages, sum), "footer");
        html += "</section>\n";
    }
    html += "</body>\n</html>\n";
    return html;
}

int reportPageCount(int rows, int rowsPerPage)
{
    const int perPage = std::max(1, rowsPerPage);
    return std::max(1, (rows + perPage - 1) / perPage);
}

void writeListReport(const std::filesystem::path& file, const ListTable& table, const ReportOptions& options,
                     const ReportStyle* style, const std::string& today, std::int32_t& sum,
                     const std::function<void(int done, int total, int page, int pages)>& progress,
                     const std::function<void()>& shownEarly)
{
    ReportEvents events;
    events.progress = progress;
    events.showEarly = [&](std::string_view soFar) {
        try {
            writeFileAtomically(file, soFar);
        } catch (const RunError&) {
            return;
        }
        shownEarly();
    };
    writeFileAtomically(file, listReportHtml(table, options, style, today, sum, events));
}

int progressPercent(double value, double minimum, double maximum)
{
    if (maximum <= minimum)
        return 0;
    return static_cast<int>((value - minimum) / (maximum - minimum) * 100.0 + 0.5);
}

std::string todayText()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[16];
    std::strftime(text, sizeof text, "%d.%m.%Y", &local);
    return text;
}

} // namespace zw
