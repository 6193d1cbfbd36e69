#include "ledger/Totals.h"

#include <gtest/gtest.h>

#include "ledger/ReceiptLedger.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

ReceiptLedger ledgerOf(std::initializer_list<std::pair<const char*, const char*>> amounts)
{
    ReceiptLedger ledger;
    for (auto [income, expense] : amounts)
        ledger.appendRow(std::string("1.1.2020\t1\t") + income + "\t" + expense + "\tEUR");
    return ledger;
}

// The sums of a mixed ledger through the panel and the cash window are checked by ledger_cli_check.py, a negative
// balance in red and a word in an amount cell stopping the sum in the ledger window's tests.
TEST(Totals, SumWindowsAddUpAMixedLedgerAndThePanelShowsTheStoredCurrency)
{
    // Income 119 + 1.000,50 = 1119,50; expense 35,50 + 12,25 typed without minus + 0,05 = 47,80.
    auto ledger = ledgerOf({{"119,00", ""}, {"", "-35,50"}, {"1.000,50", ""}, {"", "12,25"}, {"", "-0,05"}});
    test::MemorySettings settings;
    settings.set("Waehrung", "waehr.Text", "CHF");
    EXPECT_EQ(panelTotals(ledger, settings).currency, "CHF");
    EXPECT_EQ(incomeWindowText(ledger, "EUR"), "1119,50 EUR");
    EXPECT_EQ(expenseWindowText(ledger, "EUR"), "-47,80 EUR");
}

TEST(Totals, AnEmptyLedgerShowsZeros)
{
    ReceiptLedger ledger;
    test::MemorySettings settings;
    const auto panel = panelTotals(ledger, settings);
    EXPECT_EQ(panel.income, "0,00");
    EXPECT_EQ(panel.expense, "- 0,00");
    EXPECT_EQ(panel.balance, "0,00");
}

} // namespace
} // namespace zw
