#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QDate>
#include <QImage>
#include <QTableWidget>
#include <QTest>
#include <fstream>
#include <gtest/gtest.h>

#include "app/CommonDialog.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/Parts.h"
#include "ui/books/YearChartWindow.h"

namespace zw {
namespace {

using YearChartWindowTest = test::StartedWindow<installYearChart>;

TEST_F(YearChartWindowTest, OpensOnThisYearChangesYearAndSavesThePictureByItsKey)
{
    const int year = QDate::currentDate().year();
    std::ofstream(paths.dataFile("belege.dat"), std::ios::binary)
        << "02.01." << year << ";2;;-35,50;EUR;7;33,18;2,32;;Post;;Porto;Bonn;;Ausgabebeleg\r\n"
        << "01.01." << year << ";1;119,00;;EUR;19;100,00;19,00;;Max;;Beratung;Bonn;;Quittung\r\n"
        << "01.07.2020;0;100,00;;EUR;0;100,00;0,00;;Anna;;Einlage;Bonn;;Quittung\r\n";
    const auto target = folder.path() / "auswertung.png";
    window->fileDialog("auswertung_png").setPresenter([&](const CommonDialog&, bool) { return target.string(); });
    test::inModal([this] { window->action("auswertung")->trigger(); }, [&](QDialog& dialog) {
        auto& chart = dynamic_cast<YearChartWindow&>(dialog);
        EXPECT_EQ(chart.yearChooser()->currentText(), QString::number(year));
        EXPECT_EQ(chart.yearChooser()->count(), 2);
        auto* table = chart.vatTable();
        ASSERT_EQ(table->rowCount(), 3); // 19 %, 7 %, Summe
        EXPECT_EQ(table->item(2, 3)->text(), "119,00");
        EXPECT_EQ(table->item(2, 6)->text(), "35,50");

        chart.yearChooser()->setCurrentIndex(chart.yearChooser()->findText("2020"));
        EXPECT_EQ(chart.chartView()->chart()->title(), "Auswertung 2020");
        EXPECT_LE(dialog.minimumSizeHint().height(), 700);
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClick(&dialog, Qt::Key_N, Qt::AltModifier); // Als P&NG speichern...
        // A mnemonic presses its button and lets go a moment later, and only then is it clicked.
        EXPECT_TRUE(test::waitFor([&] { return std::filesystem::exists(target); }));
    });
    const QImage picture(QString::fromStdString(target.string()));
    EXPECT_EQ(picture.size(), QSize(1280, 800));
}

} // namespace
} // namespace zw
