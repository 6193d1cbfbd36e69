#include "books/CashBook.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "core/RunError.h"
#include "ledger/LedgerStore.h"
#include "ledger/Totals.h"
#include "tests/books/BooksFixture.h"

namespace zw {
namespace {

using test::BooksFolder;
using test::messageOf;

TEST(Storno, CounterRowNetsOutIncomeAndExpenseAndKeepsTheOriginal)
{
    BooksFolder folder({test::kIncomeRow, test::kExpenseRow, test::kYesterdayRow});
    folder.book.storno(folder.ledger, "1047");
    folder.book.storno(folder.ledger, "1048");
    ReceiptLedger onDisk;
    loadLedger(onDisk, folder.paths);
    ASSERT_EQ(onDisk.rowCount(), 5u);
    EXPECT_EQ(onDisk.rowText(0), "25.11.2026\t1050\t\t--35,50\tEUR\t7\t-33,18\t-2,32\tfünfunddreißig\tPost\t\t"
                                 "Storno zu Beleg 1048: Porto\tBonn\t\tAusgabebeleg");
    EXPECT_EQ(onDisk.rowText(1), "25.11.2026\t1049\t-119,00\t\tEUR\t19\t-100,00\t-19,00\teinhundertneunzehn\tMax "
                                 "Muster\t\tStorno zu Beleg 1047: Beratung\tBonn\t\tQuittung");
    EXPECT_EQ(onDisk.rowText(2), test::kIncomeRow);
    // What is left is the untouched row of the day before.
    EXPECT_DOUBLE_EQ(incomeSum(onDisk), 100.0);
    EXPECT_DOUBLE_EQ(expenseSum(onDisk), 0.0);
}

// A second Storno of one receipt is refused through the command line (books_cli_check.py).
TEST(Storno, RefusesWhatCannotBeReversedAndWritesNothing)
{
    BooksFolder folder({test::kIncomeRow});
    folder.book.storno(folder.ledger, "1047");
    const std::string before = folder.readBytes("belege.dat");
    const struct
    {
        const char* number;
        const char* message;
    } cases[] = {
        {"999", "Einen Beleg mit der Nummer 999 gibt es in der Belegliste nicht."},
        {"1048", "Der Beleg 1048 ist selbst ein Storno und kann nicht storniert werden."},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(messageOf([&] { folder.book.storno(folder.ledger, row.number); }), row.message);
    }
    EXPECT_EQ(folder.readBytes("belege.dat"), before);
}

// The figures of a close, the note a difference needs and the report's text are checked through the command
// line by books_cli_check.py.
TEST(DailyClose, BooksTheDifferenceArchivesTheReportAndLocksTheDay)
{
    BooksFolder folder({test::kIncomeRow, test::kExpenseRow, test::kYesterdayRow});
    // Opening 100,00 (the day before, no close yet) + 119,00 - 35,50 = 183,50 expected; 180,00 counted.
    const auto result = folder.book.close(
        folder.ledger, {{2026, 11, 25}, 18000, std::nullopt, "Wechselgeld; falsch herausgegeben", {}}, test::TextWriter());
    EXPECT_NE(folder.readBytes(result.report.name).find("Quittung: Beratung"), std::string::npos);
    struct stat status{};
    ::stat((folder.paths.dataFolder() / result.report.name).c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0444u);

    ReceiptLedger onDisk;
    loadLedger(onDisk, folder.paths);
    EXPECT_EQ(onDisk.rowText(0), "25.11.2026\t1049\t\t-3,50\tEUR\t0\t3,50\t0,00\t\t\t\tWechselgeld, falsch "
                                 "herausgegeben\t\t\tKassendifferenz");
    EXPECT_EQ(folder.book.refusalForRow(test::kIncomeRow),
              "Der 25.11.2026 ist abgeschlossen: Einträge abgeschlossener Tage können nicht mehr geändert oder "
              "gelöscht werden. Bitte stornieren Sie den Beleg stattdessen (\"Beleg stornieren\").");
    EXPECT_EQ(folder.book.refusalForRow("26.11.2026\t1\t1,00"), std::nullopt);
    EXPECT_EQ(messageOf([&] { folder.book.storno(folder.ledger, "1047"); }),
              "Der 25.11.2026 ist abgeschlossen; auf diesen Tag kann kein Beleg mehr abgelegt werden.");
    // The counted cash opens the next period.
    EXPECT_EQ(folder.book.preview(onDisk, {2026, 11, 26}).record.opening, 18000);
}

TEST(DailyClose, RefusesADayInTheFutureAndACountThatIsNoWholeNumber)
{
    BooksFolder folder({test::kIncomeRow});
    test::TextWriter writer;
    EXPECT_EQ(messageOf([&] { folder.book.close(folder.ledger, {{2026, 11, 26}, 0, std::nullopt, "", {}}, writer); }),
              "Der 26.11.2026 liegt in der Zukunft und kann noch nicht abgeschlossen werden.");
    const struct
    {
        const char* typed;
        std::int64_t count; // -1: refused
    } counts[] = {{"3", 3}, {"", 0}, {" 12 ", 12}, {"-1", -1}, {"drei", -1}, {"1,5", -1}, {"+2", -1}};
    for (const auto& row : counts) {
        SCOPED_TRACE(row.typed);
        if (row.count >= 0)
            EXPECT_EQ(parseCount(row.typed, 200), row.count);
        else
            EXPECT_EQ(messageOf([&] { parseCount(row.typed, 200); }),
                      std::string("Die Anzahl \"") + std::string(row.typed) + "\" bei 2 EUR ist keine ganze Zahl ab 0.");
    }
    CountSheet sheet;
    sheet.counts = {0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 3}; // 100 EUR, 2 Cent, 3 x 1 Cent
    EXPECT_EQ(sheet.total(), 10005);
}

TEST(CashBook, PrivateRowsAndTheCashMinusWarning)
{
    BooksFolder folder({test::kExpenseRow});
    ReceiptLedger onDisk;
    loadLedger(onDisk, folder.paths);
    EXPECT_EQ(cashMinusWarning(onDisk, 100),
              "Kassenminus: Nach dieser Ausgabe stünde die Kasse bei -36,50. Ein Kassenbestand kann nie unter null "
              "fallen; wahrscheinlich fehlt eine Einnahme oder eine Privateinlage.");
    folder.book.privateRow(folder.ledger, JournalOperation::PrivateDeposit, {2026, 11, 25}, 5000, "");
    loadLedger(onDisk, folder.paths);
    EXPECT_EQ(onDisk.rowText(0), "25.11.2026\t1049\t50,00\t\tEUR\t0\t50,00\t0,00\t\t\t\t\t\t\tPrivateinlage");
    EXPECT_EQ(cashMinusWarning(onDisk, 1450), std::nullopt);
}

} // namespace
} // namespace zw
