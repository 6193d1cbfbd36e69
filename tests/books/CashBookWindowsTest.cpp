#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

#include "books/JournalCheck.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/books/CashBookPart.h"
#include "ui/books/DailyCloseWindow.h"
#include "ui/books/JournalWindow.h"

namespace zw {

namespace {

class CashBookWindowsTest : public test::StartedWindow<installCashBook>
{
protected:
    // Yesterday's taking opens the day with 100,00; today 119,00 in and 35,50 out: 183,50 expected.
    void writeLedger()
    {
        const std::string today = localDateOf(std::chrono::system_clock::now()).german();
        std::ofstream(paths.dataFile("belege.dat"), std::ios::binary)
            << today << ";1048;;-35,50;EUR;7;33,18;2,32;;Post;;Porto;Bonn;;Ausgabebeleg\r\n"
            << today << ";1047;119,00;;EUR;19;100,00;19,00;;Max;;Beratung;Bonn;;Quittung\r\n"
            << "01.01.2020;1046;100,00;;EUR;0;100,00;0,00;;Anna;;Verkauf;Bonn;;Quittung\r\n";
    }
};

TEST_F(CashBookWindowsTest, TheCountSheetFindsTheDifferenceAndTheCloseNeedsItsNote)
{
    writeLedger();
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    test::inModal([this] { window->action("tagesabschluss")->trigger(); }, [](QDialog& dialog) {
        auto& close = dynamic_cast<DailyCloseWindow&>(dialog);
        EXPECT_EQ(close.expectedLabel()->text(), "183,50 EUR");
        QTest::keyClicks(close.countField(2), "1");  // 100 EUR
        QTest::keyClicks(close.countField(3), "1");  // 50 EUR
        QTest::keyClicks(close.countField(5), "-3"); // 10 EUR, typed wrong
        EXPECT_FALSE(close.closeButton()->isEnabled());
        close.countField(5)->setText("3");
        EXPECT_EQ(close.differenceLabel()->text(), "-3,50 EUR");
        close.closeButton()->click(); // refused: no note
        QTest::keyClicks(close.noteField(), "Wechselgeld");
        close.closeButton()->click();
    });
    ASSERT_EQ(answerer.boxes.size(), 2u);
    EXPECT_TRUE(answerer.boxes[0].startsWith("Tagesabschluss: Der gezählte Kassenbestand weicht um -3,50 EUR"));
    // That the close is journaled with its archived report is the cash book's and the command line's matter.
    EXPECT_TRUE(answerer.boxes[1].startsWith("Tagesabschluss: Die Kasse ist bis zum "));
}

TEST_F(CashBookWindowsTest, TheJournalWindowListsFiltersAndFindsAHandEdit)
{
    writeLedger();
    CashBook book(paths);
    ReceiptLedger ledger;
    book.storno(ledger, "1047");
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    test::inModal([this] { window->action("aenderungsprotokoll")->trigger(); }, [this](QDialog& dialog) {
        auto& journal = dynamic_cast<JournalWindow&>(dialog);
        EXPECT_EQ(journal.table()->model()->rowCount(), 2);
        EXPECT_EQ(journal.verdict()->text(), "Journal in Ordnung: 2 Einträge");
        journal.fromField()->setText("01.01.2099");
        journal.showEntries();
        EXPECT_EQ(journal.table()->model()->rowCount(), 0);
        journal.fromField()->setText("32.01.2020");
        journal.showEntries();
        std::ofstream(paths.dataFile("belege.dat"), std::ios::app | std::ios::binary) << "x;1;1,00\r\n";
        journal.verify();
        EXPECT_TRUE(journal.verdict()->text().contains("Zeile 5: das Journal erwartet keine Zeile mehr"));
    });
    ASSERT_EQ(answerer.boxes.size(), 1u);
    EXPECT_EQ(answerer.boxes[0], "Änderungsprotokoll: \"32.01.2020\" ist kein Datum der Form TT.MM.JJJJ.");
}

class CashBookStartTest : public test::MainWindowFixture
{
};

TEST_F(CashBookStartTest, ALedgerChangedOutsideSinceTheLastRunIsJournaledAndToldOnce)
{
    std::ofstream(paths.dataFile("belege.dat"), std::ios::binary) << "01.01.2020;1;1,00\r\n";
    CashBook(paths).catchUpNow();
    std::ofstream(paths.dataFile("belege.dat"), std::ios::app | std::ios::binary) << "02.01.2020;2;2,00\r\n";
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    join(installCashBook);
    start();
    ASSERT_TRUE(test::waitFor([&] { return !answerer.boxes.empty(); }));
    EXPECT_EQ(answerer.boxes[0], "Belegliste: Die Belegliste wurde außerhalb von Zettelwerk geändert. Die Änderung "
                                 "ist im Änderungsprotokoll vermerkt.");
    const auto entries = journalEntries(paths, std::nullopt, std::nullopt);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[1].operation, JournalOperation::OutsideChange);
    EXPECT_TRUE(verifyJournal(paths).sound);
}

} // namespace
} // namespace zw
