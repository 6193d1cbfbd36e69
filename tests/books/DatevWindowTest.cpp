#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QTest>
#include <fstream>
#include <gtest/gtest.h>

#include "tests/app/TempFolder.h"
#include "tests/ui/FixedClock.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/books/DatevPart.h"
#include "ui/books/DatevWindow.h"

namespace zw {

namespace {

using DatevWindowTest = test::StartedWindow<installDatevExport>;

TEST_F(DatevWindowTest, TheRangeIsLastMonthOnTheWindowsClock)
{
    const test::FixedClock clock(QDateTime(QDate(2026, 3, 15), QTime(12, 0)));
    window->setClock(clock);
    test::inModal([this] { window->action("datev")->trigger(); }, [](QDialog& dialog) {
        auto& datev = dynamic_cast<DatevWindow&>(dialog);
        EXPECT_EQ(datev.fromField()->date(), QDate(2026, 2, 1));
        EXPECT_EQ(datev.toField()->date(), QDate(2026, 2, 28));
    });
}

TEST_F(DatevWindowTest, TheStatisticsMenuOpensItAndTheChartBringsItsAccounts)
{
    test::inModal([this] { window->action("datev_statistik")->trigger(); }, [](QDialog& dialog) {
        auto& datev = dynamic_cast<DatevWindow&>(dialog);
        EXPECT_EQ(datev.accountField(DatevAccount::Cash)->text(), "1000");
        QTest::keyClick(datev.chartChoice(), Qt::Key_Down);
        EXPECT_EQ(datev.accountField(DatevAccount::Cash)->text(), "1600");
        EXPECT_EQ(datev.accountField(DatevAccount::Revenue7)->text(), "4300");
        EXPECT_TRUE(datev.automaticSwitch(DatevAccount::Revenue7)->isChecked());
        EXPECT_FALSE(datev.automaticSwitch(DatevAccount::Expense7)->isChecked());
    });
}

TEST_F(DatevWindowTest, ExportTellsAMissingNumberFirstThenAsksForTheFileAndKeepsTheSettings)
{
    std::ofstream(paths.dataFile("belege.dat"), std::ios::binary)
        << "02.01.2026;1047;119,00;;EUR;19;100,00;19,00;;Max;;Beratung;Bonn;;Quittung\r\n";
    const auto target = folder.path() / "EXTF_Januar.csv";
    int asked = 0;
    window->fileDialog("datev").setPresenter([&](const CommonDialog& dialog, bool saving) {
        ++asked;
        EXPECT_TRUE(saving);
        EXPECT_EQ(std::filesystem::path(dialog.FileName).filename(), "EXTF_Buchungsstapel_20260101_20260131.csv");
        return std::optional<std::string>(target.string());
    });
    DatevWindow datev(window.get(), settings, paths, window->fileDialog("datev"), window->clock());
    datev.fromField()->setDate(QDate(2026, 1, 1));
    datev.toField()->setDate(QDate(2026, 1, 31));
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    datev.exportBatch();
    EXPECT_EQ(asked, 0);
    QTest::keyClicks(datev.consultantField(), "29098");
    QTest::keyClicks(datev.clientField(), "55003");
    datev.exportBatch();
    EXPECT_EQ(asked, 1);
    ASSERT_EQ(answerer.boxes.size(), 2u);
    EXPECT_TRUE(answerer.boxes[0].startsWith("DATEV-Export: Bitte tragen Sie die Beraternummer ein"));
    EXPECT_TRUE(answerer.boxes[1].startsWith("DATEV-Export: 1 Buchung nach")) << answerer.boxes[1].toStdString();
    EXPECT_TRUE(test::readBytes(target).starts_with("\"EXTF\";700;21;\"Buchungsstapel\";13;"));
    EXPECT_EQ(settings.get("Zettelwerk", "DATEV", "Beraternummer", ""), "29098");
}

} // namespace
} // namespace zw
