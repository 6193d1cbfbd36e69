#include "books/YearFigures.h"

#include <algorithm>

#include "books/BookDate.h"
#include "core/GermanNumbers.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '%'))
        text.remove_suffix(1);
    return text;
}

// The row's place is named, since a year's picture reads far more rows than the user looks at.
Cents amountOf(std::string_view cell, std::size_t rowNumber)
{
    try {
        return centsOf(cell);
    } catch (const RunError& error) {
        throw RunError(error.number(), error.description() + ": Zeile " + std::to_string(rowNumber) +
                                           " der Belegliste, \"" + std::string(cell) + "\" ist kein Betrag.");
    }
}

Cents payoutOf(std::string_view cell, std::size_t rowNumber)
{
    // An expense cell holds "-" and the gross amount; that one "-" is dropped as the totals drop it.
    if (!cell.empty() && cell.front() == '-')
        cell.remove_prefix(1);
    return amountOf(cell, rowNumber);
}

// The cells from the date to the VAT share, split in one pass; missing ones are empty.
constexpr std::size_t kCellsRead = static_cast<std::size_t>(columnIndex(LedgerColumn::anteil)) + 1;
std::array<std::string_view, kCellsRead> leadingCells(std::string_view row)
{
    std::array<std::string_view, kCellsRead> cells{};
    std::size_t start = 0;
    for (std::size_t index = 0; index < kCellsRead && start <= row.size(); ++index) {
        const auto tab = row.find('\t', start);
        cells[index] = row.substr(start, tab == std::string_view::npos ? std::string_view::npos : tab - start);
        if (tab == std::string_view::npos)
            break;
        start = tab + 1;
    }
    return cells;
}

std::string_view cellOf(const std::array<std::string_view, kCellsRead>& cells, LedgerColumn column)
{
    return cells[static_cast<std::size_t>(columnIndex(column))];
}

VatAmounts& operator+=(VatAmounts& sum, const VatAmounts& more)
{
    sum.net += more.net;
    sum.vat += more.vat;
    sum.gross += more.gross;
    return sum;
}

} // namespace

Cents YearFigures::takings() const
{
    Cents sum = 0;
    for (const auto& month : months)
        sum += month.takings;
    return sum;
}

Cents YearFigures::payouts() const
{
    Cents sum = 0;
    for (const auto& month : months)
        sum += month.payouts;
    return sum;
}

YearTally::YearTally(int year) { m_figures.year = year; }

RateFigures& YearTally::rateOf(std::string_view rateCell)
{
    if (const auto known = m_rateCells.find(rateCell); known != m_rateCells.end())
        return m_figures.rates[known->second];
    const std::string_view bare = trimmed(rateCell);
    const std::string rate = isNumeric(bare) ? formatNumber(parseAmount(bare)) : std::string(bare);
    const auto [entry, added] = m_rateIndex.try_emplace(rate, m_figures.rates.size());
    if (added)
        m_figures.rates.push_back({rate, {}, {}});
    m_rateCells.emplace(rateCell, entry->second);
    return m_figures.rates[entry->second];
}

