#include "books/YearFigures.h"

#include <gtest/gtest.h>

#include "books/CashBook.h"

namespace zw {
namespace {

// 2024 opens the cash with 50,00; 2025 has takings, payouts, a Storno of each, a month without rows and an
// undated row; 2026 has no rows; a row of 2027 carries a typo that no earlier year reads. An amount that is no
// number in a year that is read ends the chart command with its row named (year_chart_check.py).
ReceiptLedger sampleLedger()
{
    ReceiptLedger ledger;
    for (const char* row : {"15.12.2024\t1\t50,00\t\tEUR\t0\t50,00\t0,00",
                            "10.01.2025\t2\t119,00\t\tEUR\t19\t100,00\t19,00",
                            "20.01.2025\t3\t\t-10,70\tEUR\t7\t10,00\t0,70",
                            "5.3.2025\t4\t1.070,00\t\tEUR\t7 %\t1.000,00\t70,00",
                            "15.06.2025\t6\t\t-59,50\tEUR\t19\t50,00\t9,50",
                            "heute\t7\t5,00\t\tEUR\t19\t\t",
                            "01.02.2027\t8\tabc\t\tEUR\t19\t\t"})
        ledger.appendRow(row);
    ledger.appendRow(stornoRow(ledger, "2", {2025, 4, 2}));
    ledger.appendRow(stornoRow(ledger, "3", {2025, 4, 3}));
    return ledger;
}

TEST(YearFigures, MonthsCarryTheBalanceAndStornoCountsInItsOwnMonth)
{
    const YearFigures figures = yearFigures(sampleLedger(), 2025);
    EXPECT_EQ(figures.opening, 5000);
    EXPECT_EQ(figures.years, (std::vector<int>{2024, 2025, 2027}));
    EXPECT_EQ(figures.undatedRows, 1u);
    const struct
    {
        int month;
        Cents takings, payouts, balance;
    } cases[] = {
        {1, 11900, 1070, 15830},  {2, 0, 0, 15830},       {3, 107000, 0, 122830},
        {4, -11900, -1070, 112000}, {6, 0, 5950, 106050}, {12, 0, 0, 106050},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.month);
        const auto& month = figures.months[static_cast<std::size_t>(row.month - 1)];
        EXPECT_EQ(month.takings, row.takings);
        EXPECT_EQ(month.payouts, row.payouts);
        EXPECT_EQ(month.balance, row.balance);
    }
    const YearFigures empty = yearFigures(sampleLedger(), 2026);
    EXPECT_EQ(empty.takings(), 0);
    EXPECT_EQ(empty.months[0].balance, 106050);
    EXPECT_EQ(vatTableRows(empty).size(), 1u); // the sum row alone
}

TEST(YearFigures, TheVatTableSplitsEachRateIntoNetVatAndGross)
{
    const auto rows = vatTableRows(yearFigures(sampleLedger(), 2025));
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0], (VatTableRow{"19 %", "0,00", "0,00", "0,00", "50,00", "9,50", "59,50"}));
    EXPECT_EQ(rows[1], (VatTableRow{"7 %", "1.000,00", "70,00", "1.070,00", "0,00", "0,00", "0,00"}));
    EXPECT_EQ(rows[2], (VatTableRow{"Summe", "1.000,00", "70,00", "1.070,00", "50,00", "9,50", "59,50"}));

    // A rate typed differently in every row: the rates beyond the table's rows share one line.
    ReceiptLedger typed;
    for (int rate = 1; rate <= 9; ++rate)
        typed.appendRow("01.01.2025\t1\t1,00\t\tEUR\t" + std::to_string(rate) + "\t1,00\t0,00");
    const auto folded = vatTableRows(yearFigures(typed, 2025));
    ASSERT_EQ(folded.size(), kVatTableRateRows + 1);
    EXPECT_EQ(folded[4][0], "5 %");
    EXPECT_EQ(folded[5], (VatTableRow{"übrige Sätze", "4,00", "0,00", "4,00", "0,00", "0,00", "0,00"}));
    EXPECT_EQ(folded[6][3], "9,00");
}

} // namespace
} // namespace zw
