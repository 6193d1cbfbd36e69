#pragma once

#include <string>
#include <string_view>

namespace zw {

class ReceiptLedger;
class Settings;

// The sums of the amount cells, read by the German rules; a cell that is no number throws RunError 13.
// The expense sum is positive: a leading "-" of a cell is dropped.
double incomeSum(const ReceiptLedger& ledger);
double expenseSum(const ReceiptLedger& ledger);

// Both sums gathered row by row, for a caller that passes over the rows without keeping them (the command
// line's totals of a file). Cells are read as the sums above read them.
struct LedgerSums
{
    double income = 0;
    double expense = 0;
    void add(std::string_view tabJoinedRow);
};
LedgerSums ledgerSums(const ReceiptLedger& ledger);

// The panel of Button3: Label21, Label23, Label25 and the currency Label28.
struct PanelTotals
{
    std::string income;
    std::string expense;
    std::string balance;
    bool balanceNegative = false; // red, else the colour of button text
    std::string currency;
};
// Computed whole before anything is shown, so a failing cell leaves the labels as they were.
PanelTotals panelTotals(const ReceiptLedger& ledger, const Settings& settings);
PanelTotals panelTotals(const LedgerSums& sums, const Settings& settings);

// Label1 of ein1 and aus1; the currency is the present Text2 of the main window.
std::string incomeWindowText(const ReceiptLedger& ledger, const std::string& currency);
std::string expenseWindowText(const ReceiptLedger& ledger, const std::string& currency);

// The window kassenstand.
struct CashBalance
{
    std::string income;
    std::string expense;
    std::string balance;
    bool balanceNegative = false;
};
CashBalance cashBalance(const ReceiptLedger& ledger, const std::string& currency);
CashBalance cashBalance(const LedgerSums& sums, const std::string& currency);

// Button1 of ein1 and aus1: the carried totals go to "0"; the ledger is not touched.
void resetCarriedIncome(Settings& settings);
void resetCarriedExpense(Settings& settings);

} // namespace zw
