#include "lists/ListTable.h"

#include <gtest/gtest.h>

#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "lists/ListReport.h"
#include "tests/app/LockProbe.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

using F = FormElement;
using test::writeBytes;

TEST(ListTableTest, LoadsLinesIntoCellsAndSavesWithoutLosingAField)
{
    struct Row
    {
        const char* name;
        const ListKind& kind;
        std::string file;
        std::vector<std::vector<std::string>> cells;
        std::string saved;
    };
    const Row rows[] = {
        {"two cells", payerList(), "Meier;Hauptstr. 1\r\n", {{"Meier", "Hauptstr. 1"}}, "Meier;Hauptstr. 1\r\n"},
        {"extra fields stay in the last cell", payerList(), "a;b;c\r\n", {{"a", "b;c"}}, "a;b;c\r\n"},
        {"missing fields are empty, empty lines go", payerList(), "a\r\n\r\nb;c", {{"a", ""}, {"b", "c"}},
         "a;\r\nb;c\r\n"},
        {"Windows-1252 in, UTF-8 inside", payerList(), "M\xfcller;\x80\r\n", {{"Müller", "€"}}, "M\xfcller;\x80\r\n"},
        {"betrag through #####.##", articleList(), "Buch;12,5;7\r\nx;abc;19\r\n",
         {{"Buch", "12,5", "7"}, {"x", "abc", "19"}}, "Buch;12,5;7\r\nx;abc;19\r\n"},
        {"betrag rounded", articleList(), "Tee;3,456;7\r\n", {{"Tee", "3,46", "7"}}, "Tee;3,46;7\r\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test::TempFolder folder;
        writeBytes(folder / "list.txt", row.file);
        ListTable table(row.kind);
        table.load(folder / "list.txt");
        EXPECT_EQ(table.rows(), row.cells);
        table.save(folder / "list.txt");
        EXPECT_EQ(test::readBytes(folder / "list.txt"), row.saved);
    }
}

TEST(ListTableTest, AListThatCouldNotBeReadIsNeverWrittenOver)
{
    test::TempFolder folder;
    std::filesystem::create_directory(folder / "von_liste.txt");
    ListTable table(payerList());
    EXPECT_THROW(table.load(folder / "von_liste.txt"), RunError);
    table.insertRow(0);
    EXPECT_THROW(table.save(folder / "von_liste.txt"), RunError);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "von_liste.txt"));
}

TEST(ListTableTest, TakingOverARowFillsTheReceiptAndComputesFromNetOrGross)
{
    ListTable articles(articleList());
    articles.insertRow(0);
    articles.setCell(0, 0, "Fachbuch");
    articles.setCell(0, 1, "119");
    articles.setCell(0, 2, "19");
    ReceiptForm gross;
    takeOverRow(articles, 0, true, gross);
    EXPECT_EQ(gross.text(F::Text7), "Fachbuch");
    EXPECT_EQ(gross.text(F::Text12), "119,00");
    EXPECT_EQ(gross.text(F::Text10), "100,00");
    EXPECT_EQ(gross.text(F::Text11), "19,00");
    EXPECT_FALSE(gross.text(F::Text4).empty());

    ReceiptForm net;
    takeOverRow(articles, 0, false, net);
    EXPECT_EQ(net.text(F::Text10), "119,00");
    EXPECT_EQ(net.text(F::Text12), "141,61");

    articles.setCell(0, 1, "abc");
    ReceiptForm bad;
    EXPECT_THROW(takeOverRow(articles, 0, true, bad), RunError);
}

// What a browser shows of the report: the text of the HTML, one cell per line, right-aligned cells marked ">".
std::string shownText(const std::string& html)
{
    test::TempFolder folder;
    writeBytes(folder / "r.htm", html);
    return test::runPeer("python3 -c '\n"
                         "import sys\nfrom html.parser import HTMLParser\n"
                         "class P(HTMLParser):\n"
                         "  right=False\n"
                         "  def handle_starttag(s,t,a):\n"
                         "    if t==\"td\": s.right=(\"class\",\"r\") in a\n"
                         "  def handle_data(s,d):\n"
                         "    if d.strip() and s.lasttag in (\"td\",\"h1\"): print((\">\" if s.lasttag==\"td\" and s.right else \"\")+d)\n"
                         "P().feed(open(sys.argv[1],encoding=\"utf-8\").read())' " +
                         (folder / "r.htm").string());
}

