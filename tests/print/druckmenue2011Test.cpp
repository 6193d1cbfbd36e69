#include "ui/print/druckmenue2011.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "tests/app/TempFolder.h"
#include "tests/core/FakeHost.h"
#include "tests/print/PictureProbe.h"

namespace zw {
namespace {

class PrintDialogTest : public ::testing::Test
{
protected:
    PrintDialogTest() : paths(folder.path())
    {
        test::writeSolidPicture(paths.tempFolder() / "temp_.bmp", 570, 429, QColor(0, 0, 0));
        form.setAbstand("20");
        form.setOben("30");
        form.setAnzahl("1");
    }

    QString pdfOf(int run) const
    {
        return QString::fromStdString((folder / ("druck" + std::to_string(run) + ".pdf")).string());
    }
    std::unique_ptr<druckmenue2011> open()
    {
        auto dialog = std::make_unique<druckmenue2011>(form, settings, paths, QString(),
                                                       PrintJob([this](int run) { return pdfOf(run); }));
        dialog->reportFault = [this](const RunError& error) { faults.push_back(error.number()); };
        return dialog;
    }
    template <typename T> static T* child(druckmenue2011& dialog, const char* name)
    {
        T* found = dialog.findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    static QString text(druckmenue2011& dialog, const char* name) { return child<QLineEdit>(dialog, name)->text(); }
    std::string option(const char* key) { return settings.get(kApplicationName, "Options", key, "<none>"); }

    test::TempFolder folder;
    ProgramPaths paths;
    ReceiptForm form;
    test::MemorySettings settings;
    std::vector<int> faults;
};

TEST_F(PrintDialogTest, OpensAtA4MediumAndMonochromeWithThePositionsOfTheForm)
{
    auto dialog = open();
    EXPECT_TRUE(child<QRadioButton>(*dialog, "DIN_0")->isChecked());
    EXPECT_TRUE(child<QRadioButton>(*dialog, "Farbmodus_0")->isChecked());
    EXPECT_EQ(child<QComboBox>(*dialog, "Combo_Qualitaet")->currentText(), "Medium");
    EXPECT_EQ(text(*dialog, "txtxPos"), "20");
    EXPECT_EQ(text(*dialog, "txtyPos"), "30");
    EXPECT_TRUE(child<QLineEdit>(*dialog, "txtxSize")->isReadOnly());
}

TEST_F(PrintDialogTest, ThePaperOptionsFillTheSizeAndSecondReceiptFields)
{
    auto dialog = open();
    struct Row
    {
        const char* option;
        const char* width;
        const char* height;
        bool locked;
        const char* secondTop;
    };
    for (const Row& row : {Row{"DIN_1", "111", "90", true, "110"}, Row{"DIN_2", "", "", false, "160"},
                           Row{"DIN_0", "", "", true, "160"}}) {
        SCOPED_TRACE(row.option);
        QTest::mouseClick(child<QRadioButton>(*dialog, row.option), Qt::LeftButton);
        EXPECT_EQ(text(*dialog, "txtxSize"), row.width);
        EXPECT_EQ(text(*dialog, "txtySize"), row.height);
        EXPECT_EQ(child<QLineEdit>(*dialog, "txtySize")->isReadOnly(), row.locked);
        EXPECT_EQ(text(*dialog, "txtVonOben"), row.secondTop);
    }
}

TEST_F(PrintDialogTest, ColourAndCloseSwitchesAreStoredAtOnceAndTakeEffectAtTheNextOpening)
{
    {
        auto dialog = open();
        QTest::mouseClick(child<QRadioButton>(*dialog, "Farbmodus_1"), Qt::LeftButton);
        EXPECT_EQ(option("Farbmodus_sw"), "False");
        EXPECT_EQ(option("Farbmodus_farbe"), "True");
        QTest::mouseClick(child<QCheckBox>(*dialog, "Fenster_Close"), Qt::LeftButton);
        EXPECT_EQ(option("Druckfenster"), "1");
    }
    auto again = open();
    EXPECT_TRUE(child<QRadioButton>(*again, "Farbmodus_1")->isChecked());
    EXPECT_FALSE(child<QRadioButton>(*again, "Farbmodus_0")->isChecked());
    EXPECT_TRUE(child<QCheckBox>(*again, "Fenster_Close")->isChecked());
    // The close switch ends the window after printing.
    again->show();
    QTest::mouseClick(child<QPushButton>(*again, "cmdPrint"), Qt::LeftButton);
    EXPECT_FALSE(again->isVisible());
    EXPECT_EQ(again->result(), QDialog::Accepted);
}

TEST_F(PrintDialogTest, PrintsOneJobPerRunAndStaysOpenToPrintAgain)
{
    form.setAnzahl("2");
    form.setPrintLayout(PrintLayout::TwoReceipts);
    auto dialog = open();
    dialog->show();
    child<QLineEdit>(*dialog, "txtVonOben")->setText("50");
    QTest::mouseClick(child<QPushButton>(*dialog, "cmdPrint"), Qt::LeftButton);

    EXPECT_TRUE(faults.empty());
    EXPECT_TRUE(QFile::exists(pdfOf(1)));
    EXPECT_TRUE(QFile::exists(pdfOf(2)));
    EXPECT_FALSE(QFile::exists(pdfOf(3)));
    EXPECT_EQ(text(*dialog, "txtVonOben"), "160") << "the paper decides the second receipt's place";
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(child<QPushButton>(*dialog, "cmdPrint")->isEnabled());
}

TEST_F(PrintDialogTest, AnEmptyCountIsReportedPrintsNothingAndLeavesTheWindowUsable)
{
    form.setAnzahl("");
    auto dialog = open();
    dialog->show();
    QTest::mouseClick(child<QPushButton>(*dialog, "cmdPrint"), Qt::LeftButton);
    EXPECT_EQ(faults, std::vector<int>{13});
    EXPECT_FALSE(QFile::exists(pdfOf(1)));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(child<QPushButton>(*dialog, "cmdPrint")->isEnabled());
}

} // namespace
} // namespace zw
