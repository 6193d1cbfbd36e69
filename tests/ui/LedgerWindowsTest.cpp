#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QMenu>
#include <QToolButton>
#include <QTest>
#include <QToolBar>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/RunError.h"
#include "ledger/Currency.h"
#include "ledger/LedgerOperations.h"
#include "ledger/LedgerStore.h"
#include "tests/core/FakeHost.h"
#include "tests/ui/ModalCloser.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/ledger/LedgerCommands.h"
#include "ui/ledger/CashBalanceWindow.h"
#include "ui/ledger/CurrencyWindow.h"
#include "ui/ledger/ReportWindow.h"
#include "ui/ledger/TotalWindow.h"

namespace zw {
namespace {

using F = FormElement;
using ::testing::HasSubstr;
using test::readBytes;

const std::string kLedger = "12.03.2011;1047;119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max Muster;;Beratung;Bonn;;"
                            "Quittung\r\n13.03.2011;1048;;-135,50;USD;7;;;f\xFCnf;Post;;Porto;Bonn;;Ausgabebeleg\r\n";

class LedgerWindowsTest : public test::MainWindowFixture
{
protected:
    LedgerWindowsTest()
    {
        std::ofstream(paths.dataFile("belege.dat"), std::ios::binary) << kLedger;
        settings.save("Zettelwerk", "Options", "Berechnung", "0");
        window->setFaultReporter(recorder);
        part = &join(installLedgerPart);
    }

    QLabel* label(const char* name) { return window->findChild<QLabel*>(name); }

