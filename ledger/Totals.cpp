#include "ledger/Totals.h"

#include "core/GermanNumbers.h"
#include "core/Settings.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

// A cell of an amount column; the expense drops its leading "-".
double addCell(double sum, std::string_view cell, bool dropMinus)
{
    if (cell.empty())
        return sum;
    if (dropMinus && cell.starts_with('-'))
        cell.remove_prefix(1);
    return checkedSum(sum, parseAmount(cell));
}

double sumColumn(const ReceiptLedger& ledger, LedgerColumn column, bool dropMinus)
{
    double sum = 0;
    for (std::size_t row = 0; row < ledger.rowCount(); ++row)
        sum = addCell(sum, ledger.cell(row, column), dropMinus);
    return sum;
}

} // namespace

double incomeSum(const ReceiptLedger& ledger) { return sumColumn(ledger, LedgerColumn::einnahme, false); }

double expenseSum(const ReceiptLedger& ledger) { return sumColumn(ledger, LedgerColumn::ausgabe, true); }

void LedgerSums::add(std::string_view tabJoinedRow)
{
    expense = addCell(expense, rowField(tabJoinedRow, LedgerColumn::ausgabe), true);
    income = addCell(income, rowField(tabJoinedRow, LedgerColumn::einnahme), false);
}

// Each column is summed whole, the expense first, so a ledger with faults in both gives the fault of its expense.
LedgerSums ledgerSums(const ReceiptLedger& ledger)
{
    LedgerSums sums;
    sums.expense = expenseSum(ledger);
    sums.income = incomeSum(ledger);
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
