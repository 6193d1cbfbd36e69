#include "books/LedgerJournal.h"

#include <gtest/gtest.h>

#include "books/JournalCheck.h"
#include "ledger/LedgerStore.h"
#include "tests/books/BooksFixture.h"

namespace zw {
namespace {

using test::sha256sum;

// The window's ledger: its store tells the journal of every change under belege.dat's lock.
struct WatchedLedger : test::BooksFolder
{
    WatchedLedger() : BooksFolder({test::kIncomeRow, test::kExpenseRow, test::kYesterdayRow})
    {
        ledger.setWatcher(&journal);
        loadLedger(ledger, paths);
    }
    bool update(const std::function<void(ReceiptLedger&)>& change)
    {
        return updateLedger(ledger, paths, [&](ReceiptLedger& current, const std::vector<LedgerRow>*) {
            change(current);
            return true;
        });
    }
    LedgerJournal journal{book, ledger};
};

TEST(LedgerJournal, EveryChangeOfTheGridIsJournaledWithTheHashOfTheFileAsWritten)
{
    WatchedLedger folder;
    folder.update([](ReceiptLedger& ledger) { ledger.insertRow(0, "26.11.2026\t1049\t5,00"); });
    folder.update([](ReceiptLedger& ledger) { ledger.setCell(1, columnIndex(LedgerColumn::ort), "Köln"); });
    folder.update([](ReceiptLedger& ledger) { ledger.removeRow(2); });
    const auto entries = journalEntries(folder.paths, std::nullopt, std::nullopt);
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[2].before, test::kIncomeRow);
    EXPECT_EQ(entries[2].row, 2);
    EXPECT_EQ(entries.back().ledgerHash, sha256sum(folder.paths.dataFile("belege.dat")));
    folder.update([](ReceiptLedger& ledger) {
        while (ledger.rowCount() > 0)
            ledger.removeRow(0);
    });
    using Op = JournalOperation;
    EXPECT_EQ(test::journalOperations(folder.paths), (std::vector{Op::Start, Op::Filing, Op::Edit, Op::Delete, Op::DeleteAll}));
    EXPECT_EQ(verifyJournal(folder.paths).message, "Journal in Ordnung: 5 Einträge");
}

TEST(LedgerJournal, RowsOfAClosedDayAreRefusedBeforeTheyChangeAndAnOutsideEditIsToldOnce)
{
    WatchedLedger folder;
    test::TextWriter writer;
    ReceiptLedger other;
    folder.book.close(other, {{2026, 11, 25}, 18350, std::nullopt, "", {}}, writer);
    const std::string before = folder.readBytes("belege.dat");
    const struct
    {
        const char* name;
        std::function<void(ReceiptLedger&)> change;
    } refused[] = {
        {"an edited cell", [](ReceiptLedger& ledger) { ledger.setCell(0, 1, "9"); }},
        {"a deleted row", [](ReceiptLedger& ledger) { ledger.removeRow(0); }},
    };
    for (const auto& row : refused) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(test::messageOf([&] { folder.update(row.change); }), closedRowMessage({2026, 11, 25}));
        EXPECT_EQ(folder.readBytes("belege.dat"), before);
        EXPECT_EQ(folder.ledger.rowText(0), test::kIncomeRow);
    }
    folder.writeBytes("belege.dat", before + "26.11.2026;7;1,00\r\n");
    folder.update([](ReceiptLedger& ledger) { ledger.insertRow(0, "26.11.2026\t8\t2,00"); });
    EXPECT_EQ(test::journalOperations(folder.paths).end()[-2], JournalOperation::OutsideChange);
    EXPECT_TRUE(folder.journal.takeOutsideChange());
    EXPECT_FALSE(folder.journal.takeOutsideChange());
    EXPECT_TRUE(verifyJournal(folder.paths).sound) << verifyJournal(folder.paths).message;
}

} // namespace
} // namespace zw