    LedgerPart* part = nullptr;
    test::FaultRecorder recorder;
    std::vector<std::string>& faults = recorder.seen;
};

TEST_F(LedgerWindowsTest, TheGridShowsTheLedgerOnItsOwnTab)
{
    auto* tabs = window->findChild<QTabWidget*>("sevTabStrip1");
    ASSERT_NE(tabs, nullptr);
    EXPECT_EQ(tabs->count(), 2);
    auto* grid = window->findChild<QTableView*>("Grid1");
    ASSERT_NE(grid, nullptr);
    auto* model = grid->model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(1, 8).data().toString(), "fünf");
    EXPECT_EQ(model->index(0, 2).data(Qt::ForegroundRole).value<QColor>(), QColor(0, 255, 0));
    EXPECT_EQ(model->index(1, 3).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
    for (int column = 0; column < 15; ++column) {
        SCOPED_TRACE(column);
        EXPECT_EQ(grid->isColumnHidden(column), column >= 4);
    }
    EXPECT_EQ(grid->currentIndex().row(), 0);
}

// Another program (the command line, a second desk) files beside the window: the window shows its rows once it is
// activated and files its own on top of them. That an edit never writes over a row the other changed is
// LedgerOperationsOnASharedFile's matter.
TEST_F(LedgerWindowsTest, TheWindowAndAnotherProgramLoseNothing)
{
    auto* grid = window->findChild<QTableView*>("Grid1");
    auto* model = grid->model();
    ReceiptLedger other;
    fileReceiptRow(other, {"01.04.2011", "2001"}, paths);
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(window.get(), &activation);
    EXPECT_EQ(model->rowCount(), 3);

    fileReceiptRow(other, {"02.04.2011", "2002"}, paths);
    form.setText(F::Text1, "1049");
    part->fileReceipt();
    EXPECT_EQ(model->rowCount(), 5);
    EXPECT_EQ(model->index(0, 1).data().toString(), "1049");
    EXPECT_EQ(grid->currentIndex().row(), 0);
    EXPECT_EQ(model->index(1, 1).data().toString(), "2002");
    EXPECT_THAT(readBytes(paths.dataFile("belege.dat")), HasSubstr(";2001"));
    EXPECT_TRUE(faults.empty());
}

TEST_F(LedgerWindowsTest, ADoubleClickEditsACellAndReturnSavesIt)
{
    auto* grid = window->findChild<QTableView*>("Grid1");
    window->show();
    window->findChild<QTabWidget*>("sevTabStrip1")->setCurrentIndex(1);
    QApplication::processEvents();
    const QRect cell = grid->visualRect(grid->model()->index(0, 1));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    auto* editor = grid->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, "2000");
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(readBytes(paths.dataFile("belege.dat")).substr(0, 21), "12.03.2011;2000;119,0");
}

TEST_F(LedgerWindowsTest, ShowTakesTheSelectedRowToTheFormTab)
{
    auto* toolbar = window->findChild<QToolBar*>("Coolbar2");
    ASSERT_NE(toolbar, nullptr);
    auto* grid = window->findChild<QTableView*>("Grid1");
    auto* tabs = window->findChild<QTabWidget*>("sevTabStrip1");
    tabs->setCurrentIndex(1);
    grid->setCurrentIndex(grid->model()->index(1, 0));
    toolbar->actions().first()->trigger();
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(form.text(F::Text12), "135,50");
}

TEST_F(LedgerWindowsTest, RefreshingTheTotalsFillsThePanel)
{
    window->findChild<QPushButton*>("Button3")->click();
    EXPECT_EQ(label("Label21")->text(), "119,00");
    EXPECT_EQ(label("Label25")->text(), "-16,50");
    EXPECT_EQ(label("Label25")->palette().color(QPalette::WindowText), QColor(255, 0, 0));

    // A word typed into an amount cell stops the sum; the labels keep what they showed.
    part->ledger().setCell(0, 2, "viel");
    window->findChild<QPushButton*>("Button3")->click();
    EXPECT_EQ(label("Label21")->text(), "119,00");
    EXPECT_THAT(faults, ::testing::ElementsAre("13 Quittung"));
}

// The entry's delete question has the message shape's keys: its "OK" keeps the entry, its "JA" deletes it.
TEST_F(LedgerWindowsTest, DeletingAnEntryAsksInTheMessageShapeAndGoesOnAtJa)
{
    start();
    const std::size_t before = part->ledger().rowCount();
    ASSERT_GT(before, 0u);
    QStringList keys;
    for (const QString answer : {"OK", "JA"}) {
        test::ModalCloser closer([&](QDialog* box) {
            for (auto* key : box->findChildren<QPushButton*>()) {
                keys << key->text();
                if (key->text() == answer)
                    key->click();
            }
        });
        part->runToolbarKey("loeschen");
    }
    EXPECT_EQ(keys, (QStringList{"OK", "JA", "OK", "JA"}));
    EXPECT_EQ(part->ledger().rowCount(), before - 1);
    EXPECT_TRUE(faults.empty());
}

TEST_F(LedgerWindowsTest, DeletingOnAnEmptyGridReachesTheErrorTrap)
{
    part->ledger().assignRows({}, {});
    part->runToolbarKey("loeschen");
    EXPECT_THAT(faults, ::testing::ElementsAre("9 Quittung"));
}

TEST_F(LedgerWindowsTest, SaveAndOpenGoThroughTheFileCommands)
{
    const auto file = folder.path() / "beleg.ZW5";
    part->askFileName = [&](LedgerPart::FileDialog) { return QString::fromStdString(file.string()); };
    form.setText(F::Text7, "Größe €");
    window->action("save")->trigger();
    EXPECT_EQ(settings.get("Zettelwerk", "Options", "Letzter_Beleg", ""), file.string());
    EXPECT_EQ(window->action("men_dat")->text().toStdString(), file.string());
    form.setText(F::Text7, "");
    window->action("men_dat")->trigger();
    EXPECT_EQ(form.text(F::Text7), "Größe €");

    part->askFileName = [&](LedgerPart::FileDialog) { return QString::fromStdString((folder.path() / "x").string()); };
    window->action("oeffnen")->trigger();
    EXPECT_THAT(faults, ::testing::ElementsAre("53 Quittung"));
}

// Every row's block and both files the page is kept in are LedgerReport's matter.
TEST_F(LedgerWindowsTest, TheReportShowsTheLedgerAndItsButtonEmptiesThePage)
{
    ReportWindow report(window.get(), part->ledger(), paths, window->faultReporter());
    EXPECT_THAT(report.browser()->toPlainText().toStdString(),
                HasSubstr("Am 12.03.2011 wurde eine Quittung über 119,00 Euro (Einnahmen) ausgestellt."));
    report.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(report.browser()->toPlainText().trimmed(), "");
    EXPECT_EQ(part->ledger().rowCount(), 2u);
}

TEST_F(LedgerWindowsTest, TheTotalWindowsShowTheirPatterns)
{
    form.setText(F::Text2, "USD");
    TotalWindow income(window.get(), TotalWindow::Kind::Income, part->ledger(), "USD", settings, window->faultReporter());
    EXPECT_EQ(income.label1()->text(), "119,00 USD");
    income.findChild<QPushButton*>("Button1")->click();
    EXPECT_EQ(settings.get("Zettelwerk", "Buchhaltung", "Einnahme", ""), "0");
    CashBalanceWindow cash(window.get(), part->ledger(), "USD", window->faultReporter());
    auto* balance = cash.findChild<QLabel*>("Label5");
    EXPECT_EQ(balance->text(), "--16,50 USD");
    EXPECT_EQ(balance->palette().color(QPalette::WindowText), QColor(255, 0, 0));
}

TEST_F(LedgerWindowsTest, TheCurrencyWindowOffersSuggestionsAndStoresTheCode)
{
    test::FakeHost host;
    CurrencyChoice choice(form, settings, host);
    CurrencyWindow currency(window.get(), choice, paths);
    EXPECT_EQ(currency.waehr()->text(), "EUR");
    QStringList offered;
    for (QAction* action : currency.findChild<QToolButton*>("waehrPopup")->menu()->actions())
        offered << action->text();
    EXPECT_TRUE(offered.contains("USD"));
    currency.waehr()->setText("CHF");
    currency.findChild<QPushButton*>("Command4")->click();
    EXPECT_EQ(form.text(F::Text2), "CHF");
    EXPECT_EQ(settings.get("Zettelwerk", "Waehrung", "waehr.Text", ""), "CHF");
}

} // namespace
} // namespace zw
