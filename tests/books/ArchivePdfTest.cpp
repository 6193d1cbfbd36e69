#include "print/ArchivePdf.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

#include "books/DailyClose.h"
#include "core/ReceiptForm.h"
#include "print/Capture.h"
#include "print/FormFonts.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/ProgramFolder.h"

namespace zw {
namespace {

// What a peer program prints for a PDF written to a temporary file.
std::string peerOutput(const std::string& command, const std::string& pdf, const test::TempFolder& folder,
                       const std::string& after = "")
{
    const auto file = folder / "document.pdf";
    test::writeBytes(file, pdf);
    return test::runPeer(command + " '" + file.string() + "'" + after + " 2>&1");
}

TEST(ArchivePdf, TheReceiptIsASmallPdfAWhoseTextPdftotextFinds)
{
    test::ProgramFolder folder;
    Capture capture(folder.paths);
    ReceiptForm form;
    form.setText(FormElement::Text1, "1047");
    form.setText(FormElement::Text12, "119,00");
    form.setText(FormElement::Text5, "Müller & Söhne");
    form.setText(FormElement::Text9, "25.11.2026");
    const std::string pdf = ArchivePdf(capture).receiptPdf(form);
    EXPECT_LT(pdf.size(), 60u * 1024);
    const auto identification = peerOutput("pdfinfo -meta", pdf, folder.folder);
    EXPECT_NE(identification.find("pdfaid:part=\"1\" pdfaid:conformance=\"B\""), std::string::npos) << identification;
    const auto text = peerOutput("pdftotext", pdf, folder.folder, " -");
    for (const char* expected : {"1047", "119,00", "Müller & Söhne", "25.11.2026"})
        EXPECT_NE(text.find(expected), std::string::npos) << expected << " in " << text;
    EXPECT_EQ(peerOutput("qpdf --check", pdf, folder.folder).find("WARNING"), std::string::npos);
}

TEST(ArchivePdf, TheCashReportIsOnePageWithEveryFigure)
{
    test::ProgramFolder folder;
    Capture capture(folder.paths);
    CloseRecord record;
    record.from = record.to = {2026, 11, 25};
    record.opening = 10000;
    record.takings = 11900;
    record.payouts = 3550;
    record.counted = 18000;
    record.note = "Wechselgeld";
    record.sheet = CountSheet{};
    record.sheet->counts[2] = 1; // 100 EUR
    record.sheet->counts[3] = 1; // 50 EUR
    record.sheet->counts[5] = 3; // 3 x 10 EUR
    record.journalHash = std::string(64, 'a');
    std::vector<std::string> rows(70, "25.11.2026\t1047\t119,00\t\tEUR\t19\t100,00\t19,00\t\tMax\t\tBeratung\tBonn\t\tQuittung");
    const std::string pdf = ArchivePdf(capture).pagePdf(cashReportPage(record, rows, {"Muster GmbH"}));
    const auto info = peerOutput("pdfinfo", pdf, folder.folder);
    EXPECT_NE(info.find("Pages:           1\n"), std::string::npos) << info;
    EXPECT_NE(info.find("A4"), std::string::npos) << info;
    const auto text = peerOutput("pdftotext -layout", pdf, folder.folder, " -");
    for (const char* expected : {"Muster GmbH", "Kassenbericht", "25.11.2026", "100,00 EUR", "183,50 EUR", "180,00 EUR",
                                 "-3,50 EUR", "3 x 10 EUR", "Wechselgeld", "Unterschrift", "aaaaaaaa"})
        EXPECT_NE(text.find(expected), std::string::npos) << expected;
    EXPECT_EQ(peerOutput("qpdf --check", pdf, folder.folder).find("WARNING"), std::string::npos);
}

} // namespace
} // namespace zw

// Drawing text needs the font database of a running application.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    zw::installFontSubstitutes();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
