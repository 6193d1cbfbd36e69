#include "print/PrintCommand.h"

#include <gtest/gtest.h>

#include "core/ReceiptForm.h"
#include "print/Capture.h"
#include "tests/app/ProgramFolder.h"
#include "tests/print/PictureProbe.h"

namespace zw {
namespace {

using F = FormElement;
using Row = std::vector<std::string>;
using test::inkIn;
using test::pixelsOf;

class PrintCommandTest : public ::testing::Test, protected test::ProgramFolder
{
protected:
    PrintCommandTest()
    {
        std::filesystem::create_directories(paths.tempFolder());
        test::writeSolidPicture(paths.home() / "stempel_original.bmp", 116, 37, QColor(0, 160, 0));
        form.setPicture(F::Image3, (paths.home() / "stempel_original.bmp").string());
        form.setText(F::Text1, "00000042");
        form.setText(F::Text9, "23.11.2026");
        form.setText(F::Text12, "119,00");
        form.setText(F::Text10, "100,00");
        form.setText(F::Text11, "19,00");
        form.setText(F::Text4, "einhundertneunzehn");
        form.setText(F::Text5, "Erika Mustermann");
        form.setText(F::Text7, "Miete März");
        form.setText(F::Text8, "Köln");
        form.setText(F::RTFBox, "Muster GmbH\r\nHauptstraße 1");
        form.setText(F::steuernummer2, "12/345/67890");
        form.setText(F::Text14, "Kasse 1");
    }

    Row filedOnce()
    {
        Row filed;
        int calls = 0;
        command.run([&](const Row& row) {
            filed = row;
            ++calls;
        });
        EXPECT_EQ(calls, 1);
        return filed;
    }

    Capture capture{paths};
    ReceiptForm form;
    PrintCommand command{form, paths, capture};
};

TEST_F(PrintCommandTest, ReplacesTheLastBitmapWithTheFormAsA24BitWindowsBitmap)
{
    test::writeBytes(paths.tempFolder() / "temp_.bmp", std::string(100000, 'x'));
    auto file = command.run({});

    ASSERT_EQ(file, paths.tempFolder() / "temp_.bmp");
    EXPECT_EQ(QImage(QString::fromStdString(file.string())).size(), QSize(570, 429));
    // A 54-byte header and rows of 570 * 3 bytes padded to 1712: 24 bits, nothing of the old file left.
    EXPECT_EQ(std::filesystem::file_size(file), 54u + 1712u * 429u);
}

TEST_F(PrintCommandTest, ABlankPrintWithTaxOnShowsHeadingsRateAndStampButNoValues)
{
    form.setPrintLayout(PrintLayout::TwoBlanks);
    QImage photo(QString::fromStdString(command.run({}).string()));
    ASSERT_FALSE(photo.isNull());

    struct Area
    {
        const char* name;
        QRect pixels;
        bool inked;
    };
    const Area areas[] = {
        {"number Text1", {248, 32, 81, 19}, false},         {"gross Text12", {432, 128, 113, 19}, false},
        {"net Text10", {432, 64, 113, 19}, false},          {"share Text11", {432, 96, 113, 19}, false},
        {"words Text4", {24, 176, 521, 19}, false},         {"from Text5", {40, 208, 513, 19}, false},
        {"issuer RTFBox", {24, 72, 297, 73}, false},        {"tax number", {96, 400, 153, 17}, false},
        {"booking note Text14", {16, 352, 257, 41}, false}, {"rate Text3", {344, 96, 33, 17}, true},
        {"caption Label15", {336, 136, 81, 17}, true},      {"caption Label5", {16, 208, 24, 17}, true},
        {"caption Label11", {288, 336, 233, 17}, true},
    };
    for (const Area& area : areas) {
        SCOPED_TRACE(area.name);
        if (area.inked)
            EXPECT_GT(inkIn(photo, area.pixels), 0);
        else
            EXPECT_EQ(inkIn(photo, area.pixels), 0);
    }
    EXPECT_EQ(pixelsOf(photo, QRect(440, 16, 116, 37), qRgb(0, 160, 0)), 116 * 37) << "stamp";
}

// After a run every field and picture shows again, except what the layout wants gone: a blank print keeps the
// issuer hidden and net and share empty.
TEST_F(PrintCommandTest, ARunShowsTheFieldsAgainAndABlankOneKeepsIssuerNetAndShareAway)
{
    struct Row
    {
        PrintLayout layout;
        bool issuerShown;
        const char* net;
        const char* share;
    };
    for (const Row& row : {Row{PrintLayout::OneReceipt, true, "100,00", "19,00"},
                           Row{PrintLayout::OneBlank, false, "", ""}}) {
        SCOPED_TRACE(static_cast<int>(row.layout));
        form.setPrintLayout(row.layout);
        form.setVisible(F::Image6, false);
        form.setVisible(F::Image7, false);
        command.run({});
        for (F element : {F::Text1, F::Text2, F::Text12, F::steuernummer2, F::Image7, F::Text4, F::Text5,
                          F::Text6, F::Text7, F::Text8, F::Text9, F::Text14, F::Image6}) {
            SCOPED_TRACE(std::string(elementName(element)));
            EXPECT_TRUE(form.isVisible(element));
        }
        EXPECT_EQ(form.isVisible(F::RTFBox), row.issuerShown);
        EXPECT_EQ(form.text(F::Text10), row.net);
        EXPECT_EQ(form.text(F::Text11), row.share);
        EXPECT_EQ(form.text(F::Text12), "119,00");
        EXPECT_EQ(form.text(F::Text1), "00000042");
    }
}

TEST_F(PrintCommandTest, FilesTheRowOfIncomeExpenseAndBlankPrintOnlyWithSaveCheck)
{
    form.setSaveCheck(1);
    form.setText(F::Label1, "Quittung");
    const Row income = filedOnce();
    EXPECT_EQ(income, (Row{"23.11.2026", "00000042", "119,00", "", "EUR", "19", "100,00", "19,00",
                           "einhundertneunzehn", "Erika Mustermann", "", "Miete März", "Köln", "Kasse 1",
                           "Quittung"}));

    form.setIncome(0);
    const Row expense = filedOnce();
    EXPECT_EQ(expense[2], "");
    EXPECT_EQ(expense[3], "-119,00");

    // A blank print files the real gross amount, without net and share.
    form.setIncome(1);
    form.setPrintLayout(PrintLayout::TwoBlanks);
    const Row blank = filedOnce();
    EXPECT_EQ(blank[2], "119,00");
    EXPECT_EQ(blank[6], "");
    EXPECT_EQ(blank[7], "");

    form.setSaveCheck(0);
    int calls = 0;
    command.run([&](const Row&) { ++calls; });
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace zw
