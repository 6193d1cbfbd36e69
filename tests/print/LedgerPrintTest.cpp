#include <QPrinter>
#include <QProcess>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "ledger/LedgerOperations.h"
#include "ledger/ReceiptLedger.h"
#include "print/LedgerPrint.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

using ::testing::HasSubstr;

const std::string kLedger = "12.03.2011;1047;119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max Muster;;Beratung;Bonn;;"
                            "Quittung\r\n13.03.2011;1048;;-135,50;USD;7;;;f\xFCnf;Post;;Porto;Bonn;;Ausgabebeleg\r\n";

TEST(LedgerPrintTest, PrintedListsReadBackFromThePdf)
{
    test::TempFolder folder;
    ReceiptLedger ledger;
    std::istringstream bytes(kLedger);
    readLedger(bytes, ledger);
    struct Case
    {
        LedgerList kind;
        const char* title;
        bool hasIncome;
        bool hasExpense;
    };
    const Case cases[] = {{LedgerList::drucken, "Belegliste", true, true},
                          {LedgerList::einnahmen_drucken, "Belegliste nur Einnahmen", true, false},
                          {LedgerList::ausgaben_drucken, "Belegliste nur Ausgaben", false, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.title);
        const auto pdf = folder.path() / "liste.pdf";
        {
            QPrinter printer;
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(QString::fromStdString(pdf.string()));
            printLedgerList(ledgerList(ledger, c.kind), printer);
        }
        QProcess pdftotext;
        pdftotext.start("pdftotext", {"-layout", QString::fromStdString(pdf.string()), "-"});
        ASSERT_TRUE(pdftotext.waitForFinished(20000));
        const std::string text = pdftotext.readAllStandardOutput().toStdString();
        EXPECT_THAT(text, HasSubstr(c.title));
        EXPECT_THAT(text, ::testing::ContainsRegex("Datum: +Beleg-Nr.: +Einnahme: +Ausgabe:"));
        EXPECT_THAT(text, ::testing::ContainsRegex("13.03.2011 +1048"));
        EXPECT_EQ(text.find("119,00") != std::string::npos, c.hasIncome);
        EXPECT_EQ(text.find("-135,50") != std::string::npos, c.hasExpense);
        EXPECT_THAT(text, HasSubstr(std::string(134, '-')));
    }
}

} // namespace
} // namespace zw
