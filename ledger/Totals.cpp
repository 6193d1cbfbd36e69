#include "ledger/Totals.h"

#include <cstdint>
#include <optional>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/GermanNumbers.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

// The common cell "119,00" without the general reader: up to 15 digits with at most two after the comma give the
// same double as parseAmount, since both round the same exact fraction once.
bool readPlainAmount(std::string_view cell, double& value)
{
    bool negative = false;
    if (!cell.empty() && cell.front() == '-') {
        negative = true;
        cell.remove_prefix(1);
    }
    std::int64_t digits = 0;
    int count = 0;
    int decimals = -1;
    for (char c : cell) {
        if (c >= '0' && c <= '9') {
            digits = digits * 10 + (c - '0');
            if (++count > 15)
                return false;
            if (decimals >= 0 && ++decimals > 2)
                return false;
        } else if (c == ',' && decimals < 0 && count > 0) {
            decimals = 0;
        } else {
            return false;
        }
    }
    if (count == 0 || decimals == 0)
        return false;
    if (digits == 0) {
        value = 0.0; // a zero keeps no sign
        return true;
    }
    const double magnitude = static_cast<double>(digits) / (decimals == 2 ? 100.0 : decimals == 1 ? 10.0 : 1.0);
    value = negative ? -magnitude : magnitude;
    return true;
}

// A cell of an amount column; the expense drops its leading "-".
double addCell(double sum, std::string_view cell, bool dropMinus)
{
    if (cell.empty())
        return sum;
    if (dropMinus && cell.starts_with('-'))
        cell.remove_prefix(1);
    double value = 0;
    if (!readPlainAmount(cell, value))
        value = parseAmount(cell);
    return checkedSum(sum, value);
}

double sumColumn(const ReceiptLedger& ledger, LedgerColumn column, bool dropMinus)
{
    double sum = 0;
    ledger.forEachRow([&](std::string_view row) { sum = addCell(sum, rowField(row, column), dropMinus); });
    return sum;
}

struct AmountCells
{
    std::string_view income;
    std::string_view expense;
};

// Both amount cells of a row in one scan from its start, which stops at the tab behind the expense.
AmountCells amountCells(std::string_view row)
{
    static_assert(columnIndex(LedgerColumn::einnahme) == 2 && columnIndex(LedgerColumn::ausgabe) == 3);
    std::size_t tabAt[4] = {};
    int tabs = 0;
    std::size_t at = 0;
#if defined(__SSE2__)
    const __m128i tab = _mm_set1_epi8('\t');
    for (; at + 16 <= row.size() && tabs < 4; at += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row.data() + at));
        for (auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, tab))); mask != 0 && tabs < 4;
             mask &= mask - 1)
            tabAt[tabs++] = at + static_cast<std::size_t>(__builtin_ctz(mask));
    }
#endif
    for (; at < row.size() && tabs < 4; ++at)
        if (row[at] == '\t')
            tabAt[tabs++] = at;
    if (tabs < 2)
        return {};
    const std::size_t incomeStart = tabAt[1] + 1;
    if (tabs == 2)
        return {row.substr(incomeStart), {}};
    const std::size_t expenseStart = tabAt[2] + 1;
    return {row.substr(incomeStart, tabAt[2] - incomeStart),
            tabs == 3 ? row.substr(expenseStart) : row.substr(expenseStart, tabAt[3] - expenseStart)};
}

} // namespace

double incomeSum(const ReceiptLedger& ledger) { return sumColumn(ledger, LedgerColumn::einnahme, false); }

double expenseSum(const ReceiptLedger& ledger) { return sumColumn(ledger, LedgerColumn::ausgabe, true); }

void LedgerSums::add(std::string_view tabJoinedRow)
{
    const AmountCells cells = amountCells(tabJoinedRow);
    expense = addCell(expense, cells.expense, true);
    income = addCell(income, cells.income, false);
}

// One pass over the rows; a ledger with faults in both columns gives the fault of its expense, as when each
// column was summed whole, the expense first.
LedgerSums ledgerSums(const ReceiptLedger& ledger)
{
    LedgerSums sums;
    std::optional<RunError> incomeFault;
    ledger.forEachRow([&](std::string_view row) {
        // The rows lie one after another: asking for those a few ahead hides the wait for memory.
        __builtin_prefetch(row.data() + 1024);
        const AmountCells cells = amountCells(row);
        sums.expense = addCell(sums.expense, cells.expense, true);
        if (incomeFault)
            return;
        try {
            sums.income = addCell(sums.income, cells.income, false);
        } catch (const RunError& fault) {
            incomeFault = fault;
        }
    });
    if (incomeFault)
        throw *incomeFault;
    return sums;
}

PanelTotals panelTotals(const ReceiptLedger& ledger, const Settings& settings)
{
    return panelTotals(ledgerSums(ledger), settings);
}

PanelTotals panelTotals(const LedgerSums& sums, const Settings& settings)
{
    PanelTotals totals;
    const double expense = sums.expense;
    totals.expense = formatPattern(expense, "- 0.00");
    totals.income = formatPattern(sums.income, "0.00");
    // The income comes back from its label, rounded to cents; the expense does not.
    const double balance = checkedDifference(parseAmount(totals.income), expense);
    totals.balanceNegative = balance < 0;
    totals.balance = formatPattern(balance, "0.00");
    totals.currency = settings.get(kApplicationName, "Waehrung", "waehr.Text", "");
    if (totals.currency.empty())
        totals.currency = "EUR";
    return totals;
}

std::string incomeWindowText(const ReceiptLedger& ledger, const std::string& currency)
{
    return formatPattern(incomeSum(ledger), "0.00 " + currency);
}

std::string expenseWindowText(const ReceiptLedger& ledger, const std::string& currency)
{
    return formatPattern(expenseSum(ledger), "-0.00 " + currency);
}

CashBalance cashBalance(const ReceiptLedger& ledger, const std::string& currency)
{
    return cashBalance(ledgerSums(ledger), currency);
}

CashBalance cashBalance(const LedgerSums& sums, const std::string& currency)
{
    const double expense = parseAmount(formatPattern(sums.expense, "0.00"));
    const double income = parseAmount(formatPattern(sums.income, "0.00"));
    CashBalance result;
    result.expense = formatPattern(expense, "-0.00 " + currency);
    result.income = formatPattern(income, "0.00 " + currency);
    const double balance = checkedDifference(income, expense);
    result.balanceNegative = balance < 0;
    // A negative balance keeps its own minus behind the pattern's literal one; the window shows both.
    result.balance = formatPattern(balance, (result.balanceNegative ? "-0.00 " : "0.00 ") + currency);
    return result;
}

void resetCarriedIncome(Settings& settings) { settings.save(kApplicationName, "Buchhaltung", "Einnahme", "0"); }

void resetCarriedExpense(Settings& settings) { settings.save(kApplicationName, "Buchhaltung", "Ausgabe", "0"); }

} // namespace zw
