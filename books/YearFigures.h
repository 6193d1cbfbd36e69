#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "books/DailyClose.h"

namespace zw {

class ReceiptLedger;

struct MonthFigures
{
    Cents takings = 0;
    Cents payouts = 0; // positive
    Cents balance = 0; // the cash at the month's end
};

struct VatAmounts
{
    Cents net = 0;
    Cents vat = 0;
    Cents gross = 0;
};

// The rows of one VAT rate; `rate` is the rate cell as the rows hold it, blanks and a "%" dropped.
struct RateFigures
{
    std::string rate;
    VatAmounts takings;
    VatAmounts payouts;
};

// What "Auswertung" shows of one year. The amounts are read as the totals and the daily close read them, so a
// Storno row counts against its original in the month of its own date.
struct YearFigures
{
    int year = 0;
    Cents opening = 0; // the cash at the end of the year before
    std::array<MonthFigures, 12> months{};
    std::vector<RateFigures> rates; // highest rate first, rates that are no number last
    std::vector<int> years;         // every year the ledger has rows of, ascending
    std::size_t undatedRows = 0;    // rows whose date is no day: they belong to no month

    Cents takings() const;
    Cents payouts() const;
};

// Gathers the figures of `year` row by row in one pass, for the window's ledger and for the command line, which
// keeps no rows. Amounts of rows up to the year's end are read; a cell that is no number throws RunError 13.
class YearTally
{
public:
    explicit YearTally(int year);
    void add(std::string_view tabJoinedRow);
    YearFigures finish() const;

private:
    RateFigures& rateOf(std::string_view rateCell);

    YearFigures m_figures;
    std::array<MonthFigures, 12> m_changes{};
    // A rate cell as written and a rate as shown, each to its entry in rates; maps, since a hand-made ledger may
    // hold a different text in every row.
    std::map<std::string, std::size_t, std::less<>> m_rateCells;
    std::map<std::string, std::size_t> m_rateIndex;
    std::size_t m_rows = 0;
};

YearFigures yearFigures(const ReceiptLedger& ledger, int year);

// "1.234,56": amounts of the picture and its table.
std::string euroText(Cents cents);
// "19 %", or the cell as it stands when it is no number ("ohne Angabe" when empty).
std::string rateCaption(const std::string& rate);

// The table of VAT rates under the chart: captions, one row per rate and the sum row, as window and picture show it.
// Beyond kVatTableRateRows rates the last of those rows sums the rest as "übrige Sätze".
inline constexpr std::size_t kVatTableColumns = 7;
inline constexpr std::size_t kVatTableRateRows = 6;
using VatTableRow = std::array<std::string, kVatTableColumns>;
const VatTableRow& vatTableCaptions();
std::vector<VatTableRow> vatTableRows(const YearFigures& figures);

} // namespace zw
