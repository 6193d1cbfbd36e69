#include "ledger/LedgerReport.h"

#include <gtest/gtest.h>

#include "ledger/ReceiptLedger.h"
#include "tests/app/ProgramFolder.h"

namespace zw {
namespace {

TEST(LedgerReport, EachRowBecomesItsBlockOfMarkup)
{
    ReceiptLedger ledger;
    ledger.appendRow("12.03.2011\t1047\t119,00\t\tEUR\t19\t\t\t\tMax\tMuster\tBeratung & <Miete>\t\t\tQuittung");
    ledger.appendRow("13.03.2011\t1048\t\t-35,50\tUSD\t7\t\t\t\tPost\t\tPorto\t\t\tAusgabebeleg");
    ledger.appendRow("\t9");
    const std::string expected =
        "<font face=\"Arial\"size=\"4\">Quittung: </font><b><font face=\"Courier New\"size=\"4\">1047</font></b><br>"
        "<font face=\"Arial\"size=\"2\">Am <b><font color=\"#FF0000\">12.03.2011</b></font> wurde eine Quittung über "
        "<b><font color=\"#FF0000\">119,00</b></font> Euro (Einnahmen) ausgestellt.</font><br>"
        "<font face=\"Courier New\"size=\"2\">Von : <b>Max</b><br>Von2: <b>Muster</b><br>Für : <b>Beratung & "
        "<Miete></b></font><hr>"
        "<font face=\"Arial\"size=\"4\">Ausgabebeleg: </font><b><font face=\"Courier New\"size=\"4\">1048</font></b><br>"
        "<font face=\"Arial\"size=\"2\">Am <b><font color=\"#FF0000\">13.03.2011</b></font> wurde eine Quittung über "
        "<b><font color=\"#FF0000\">-35,50</b></font> Euro (Ausgaben) ausgestellt.</font><br>"
        "<font face=\"Courier New\"size=\"2\">Von : <b>Post</b><br>Von2: <b></b><br>Für : <b>Porto</b></font><hr>"
        "<font face=\"Arial\"size=\"4\">: </font><b><font face=\"Courier New\"size=\"4\">9</font></b><br>"
        "<font face=\"Arial\"size=\"2\"><font face=\"Courier New\"size=\"2\">Von : <b></b><br>Von2: <b></b><br>"
        "Für : <b></b></font><hr>";
    EXPECT_EQ(reportHtml(ledger), expected);
    EXPECT_EQ(reportHtml(ReceiptLedger()), "");
}

TEST(LedgerReport, BothFilesHoldThePageAsOneLineAndClearingEmptiesThem)
{
    test::ProgramFolder home;
    const auto shown = writeReport(home.paths, "<b>Für</b>");
    EXPECT_EQ(shown, home.paths.dataFile("last.html").string());
    EXPECT_EQ(home.readBytes("last.html"), "<b>F\xFCr</b>\r\n");
    EXPECT_EQ(home.readBytes("last.rep"), "<b>F\xFCr</b>\r\n");
    clearReport(home.paths);
    EXPECT_EQ(home.readBytes("last.html"), "\r\n");
    EXPECT_EQ(home.readBytes("last.rep"), "\r\n");
}

} // namespace
} // namespace zw
