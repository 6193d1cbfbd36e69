#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "lists/ListTable.h"

namespace zw {

// The choices of frmReportSetup ("WebReport-Einstellungen").
struct ReportOptions
{
    std::string title = "Zettelwerk WebReport";
    int rowsPerPage = 250;
    bool carryFormatting = false; // the grid's font and colours into the report
    bool inBrowser = true;        // else in a window of the program
    bool earlyDisplay = false;
};
inline constexpr int kReportRowChoices[] = {100, 200, 250, 500, 1000};

// The grid's look, carried into the report when asked.
struct ReportStyle
{
    std::string fontFamily = "Arial";
    int fontPoints = 9;
    std::string text = "#000000";
    std::string background = "#ffffff";
    std::string heading = "#d4d0c8";
};

struct ReportEvents
{
    std::function<void(int done, int total, int page, int pages)> progress;
    // At the header of page 6 the report so far is shown at once, whatever the option says.
    std::function<void(std::string_view htmlSoFar)> showEarly;
};

// The report's page header, footers and row sum. The article list's sum is a 32-bit integer that rounds at
// every addition (halves to even) and lives as long as the window, so a second report goes on counting.
class ListReportTexts
{
public:
    explicit ListReportTexts(const ListTable& table, std::string today) : m_table(table), m_today(std::move(today))
    {
    }
    std::string pageHeader(int page, int pages) const;
    std::string pageFooter(int page, int pages, std::int32_t sum) const;
    // Adds the row's betrag read as a currency value; an empty betrag or one that is no number adds nothing.
    void addRow(int row, std::int32_t& sum) const;

private:
    const ListTable& m_table;
    std::string m_today;
};

// The whole report as UTF-8 HTML 5, page by page. A text holds the markers of the grid's report: "|" starts
// the second cell of a line, ">" at the start of a cell aligns it right.
std::string listReportHtml(const ListTable& table, const ReportOptions& options, const ReportStyle* style,
                           const std::string& today, std::int32_t& sum, const ReportEvents& events = {});

// The report written to `file` through the atomic replacement. At the header of page 6 the report so far goes
// to the file first and `shownEarly` shows it; an early look that could not be written is passed over, since the
// finished report follows.
void writeListReport(const std::filesystem::path& file, const ListTable& table, const ReportOptions& options,
                     const ReportStyle* style, const std::string& today, std::int32_t& sum,
                     const std::function<void(int done, int total, int page, int pages)>& progress,
                     const std::function<void()>& shownEarly);

// The number of pages: at least one.
int reportPageCount(int rows, int rowsPerPage);
// A finished report is shown unless it was shown early already (early display on, six pages or more).
inline bool shownWhenFinished(const ReportOptions& options, int pages) { return pages < 6 || !options.earlyDisplay; }

// The progress picture's whole percentage for value between minimum and maximum.
int progressPercent(double value, double minimum, double maximum);

// Today as "dd.mm.yyyy" in local time.
std::string todayText();

} // namespace zw
