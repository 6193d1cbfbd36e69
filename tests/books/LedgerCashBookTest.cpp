#include <QAction>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>
#include <gtest/gtest.h>

#include "tests/books/BooksFixture.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/ledger/LedgerCommands.h"

namespace zw {
namespace {

class LedgerCashBookTest : public test::MainWindowFixture
{
protected:
    LedgerCashBookTest()
    {
        today = localDateOf(std::chrono::system_clock::now()).german();
        std::ofstream(paths.dataFile("belege.dat"), std::ios::binary)
            << today << ";1047;119,00;;EUR;19;100,00;19,00;;Max;;Beratung;Bonn;;Quittung\r\n";
        part = &join(installLedgerPart);
        start();
    }
    std::string today;
    LedgerPart* part = nullptr;
};

TEST_F(LedgerCashBookTest, StornoFromTheToolbarAndAFilingWithItsArchiveCopyAreJournaled)
{
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    answerer.inspect = [](QDialog* box) {
        for (auto* key : box->findChildren<QPushButton*>())
            if (key->text() == "&Ja")
                key->click();
    };
    part->grid()->setCurrentIndex(part->grid()->model()->index(0, 0));
    part->toolbar()->findChild<QAction*>("storno")->trigger();
    ASSERT_TRUE(test::waitFor([&] { return test::journalOperations(paths).size() == 2; }));
    EXPECT_EQ(part->ledger().cell(0, LedgerColumn::von), "Storno zu Beleg 1047: Beratung");

    window->fileReceiptRow({today, "1049", "11,90", "", "EUR", "19", "10,00", "1,90", "elf", "Anna", "", "Tee", "Bonn",
                            "", "Quittung"});
    const auto entries = journalEntries(paths, std::nullopt, std::nullopt);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries.back().operation, JournalOperation::Filing);
    EXPECT_TRUE(std::filesystem::exists(paths.dataFolder() / entries.back().document)) << entries.back().document;
    EXPECT_TRUE(verifyJournal(paths).sound) << verifyJournal(paths).message;
}

// That an edit of a closed day's row is refused is LedgerJournal's matter.
TEST_F(LedgerCashBookTest, AClosedDayRefusesAFilingOnIt)
{
    CashBook book(paths);
    ReceiptLedger other;
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    book.close(other, {parseGermanDate(today).value(), 11900, std::nullopt, "", {}}, test::TextWriter());
    window->fileReceiptRow({today, "1050", "1,00"});
    ASSERT_FALSE(answerer.boxes.empty());
    EXPECT_TRUE(answerer.boxes.back().startsWith("Tagesabschluss: Der " + QString::fromStdString(today) +
                                                 " ist abgeschlossen; auf diesen Tag kann kein Beleg mehr"));
    EXPECT_EQ(part->ledger().rowCount(), 1u);
}

} // namespace
} // namespace zw
