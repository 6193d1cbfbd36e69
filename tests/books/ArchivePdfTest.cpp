#include "print/ArchivePdf.h"

#include <gtest/gtest.h>

#include "books/DailyClose.h"
#include "print/Capture.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/ProgramFolder.h"

namespace zw {
namespace {

// The archive copy of a filed receipt, and the figures of a close's report, are read by pdfinfo, pdftotext and
// qpdf in books_cli_check.py.
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
    record.sheet = CountSheet{};
    record.sheet->counts[2] = 1; // 100 EUR
    record.sheet->counts[3] = 1; // 50 EUR
    record.sheet->counts[5] = 3; // 3 x 10 EUR
    record.journalHash = std::string(64, 'a');
    std::vector<std::string> rows(70, "25.11.2026\t1047\t119,00\t\tEUR\t19\t100,00\t19,00\t\tMax\t\tBeratung\tBonn\t\tQuittung");
    const std::string file = (folder.folder / "kassenbericht.pdf").string();
    test::writeBytes(file, ArchivePdf(capture).pagePdf(cashReportPage(record, rows, {"Muster GmbH"})));
    const auto info = test::runPeer("pdfinfo '" + file + "'");
    EXPECT_NE(info.find("Pages:           1\n"), std::string::npos) << info;
    EXPECT_NE(info.find("A4"), std::string::npos) << info;
    const auto text = test::runPeer("pdftotext -layout '" + file + "' -");
    for (const char* expected : {"Muster GmbH", "100,00 EUR", "3 x 10 EUR", "Unterschrift", "aaaaaaaa"})
        EXPECT_NE(text.find(expected), std::string::npos) << expected;
    EXPECT_EQ(test::runPeer("qpdf --check '" + file + "' 2>&1").find("WARNING"), std::string::npos);
}

} // namespace
} // namespace zw