TEST(ListReportTest, FootersCountTheRowsAndSumTheAmountsPageByPage)
{
    ListTable payers(payerList());
    for (int i = 0; i < 3; ++i)
        payers.insertRow(0);
    std::int32_t sum = 0;
    const std::string payerReport = shownText(listReportHtml(payers, {}, nullptr, "24.11.2026", sum));
    EXPECT_NE(payerReport.find("Seite 1 von 1\n>Stand: 24.11.2026\n"), std::string::npos) << payerReport;
    EXPECT_TRUE(payerReport.ends_with("Anzahl Datensätze: 3\n")) << payerReport;

    ListTable articles(articleList());
    for (const char* amount : {"0,5", "1,5", "2,5"}) {
        articles.insertRow(articles.rowCount());
        articles.setCell(articles.rowCount() - 1, 1, amount);
    }
    ReportOptions twoPages;
    twoPages.rowsPerPage = 2;
    const std::string report = shownText(listReportHtml(articles, twoPages, nullptr, "24.11.2026", sum));
    // 0 + 0.5 -> 0, + 1.5 -> 2, + 2.5 -> 4: every addition rounds halves to even.
    EXPECT_NE(report.find("Seite 1 von 2\n>Stand: 24.11.2026\n"), std::string::npos) << report;
    EXPECT_NE(report.find(">Zwischensumme: 2,00 €\n"), std::string::npos) << report;
    EXPECT_TRUE(report.ends_with("Anzahl Datensätze: 3\n>Endsumme: 4,00 €\n")) << report;
    // The sum goes on in a second report of the same window.
    listReportHtml(articles, twoPages, nullptr, "24.11.2026", sum);
    EXPECT_EQ(sum, 8);
    EXPECT_EQ(progressPercent(1, 0, 3), 33);
    EXPECT_EQ(progressPercent(2, 0, 3), 67);
}

// A new row reaches the file once something was typed into it; a row without an amount from elsewhere takes
// over its purpose and rate and leaves the receipt's amounts empty, and the report of the others still stands.
TEST(ListTableTest, ARowWithoutAmountIsNeitherSavedEmptyNorBreaksReportAndTakeOver)
{
    test::TempFolder folder;
    const auto file = folder / "artikel_fuer.txt";
    writeBytes(file, "Buch;12,5;7\r\nOhne Betrag;;19\r\nAnfrage;auf Anfrage;7\r\n");
    ListTable articles(articleList());
    articles.load(file);
    articles.insertRow(articles.rowCount());
    articles.save(file);
    EXPECT_EQ(test::readBytes(file), "Buch;12,5;7\r\nOhne Betrag;;19\r\nAnfrage;auf Anfrage;7\r\n");
    articles.setCell(3, 0, "Neu");
    articles.save(file);
    EXPECT_TRUE(test::readBytes(file).ends_with("\r\nNeu;;\r\n"));

    std::int32_t sum = 0;
    const std::string report = shownText(listReportHtml(articles, {}, nullptr, "24.11.2026", sum));
    EXPECT_TRUE(report.ends_with("Anzahl Datensätze: 4\n>Endsumme: 12,00 €\n")) << report;

    ReceiptForm form;
    takeOverRow(articles, 0, true, form);
    takeOverRow(articles, 1, true, form);
    EXPECT_EQ(form.text(F::Text7), "Ohne Betrag");
    EXPECT_EQ(form.text(F::Text3), "19");
    for (F amount : {F::Text10, F::Text11, F::Text12, F::Text4})
        EXPECT_EQ(form.text(amount), "") << static_cast<int>(amount);
    takeOverRow(articles, 0, false, form);
    EXPECT_EQ(form.text(F::Text12), "13,38");
}

// Two windows (or the window and the command line) on one list: each one's added, edited and deleted rows
// survive the other's save, and the grid takes what the other filed.
TEST(ListTableTest, TwoProgramsSavingOneListLoseNothing)
{
    test::TempFolder folder;
    const auto file = folder / "von_liste.txt";
    writeBytes(file, "Meier;Hauptstr. 1\r\nSchulz;Ring 2\r\n");
    ListTable window(payerList());
    ListTable commandLine(payerList());
    window.load(file);
    commandLine.load(file);
    window.insertRow(window.rowCount());
    window.setCell(2, 0, "Neu im Fenster");
    EXPECT_FALSE(window.save(file));
    commandLine.setCell(0, 1, "Hauptstr. 10");
    commandLine.removeRows({1});
    EXPECT_TRUE(commandLine.save(file));
    EXPECT_EQ(test::readBytes(file), "Meier;Hauptstr. 10\r\nNeu im Fenster;\r\n");
    EXPECT_EQ(commandLine.rowCount(), 2);
    EXPECT_TRUE(test::waitsForLock(file, [&window, &file] { window.save(file); }));
    EXPECT_EQ(window.rows(), commandLine.rows());
}

} // namespace
} // namespace zw
