// The PDF and XML exports as the window runs them; poppler judges the PDF.
#include "export/PdfExport.h"
#include "export/XmlExport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include "app/CommonDialog.h"
#include "core/ReceiptForm.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"
#include "tests/core/RunErrorNumber.h"
#include "tests/export/PopplerPage.h"
#include "tests/export/TestPicture.h"

namespace zw {
namespace {

using ::testing::ElementsAre;
using test::readBytes;
using test::toolAvailable;

// A dialog answered as a person would: with a name, or with a cancel.
void answerWith(CommonDialog& dialog, std::optional<std::string> answer, int* shown = nullptr)
{
    dialog.setPresenter([answer, shown](const CommonDialog&, bool) {
        if (shown)
            ++*shown;
        return answer;
    });
}

QImage receiptLikePicture()
{
    const Bitmap picture = test::testPicture(570, 429, test::PictureKind::Areas);
    return QImage(picture.pixels.data(), 570, 429, 570 * 3, QImage::Format_RGB888).copy();
}

LocalDateTime fixedClock() { return {2026, 11, 23, 10, 30, 0}; }

class PdfExportTest : public ::testing::Test
{
protected:
    PdfExportTest() { receiptLikePicture().save(QString::fromStdString(picture.string()), "BMP"); }

    test::TempFolder folder;
    std::filesystem::path picture = folder / "temp.bmp";
    std::filesystem::path saved = folder / "Quittung.pdf";
    CommonDialog dialog;
};

// The steps in the window's list and opening the saved file are judged through the window.
TEST_F(PdfExportTest, ASecondRunStartsAFreshListAndSavesTheSameOnePageDocument)
{
    PdfExport pdf(picture, fixedClock);
    answerWith(dialog, saved.string());
    ASSERT_EQ(pdf.cmdGo(dialog), std::nullopt);
    const std::string first = readBytes(saved);
    EXPECT_NE(first.find("\r/Type /Pages\r/Count 1\r"), std::string::npos);
    ASSERT_EQ(pdf.cmdGo(dialog), std::nullopt);
    EXPECT_THAT(pdf.log(), ElementsAre("Los gehts...", "Seite 1 begonnen...", "Seite 1 beendet.", "Fertig!"));
    EXPECT_EQ(readBytes(saved), first);
}

TEST_F(PdfExportTest, ACancelOrAFailedWriteSavesNothingAndOnlyAFinishedPageEnablesOpen)
{
    struct Row
    {
        const char* name;
        std::optional<std::string> answer;
        int fault;
        std::size_t logLines;
    };
    const Row rows[] = {{"cancelled", std::nullopt, CommonDialog::kCancelNumber, 2},
                        {"missing folder", (folder / "missing" / "x.pdf").string(), 76, 3}};
    const std::vector<std::string> log = {"Los gehts...", "Seite 1 begonnen...", "Seite 1 beendet."};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PdfExport pdf(picture, fixedClock);
        answerWith(dialog, row.answer);
        const auto fault = pdf.cmdGo(dialog);
        ASSERT_TRUE(fault.has_value());
        EXPECT_EQ(fault->number(), row.fault);
        EXPECT_EQ(pdf.log(), std::vector<std::string>(log.begin(), log.begin() + row.logLines));
        EXPECT_EQ(pdf.openEnabled(), row.answer.has_value());
        EXPECT_FALSE(std::filesystem::exists(saved));
    }
}

TEST_F(PdfExportTest, AnUnreadablePictureFaultsBeforeTheDialogShows)
{
    int shown = 0;
    answerWith(dialog, saved.string(), &shown);
    for (const auto& [name, content] : std::vector<std::pair<std::string, std::optional<std::string>>>{
             {"missing", std::nullopt}, {"no bitmap", std::string("GIF89a")}}) {
        SCOPED_TRACE(name);
        std::filesystem::remove(picture);
        if (content)
            test::writeBytes(picture, *content);
        PdfExport pdf(picture, fixedClock);
        EXPECT_THROW(pdf.cmdGo(dialog), RunError);
    }
    EXPECT_EQ(shown, 0);
    EXPECT_FALSE(std::filesystem::exists(saved));
}

TEST_F(PdfExportTest, PopplerShowsThePictureAtTheTopOfAnOtherwiseEmptyPage)
{
    if (!toolAvailable("pdftoppm"))
        GTEST_SKIP() << "poppler-utils is not installed";
    PdfExport pdf(picture, fixedClock);
    answerWith(dialog, saved.string());
    ASSERT_EQ(pdf.cmdGo(dialog), std::nullopt);

    // At 72 dpi a point is a pixel: the page is 596 x 842, the picture fills 566 x 425 of it.
    const Bitmap page = test::renderFirstPage(saved, 72);
    ASSERT_EQ(page.width, 596);
    ASSERT_EQ(page.height, 842);
    const auto channel = [&page](int x, int y, int c) {
        return static_cast<int>(page.pixels[static_cast<std::size_t>((y * page.width + x) * 3 + c)]);
    };

    const QImage source = receiptLikePicture().scaled(566, 425, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double difference = 0;
    for (int y = 0; y < 425; ++y) {
        for (int x = 0; x < 566; ++x) {
            const QRgb expected = source.pixel(x, y);
            difference += std::abs(channel(x, y, 0) - qRed(expected)) +
                          std::abs(channel(x, y, 1) - qGreen(expected)) +
                          std::abs(channel(x, y, 2) - qBlue(expected));
        }
    }
    EXPECT_LT(difference / (566.0 * 425 * 3), 4.0) << "mean difference per channel";
    // Below the picture the page is white.
    for (int y = 430; y < 842; y += 7)
        for (int x = 0; x < 596; x += 11)
            ASSERT_EQ(channel(x, y, 0) + channel(x, y, 1) + channel(x, y, 2), 3 * 255);
}

// The XML bytes are judged by export_cli_check.py, a cancel by the test of cancelled dialogs.
TEST(XmlExport, AFileThatCannotBeWrittenRaisesTheRunTimeFault)
{
    ReceiptForm form;
    test::TempFolder folder;
    CommonDialog dialog;
    answerWith(dialog, (folder / "missing" / "q.xml").string());
    EXPECT_EQ(test::errorNumberOf([&] { alsxml(dialog, form, "w"); }), 76);
}

// The default extension added to a bare name: the bitmap command's window test.
TEST(CommonDialog, KeepsAChosenExtensionAndEmptiesItsNameOnACancelThatFaults)
{
    CommonDialog dialog;
    dialog.DefaultExt = "BMP";
    answerWith(dialog, "/tmp/bild.png");
    dialog.ShowSave();
    EXPECT_EQ(dialog.FileName, "/tmp/bild.png");

    answerWith(dialog, std::nullopt);
    dialog.CancelError = true;
    EXPECT_EQ(test::errorNumberOf([&] { dialog.ShowOpen(); }), 32755);
    EXPECT_EQ(dialog.FileName, "");
}

TEST(CommonDialog, ReadsTheFilterAsPairsOfDescriptionAndPatterns)
{
    EXPECT_THAT(CommonDialog::parseFilter("JPG (*.JPG)|*.JPG|BMP (*.BMP)|*.BMP;*.DIB"),
                ElementsAre(CommonDialog::FilterEntry{"JPG (*.JPG)", {"*.JPG"}},
                            CommonDialog::FilterEntry{"BMP (*.BMP)", {"*.BMP", "*.DIB"}}));
    EXPECT_THAT(CommonDialog::parseFilter("lonely"), ElementsAre());
    EXPECT_THAT(CommonDialog::parseFilter(""), ElementsAre());
}

} // namespace
} // namespace zw
