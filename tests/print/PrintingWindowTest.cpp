#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

#include "tests/print/PictureProbe.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/print/PrintCommands.h"

namespace zw {
namespace {

using test::ModalCloser;

using F = FormElement;

class PrintingWindowTest : public test::MainWindowFixture
{
protected:
    PrintingWindowTest()
    {
        window->setReceiptFiler([this](const std::vector<std::string>& row) { filed.push_back(row); });
        join(installPrinting);
        installPictureExports(exportContext());
        start();
        form.setText(F::Text12, "119,00");
        form.setText(F::Text5, "Erika Mustermann");
    }

    void clickPrint() { QTest::mouseClick(window->findChild<QPushButton*>("xpButton3"), Qt::LeftButton); }

    std::vector<std::vector<std::string>> filed;
};

TEST_F(PrintingWindowTest, ThePrintButtonFilesOnceAPressThenOpensTheDialogWithThePicture)
{
    form.setSaveCheck(1);
    ModalCloser closer;
    clickPrint();
    EXPECT_EQ(closer.seen, std::vector<QString>{"druckmenue2011"});
    EXPECT_EQ(filed.size(), 1u);
    EXPECT_EQ(QImage(QString::fromStdString((paths.tempFolder() / "temp_.bmp").string())).size(), QSize(570, 429));

    // Closing the dialog takes nothing back; a second press files a second row, and the number stays.
    const std::string number = form.text(F::Text1);
    clickPrint();
    EXPECT_EQ(filed.size(), 2u);
    EXPECT_EQ(form.text(F::Text1), number);
}

TEST_F(PrintingWindowTest, AMissingTempFolderGivesAMessageFilesNothingAndKeepsTheForm)
{
    form.setSaveCheck(1);
    form.setPrintLayout(PrintLayout::TwoBlanks);
    std::filesystem::remove_all(paths.tempFolder());
    ModalCloser closer;
    clickPrint();
    EXPECT_EQ(closer.seen, std::vector<QString>{"MessageDialog"});
    ASSERT_EQ(closer.messages.size(), 1u);
    EXPECT_TRUE(closer.messages[0].contains("76")) << closer.messages[0].toStdString();
    EXPECT_TRUE(filed.empty());
    EXPECT_TRUE(form.isVisible(F::Text12));
    EXPECT_TRUE(form.isVisible(F::Text5));
    EXPECT_FALSE(std::filesystem::exists(paths.tempFolder()));
    EXPECT_TRUE(window->findChild<QPushButton*>("xpButton3")->isEnabled());
}

TEST_F(PrintingWindowTest, F9OpensTheIssuerAndAMissingIssuerFileReachesTheErrorWindow)
{
    ModalCloser closer;
    QAction* entry = window->action("aussetller");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->shortcut(), QKeySequence(Qt::Key_F9));
    entry->trigger();
    EXPECT_EQ(closer.seen, std::vector<QString>{"aussteller"});
    std::filesystem::remove(paths.dataFile("aussteller.dat"));
    entry->trigger();
    EXPECT_EQ(closer.seen.back(), "fehlerform") << "a missing issuer file reaches the error window";
}

TEST_F(PrintingWindowTest, TheThreeIssuersTabsAllShow)
{
    test::inModal([&] { window->openWindow("aussteller_pro"); }, [](QDialog& issuers) {
        auto* tabs = issuers.findChild<QTabWidget*>()->tabBar();
        EXPECT_LE(tabs->tabRect(2).right(), tabs->width());
        issuers.reject();
    });
}

TEST_F(PrintingWindowTest, TheStampChoiceReachesThePhotograph)
{
    form.setStampChoice(StampChoice::Original);
    ModalCloser closer;
    clickPrint();
    QImage photo(QString::fromStdString((paths.tempFolder() / "temp_.bmp").string()));
    // The red of the "ORIGINAL" stamp inside the stamp field.
    const auto red = [](QRgb pixel) { return qRed(pixel) > 150 && qGreen(pixel) < 90; };
    EXPECT_GT(test::countIn(photo, QRect(440, 16, 116, 37), red), 100);
}

} // namespace
} // namespace zw
