// The PDF and XML exports as the window runs them; qpdf and poppler judge the PDF, a hand-written file the XML.
#include "export/PdfExport.h"
#include "export/XmlExport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "app/CommonDialog.h"
#include "core/ReceiptForm.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"
#include "tests/core/RunErrorNumber.h"

namespace zw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using test::readBytes;
using test::run;
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

// Blocks of colour like the receipt's areas, and fine black strokes like its writing.
QImage receiptLikePicture()
{
    QImage image(570, 429, QImage::Format_RGB32);
    image.fill(QColor(255, 250, 220));
    QPainter painter(&image);
    painter.fillRect(0, 0, 570, 60, QColor(40, 90, 160));
    painter.fillRect(300, 120, 250, 120, QColor(200, 40, 40));
    painter.fillRect(20, 300, 200, 100, QColor(30, 150, 60));
    painter.setPen(Qt::black);
    for (int x = 30; x < 280; x += 9)
        painter.drawLine(x, 180, x + 5, 205);
    return image;
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

TEST_F(PdfExportTest, EachRunTellsEveryStepAndSavesTheSamePage)
{
    PdfExport pdf(picture, fixedClock);
    int repaints = 0;
    pdf.logChanged = [&] { ++repaints; };
    answerWith(dialog, saved.string());
    EXPECT_EQ(pdf.cmdGo(dialog), std::nullopt);
    EXPECT_THAT(pdf.log(), ElementsAre("Los gehts...", "Seite 1 begonnen...", "Seite 1 beendet.", "Fertig!"));
    EXPECT_EQ(repaints, 4);
    EXPECT_TRUE(pdf.openEnabled());
    EXPECT_EQ(dialog.DialogTitle, "PDF-Export");
    EXPECT_EQ(dialog.Filter, "Adobe Acrobat Reader (*.pdf)|*.pdf");

    // The file is most of a megabyte: look for each piece without printing the whole on failure.
    const std::string bytes = readBytes(saved);
    const auto has = [&bytes](const std::string& piece) { return bytes.find(piece) != std::string::npos; };
    EXPECT_EQ(bytes.substr(0, 9), "%PDF-1.1\r");
    for (const char* piece : {"6 0 obj\r<<\r/Type /Page\r/Parent 3 0 R\r/Resources 5 0 R\r/Contents 7 0 R\r",
                              "7 0 obj\r<<\r/Length 8 0 R\r>>\rstream\r",
                              "3 0 obj\r<<\r/Type /Pages\r/Count 1\r/MediaBox [0 0 596 842]\r/Kids [ 6 0 R ]\r",
                              "\rxref\r0 9\r", "/Size 9"})
        EXPECT_TRUE(has(piece)) << piece;

    std::string blankLines;
    for (int i = 0; i < 40; ++i)
        blankLines += "()'\r";
    const std::string head = "stream\rS\rBT\r/F1 10 Tf\r80 782 Td\r10 TL\r" + blankLines +
                             "ET\rq\r566 0 0 425 0 417 cm\rBI\r/W 570\r/H 429\r/BPC 8\r/CS /RGB\rID ";
    EXPECT_TRUE(has(head));
    // Rows of three-byte pixels give the run-length coder no runs to win: the data is raw, 570 * 429 * 3 bytes.
    const auto data = bytes.find(head) + head.size();
    EXPECT_EQ(bytes.substr(data + 570 * 429 * 3, 17), ">\rEI\rQ\rendstream\r");

    // A second run starts a fresh list and document.
    pdf.cmdGo(dialog);
    EXPECT_THAT(pdf.log(), ElementsAre("Los gehts...", "Seite 1 begonnen...", "Seite 1 beendet.", "Fertig!"));
    EXPECT_EQ(readBytes(saved), bytes);
}

TEST_F(PdfExportTest, ACancelledDialogWritesNothingAndKeepsTheOpenButtonOff)
{
    PdfExport pdf(picture, fixedClock);
    answerWith(dialog, std::nullopt);
    const auto fault = pdf.cmdGo(dialog);
    ASSERT_TRUE(fault.has_value());
    EXPECT_EQ(fault->number(), CommonDialog::kCancelNumber);
    EXPECT_THAT(pdf.log(), ElementsAre("Los gehts...", "Seite 1 begonnen..."));
    EXPECT_FALSE(pdf.openEnabled());
    EXPECT_FALSE(std::filesystem::exists(saved));
}

TEST_F(PdfExportTest, AFailedWriteIsSilentButThePageWasFinished)
{
    PdfExport pdf(picture, fixedClock);
    answerWith(dialog, (folder / "missing" / "x.pdf").string());
    const auto fault = pdf.cmdGo(dialog);
    ASSERT_TRUE(fault.has_value());
    EXPECT_EQ(fault->number(), 76);
    EXPECT_THAT(pdf.log(), ElementsAre("Los gehts...", "Seite 1 begonnen...", "Seite 1 beendet."));
    EXPECT_TRUE(pdf.openEnabled());
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

struct Ppm
{
    int width = 0;
    int height = 0;
    std::string pixels;
    int channel(int x, int y, int c) const
    {
        return static_cast<unsigned char>(pixels[static_cast<std::size_t>((y * width + x) * 3 + c)]);
    }
};

Ppm readPpm(const std::filesystem::path& file)
{
    const std::string bytes = readBytes(file);
    std::istringstream header(bytes);
    std::string magic;
    Ppm ppm;
    int maximum = 0;
    header >> magic >> ppm.width >> ppm.height >> maximum;
    ppm.pixels = bytes.substr(static_cast<std::size_t>(header.tellg()) + 1);
    return ppm;
}

TEST_F(PdfExportTest, PopplerShowsThePictureAtTheTopOfAnOtherwiseEmptyPage)
{
    if (!toolAvailable("pdftoppm") || !toolAvailable("qpdf"))
        GTEST_SKIP() << "poppler-utils or qpdf is not installed";
    PdfExport pdf(picture, fixedClock);
    answerWith(dialog, saved.string());
    ASSERT_EQ(pdf.cmdGo(dialog), std::nullopt);

    const auto check = run("qpdf --check '" + saved.string() + "' 2>&1");
    EXPECT_EQ(check.exitCode, 3) << check.output;
    EXPECT_THAT(check.output, HasSubstr("stream keyword followed by carriage return only"));
    EXPECT_THAT(check.output, Not(HasSubstr("error")));

    // At 72 dpi a point is a pixel: the page is 596 x 842, the picture fills 566 x 425 of it.
    const auto prefix = folder / "page";
    const auto render = run("pdftoppm -r 72 -singlefile '" + saved.string() + "' '" + prefix.string() + "' 2>&1");
    ASSERT_EQ(render.exitCode, 0);
    EXPECT_EQ(render.output, "");
    const Ppm page = readPpm(prefix.string() + ".ppm");
    ASSERT_EQ(page.width, 596);
    ASSERT_EQ(page.height, 842);

    const QImage source = receiptLikePicture().scaled(566, 425, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double difference = 0;
    for (int y = 0; y < 425; ++y) {
        for (int x = 0; x < 566; ++x) {
            const QRgb expected = source.pixel(x, y);
            difference += std::abs(page.channel(x, y, 0) - qRed(expected)) +
                          std::abs(page.channel(x, y, 1) - qGreen(expected)) +
                          std::abs(page.channel(x, y, 2) - qBlue(expected));
        }
    }
    EXPECT_LT(difference / (566.0 * 425 * 3), 4.0) << "mean difference per channel";
    // Well inside each block the colour is exact.
    const std::vector<std::tuple<int, int, QColor>> probes = {
        {280, 30, QColor(40, 90, 160)}, {420, 180, QColor(200, 40, 40)}, {100, 350, QColor(30, 150, 60)}};
    for (const auto& [x, y, colour] : probes) {
        SCOPED_TRACE(std::to_string(x) + "," + std::to_string(y));
        EXPECT_NEAR(page.channel(x, y, 0), colour.red(), 2);
        EXPECT_NEAR(page.channel(x, y, 1), colour.green(), 2);
        EXPECT_NEAR(page.channel(x, y, 2), colour.blue(), 2);
    }
    // Below the picture the page is white.
    for (int y = 430; y < 842; y += 7)
        for (int x = 0; x < 596; x += 11)
            ASSERT_EQ(page.channel(x, y, 0) + page.channel(x, y, 1) + page.channel(x, y, 2), 3 * 255);
}

// The form filled as a person would, every field different.
void fillForm(ReceiptForm& form)
{
    using F = FormElement;
    const std::vector<std::pair<FormElement, std::string>> values = {
        {F::Text12, "119,00"},        {F::Label1, "Quittung"},     {F::Text1, "00000042"},
        {F::Text2, "EUR"},            {F::Text3, "19"},            {F::Text10, "100,00"},
        {F::Text11, "19,00"},         {F::Text4, "einhundertneunzehn"},
        {F::Text5, "Müller & Söhne"}, {F::Text6, ""},              {F::Text7, "Miete <März>"},
        {F::Text8, "Köln"},           {F::Text9, "23.11.2026"},    {F::Text14, "Kasse 1"}};
    for (const auto& [element, value] : values)
        form.setText(element, value);
}

TEST(XmlExport, TheBytesAreTheHandWrittenFile)
{
    ReceiptForm form;
    fillForm(form);
    const std::string expected =
        "<?xml version=\"1.0\"?>\r\n"
        "<GENERATOR>Zettelwerk V6.0.0 (https://www.zettelwerk.example/)</GENERATOR>\r\n"
        "<Quittung>\r\n"
        "     <Belegart>\r\n     Quittung\r\n     </Belegart>\r\n"
        "     <Nummer>\r\n     00000042\r\n     </Nummer>\r\n"
        "     <Waehrung>\r\n     EUR\r\n     </Waehrung>\r\n"
        "     <MwSt>\r\n     19\r\n     </MwSt>\r\n"
        "     <Netto>\r\n     100,00\r\n     </Netto>\r\n"
        "     <MwSt_Anteil>\r\n     19,00\r\n     </MwSt_Anteil>\r\n"
        "     <Brutto>\r\n     119,00\r\n     </Brutto>\r\n"
        "     <Betrag_in_Worte>\r\n     einhundertneunzehn\r\n     </Betrag_in_Worte>\r\n"
        "     <Von_Zeile_1>\r\n     M\xFCller & S\xF6hne\r\n     </Von_Zeile_1>\r\n"
        "     <Von_Zeile_2>\r\n     \r\n     </Von_Zeile_2>\r\n"
        "     <Fuer>\r\n     Miete <M\xE4rz>\r\n     </Fuer>\r\n"
        "     <Ort>\r\n     K\xF6ln\r\n     </Ort>\r\n"
        "     <Datum>\r\n     23.11.2026\r\n     </Datum>\r\n"
        "     <Buchungsvermerk>\r\n     Kasse 1\r\n     </Buchungsvermerk>\r\n"
        "</Quittung>\r\n";
    EXPECT_EQ(receiptXmlBytes(form, "https://www.zettelwerk.example/"), expected);
}

TEST(XmlExport, TheSharedDialogsKeptNameDecidesWhereACancelledExportGoes)
{
    ReceiptForm form;
    fillForm(form);
    test::TempFolder folder;
    CommonDialog dialog;
    answerWith(dialog, std::nullopt);
    alsxml(dialog, form, "w");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path())) << "no name yet: nothing written";

    dialog.DefaultExt = "BMP"; // left behind by the bitmap export
    answerWith(dialog, (folder / "first").string());
    alsxml(dialog, form, "w");
    EXPECT_EQ(dialog.Filter, "XML Datei (*.XML)|*.XML");
    EXPECT_TRUE(std::filesystem::exists(folder / "first")) << "no extension added";
    EXPECT_EQ(readBytes(folder / "first"), receiptXmlBytes(form, "w"));
    answerWith(dialog, (folder / "first.xml").string());
    alsxml(dialog, form, "w");
    std::filesystem::remove(folder / "first.xml");
    answerWith(dialog, std::nullopt);
    alsxml(dialog, form, "w");
    EXPECT_TRUE(std::filesystem::exists(folder / "first.xml")) << "a cancel writes to the earlier name";
}

TEST(XmlExport, AFileThatCannotBeWrittenRaisesTheRunTimeFault)
{
    ReceiptForm form;
    test::TempFolder folder;
    CommonDialog dialog;
    answerWith(dialog, (folder / "missing" / "q.xml").string());
    EXPECT_EQ(test::errorNumberOf([&] { alsxml(dialog, form, "w"); }), 76);
}

TEST(CommonDialog, KeepsItsNameOnCancelAndAddsTheDefaultExtension)
{
    CommonDialog dialog;
    dialog.DefaultExt = "BMP";
    answerWith(dialog, "/tmp/bild");
    dialog.ShowSave();
    EXPECT_EQ(dialog.FileName, "/tmp/bild.BMP");
    answerWith(dialog, "/tmp/bild.png");
    dialog.ShowSave();
    EXPECT_EQ(dialog.FileName, "/tmp/bild.png");

    answerWith(dialog, std::nullopt);
    dialog.ShowSave();
    EXPECT_EQ(dialog.FileName, "/tmp/bild.png");
    dialog.CancelError = true;
    EXPECT_EQ(test::errorNumberOf([&] { dialog.ShowOpen(); }), 32755);
    EXPECT_EQ(dialog.FileName, "/tmp/bild.png");
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
