#include "lists/ListTable.h"

#include <gtest/gtest.h>

#include "core/GermanNumbers.h"
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

std::vector<std::vector<std::string>> cellsOf(const ListTable& table)
{
    std::vector<std::vector<std::string>> cells;
    for (std::size_t row = 0; row < table.rows().size(); ++row)
        cells.push_back(table.rows()[row]);
    return cells;
}

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
        {"lone CR and LF end lines, a last line without end counts", payerList(), "a;b\rc;d\ne;f",
         {{"a", "b"}, {"c", "d"}, {"e", "f"}}, "a;b\r\nc;d\r\ne;f\r\n"},
        {"a line of separators alone is no row of the file", articleList(), ";;\r\n\xe4;05;19", {{"", "", ""},
         {"ä", "5,", "19"}}, "\xe4;5,;19\r\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test::TempFolder folder;
        writeBytes(folder / "list.txt", row.file);
        ListTable table(row.kind);
        table.load(folder / "list.txt");
        EXPECT_EQ(cellsOf(table), row.cells);
        table.save(folder / "list.txt");
        EXPECT_EQ(test::readBytes(folder / "list.txt"), row.saved);
    }
}

// The load formats plain amounts by a short way of its own; the general number format is the oracle for every
// text of up to six characters from digits, comma, point, blank and sign, and for long digit runs.
TEST(ListTableTest, TheLoadFormatsEveryBetragAsTheGeneralNumberFormatDoes)
{
    std::vector<std::string> texts{"12345678901234,5", "123456789012345", "1234567890123456", "0000000000000000001,10",
                                   "99999,995", "1234567890123,45", "\xe4"};
    constexpr std::string_view kAlphabet = "0159,. -";
    for (std::string text; text.size() <= 5;) {
        texts.push_back(text);
        // The next text in counting order over the alphabet.
        std::size_t i = text.size();
        while (i > 0 && text[i - 1] == kAlphabet.back())
            text[--i] = kAlphabet.front();
        if (i == 0)
            text.insert(text.begin(), kAlphabet.front());
        else
            text[i - 1] = kAlphabet[kAlphabet.find(text[i - 1]) + 1];
    }
    for (const std::string& text : texts) {
        const auto cells = cellsOfLine(articleList(), "Tee;" + text + ";7");
        ASSERT_EQ(cells[1], formatPatternText(text, "#####.##")) << '"' << text << '"';
    }
}

// Cells typed into, rows inserted and removed: the file and a second load see exactly the cells typed, also
// after a save has laid the table out anew.
TEST(ListTableTest, EditsReachTheFileAsTypedBeforeAndAfterASave)
{
    test::TempFolder folder;
    const auto file = folder / "von_liste.txt";
    writeBytes(file, "Meier;Hauptstr. 1\r\nSchulz;Ring 2\r\nKurz\r\n");
    ListTable table(payerList());
    table.load(file);
    table.setCell(0, 1, "Hauptstr. 10");
    table.insertRow(99);
    table.setCell(3, 0, "Weiß;Ecke");
    table.save(file);
    EXPECT_EQ(test::readBytes(file), "Meier;Hauptstr. 10\r\nSchulz;Ring 2\r\nKurz;\r\nWei\xdf;Ecke;\r\n");
    EXPECT_EQ(cellsOf(table)[3], (std::vector<std::string>{"Weiß;Ecke", ""}));
    table.removeRows({2, 0, 2, -1, 7});
    table.insertRow(-3);
    table.setCell(0, 1, "neu");
    table.setCell(1, 0, "Schulze");
    table.save(file);
    EXPECT_EQ(test::readBytes(file), ";neu\r\nSchulze;Ring 2\r\nWei\xdf;Ecke;\r\n");
    EXPECT_THROW(table.setCell(3, 0, "x"), std::out_of_range);
    ListTable again(payerList());
    again.load(file);
    EXPECT_EQ(cellsOf(again), (std::vector<std::vector<std::string>>{{"", "neu"}, {"Schulze", "Ring 2"},
                                                                    {"Weiß", "Ecke;"}}));
}

// The file is read in blocks of 1 MiB: a line across two blocks loads whole, a CR LF split by them ends one line.
TEST(ListTableTest, LinesAcrossTheReadBlocksLoadWhole)
{
    constexpr std::size_t kBlock = std::size_t{1} << 20;
    const std::string crAtBlockEnd = "a;" + std::string(kBlock - 3, 'x') + "\r\nb;\xfc\r\n";
    const std::string lineAcrossBlocks = "a;b\r\nc;" + std::string(kBlock, 'z') + "\xe4\r\nd;e";
    for (const std::string& bytes : {crAtBlockEnd, lineAcrossBlocks}) {
        test::TempFolder folder;
        writeBytes(folder / "von_liste.txt", bytes);
        ListTable table(payerList());
        table.load(folder / "von_liste.txt");
        ASSERT_EQ(table.rowCount(), bytes == crAtBlockEnd ? 2 : 3);
        EXPECT_EQ(table.fileBytes(), bytes.ends_with("\r\n") ? bytes : bytes + "\r\n");
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

// What a browser shows of the report: the text of the HTML, one cell per line, right-aligned cells marked ">".
std::string shownText(const std::string& html)
{
    test::TempFolder folder;
    writeBytes(folder / "r.htm", html);
    return test::runPeer("/usr/bin/python3 -c '\n"
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

// A row without an amount from elsewhere takes over its purpose and rate and leaves the receipt's amounts empty,
// and the report and the take-over of the others still stand (taken as net here; as gross in the list window's
// test). That a new row reaches the file only once typed into is the load table's and the list window's matter.
TEST(ListTableTest, ARowWithoutAmountBreaksNeitherReportNorTakeOver)
{
    test::TempFolder folder;
    writeBytes(folder / "artikel_fuer.txt", "Buch;12,5;7\r\nOhne Betrag;;19\r\nAnfrage;auf Anfrage;7\r\n");
    ListTable articles(articleList());
    articles.load(folder / "artikel_fuer.txt");

    std::int32_t sum = 0;
    const std::string report = shownText(listReportHtml(articles, {}, nullptr, "24.11.2026", sum));
    EXPECT_TRUE(report.ends_with("Anzahl Datensätze: 3\n>Endsumme: 12,00 €\n")) << report;

    ReceiptForm form;
    takeOverRow(articles, 0, true, form);
    takeOverRow(articles, 1, true, form);
    EXPECT_EQ(form.text(F::Text7), "Ohne Betrag");
    EXPECT_EQ(form.text(F::Text3), "19");
    for (F amount : {F::Text10, F::Text11, F::Text12, F::Text4})
        EXPECT_EQ(form.text(amount), "") << static_cast<int>(amount);
    takeOverRow(articles, 0, false, form);
    EXPECT_EQ(form.text(F::Text10), "12,50");
    EXPECT_EQ(form.text(F::Text12), "13,38");
    EXPECT_FALSE(form.text(F::Text4).empty());
    EXPECT_THROW(takeOverRow(articles, 2, true, form), RunError) << "an amount that is no number";
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
    EXPECT_EQ(cellsOf(window), cellsOf(commandLine));
}

} // namespace
} // namespace zw