void YearTally::add(std::string_view row)
{
    ++m_rows;
    const auto cells = leadingCells(row);
    const auto date = parseGermanDate(cellOf(cells, LedgerColumn::datum));
    if (!date) {
        ++m_figures.undatedRows;
        return;
    }
    auto& years = m_figures.years;
    if (const auto place = std::lower_bound(years.begin(), years.end(), date->year);
        place == years.end() || *place != date->year)
        years.insert(place, date->year);
    if (date->year > m_figures.year)
        return;

    const std::string_view income = cellOf(cells, LedgerColumn::einnahme);
    const std::string_view expense = cellOf(cells, LedgerColumn::ausgabe);
    const Cents taking = amountOf(income, m_rows);
    const Cents payout = payoutOf(expense, m_rows);
    if (date->year < m_figures.year) {
        m_figures.opening += taking - payout;
        return;
    }
    auto& month = m_changes[static_cast<std::size_t>(date->month - 1)];
    month.takings += taking;
    month.payouts += payout;
    if (income.empty() && expense.empty())
        return;

    // Net and VAT belong to the row's one amount; a row given both by hand lends them to its taking.
    const Cents vat = amountOf(cellOf(cells, LedgerColumn::anteil), m_rows);
    const std::string_view netCell = cellOf(cells, LedgerColumn::netto);
    RateFigures& rate = rateOf(cellOf(cells, LedgerColumn::mwst));
    const Cents gross = income.empty() ? payout : taking;
    // A row typed without its net amount still adds up: net is what the VAT leaves of the gross amount.
    const Cents net = netCell.empty() ? gross - vat : amountOf(netCell, m_rows);
    (income.empty() ? rate.payouts : rate.takings) += VatAmounts{net, vat, gross};
    if (!income.empty() && !expense.empty())
        rate.payouts += VatAmounts{payout, 0, payout};
}

YearFigures YearTally::finish() const
{
    YearFigures figures = m_figures;
    Cents balance = figures.opening;
    for (std::size_t month = 0; month < 12; ++month) {
        figures.months[month] = m_changes[month];
        balance += m_changes[month].takings - m_changes[month].payouts;
        figures.months[month].balance = balance;
    }
    std::stable_sort(figures.rates.begin(), figures.rates.end(), [](const RateFigures& a, const RateFigures& b) {
        const bool aNumber = isNumeric(a.rate);
        const bool bNumber = isNumeric(b.rate);
        if (aNumber != bNumber)
            return aNumber;
        return aNumber ? parseAmount(a.rate) > parseAmount(b.rate) : a.rate < b.rate;
    });
    return figures;
}

YearFigures yearFigures(const ReceiptLedger& ledger, int year)
{
    YearTally tally(year);
    for (std::size_t row = 0; row < ledger.rowCount(); ++row)
        tally.add(ledger.rowText(row));
    return tally.finish();
}

std::string euroText(Cents cents) { return formatPattern(static_cast<double>(cents) / 100.0, "#,##0.00"); }

std::string rateCaption(const std::string& rate)
{
    if (rate.empty())
        return "ohne Angabe";
    return isNumeric(rate) ? rate + " %" : rate;
}

const VatTableRow& vatTableCaptions()
{
    static const VatTableRow captions = {"Steuersatz",     "Einnahmen netto", "Umsatzsteuer",   "Einnahmen brutto",
                                         "Ausgaben netto", "Vorsteuer",       "Ausgaben brutto"};
    return captions;
}

std::vector<VatTableRow> vatTableRows(const YearFigures& figures)
{
    std::vector<VatTableRow> rows;
    VatAmounts takings;
    VatAmounts payouts;
    auto rowOf = [](std::string caption, const VatAmounts& in, const VatAmounts& out) {
        return VatTableRow{std::move(caption), euroText(in.net), euroText(in.vat), euroText(in.gross),
                           euroText(out.net),  euroText(out.vat), euroText(out.gross)};
    };
    // Rates beyond the table's rows share one line, so a ledger typed with a new rate in every row still fits.
    VatAmounts otherTakings;
    VatAmounts otherPayouts;
    const bool folded = figures.rates.size() > kVatTableRateRows;
    for (std::size_t index = 0; index < figures.rates.size(); ++index) {
        const auto& rate = figures.rates[index];
        if (folded && index + 1 >= kVatTableRateRows) {
            otherTakings += rate.takings;
            otherPayouts += rate.payouts;
        } else {
            rows.push_back(rowOf(rateCaption(rate.rate), rate.takings, rate.payouts));
        }
        takings += rate.takings;
        payouts += rate.payouts;
    }
    if (folded)
        rows.push_back(rowOf("übrige Sätze", otherTakings, otherPayouts));
    rows.push_back(rowOf("Summe", takings, payouts));
    return rows;
}

} // namespace zw
