#include "books/AuditExport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/Sha256.h"
#include "tests/core/RunErrorNumber.h"
#include "tests/app/PeerProgram.h"
#include "tests/books/BooksFixture.h"

namespace zw {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

const AuditPeriod kTwoDays{{2026, 11, 24}, {2026, 11, 25}};

// Every record of every table, as Python's csv read it after xmllint accepted the index.
std::vector<std::string> readBack(const std::filesystem::path& folder)
{
    int status = -1;
    const auto output =
        test::runPeer("/usr/bin/python3 " ZW_AUDIT_CHECK " " + folder.string() + " 2>&1", &status);
    EXPECT_EQ(status, 0) << output;
    std::vector<std::string> lines;
    for (std::size_t start = 0, end; (end = output.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(output.substr(start, end - start));
    return lines;
}

TEST(AuditExport, WritesTablesThatTheIndexDescribesAndLeavesOtherFiles)
{
    const std::string quoted = "24.11.2026\t1045\t5,00\t\tEUR\t7\t4,67\t0,33\t\tHerr \"Kunde\"" +
                               std::string(kLiteralTab) + "GmbH\t\tKaffee\tBonn\t\tQuittung";
    test::BooksFolder folder(
        {test::kIncomeRow, test::kExpenseRow, test::kYesterdayRow, quoted,
         "23.11.2026\t1044\t50,00\t\tEUR\t0\t50,00\t0,00\t\tAlt\t\tAlt\tBonn\t\tQuittung"});
    // 155,00 before the day + 119,00 - 35,50, counted exactly; the note reaches only the close's record.
    folder.book.close(folder.ledger, {{2026, 11, 25}, 23850, std::nullopt, "Kasse; \"leer\"", {}},
                      test::TextWriter());
    folder.writeBytes("aussteller.dat", "A & B\r\nMarkt 1\r\n53111 Bonn\r\n");
    test::TempFolder target;
    test::writeBytes(target / "fremd.txt", "bleibt");
    test::writeBytes(target / "belege.csv", "alt");

    const auto counts = exportAuditData(folder.paths, kTwoDays, target.path());
    EXPECT_EQ(counts.receipts, 4);
    EXPECT_EQ(counts.entries, 2); // the journal's start and the close
    EXPECT_EQ(counts.closes, 1);

    const auto records = readBack(target.path());
    EXPECT_THAT(records,
                Contains(R"(["belege.csv", "4", "24.11.2026", "1045", "5,00", "", "EUR", "7", "4,67", )"
                         R"("0,33", "", "Herr \"Kunde\"\tGmbH", "", "Kaffee", "Bonn", "", "Quittung"])"));
    EXPECT_THAT(records, Contains(R"(["kassenberichte.csv", "25.11.2026", "25.11.2026", "155,00", "119,00", )"
                                  R"("35,50", "238,50", "238,50", "0,00", "EUR", "Kasse; \"leer\"", )"
                                  R"("archiv/2026/kassenbericht-2026-11-25.pdf", )"
                                  "\"" +
                                  sha256Hex(folder.readBytes("archiv/2026/kassenbericht-2026-11-25.pdf")) +
                                  R"(", "2"])"));
    EXPECT_EQ(records.size(), 4u + 2u + 1u);
    EXPECT_EQ(test::readBytes(target / "fremd.txt"), "bleibt");
    EXPECT_THAT(test::readBytes(target / "index.xml"),
                HasSubstr("<Name>A &amp; B</Name>\n    <Location>Markt 1, 53111 Bonn</Location>"));
}

// A period that ends before it starts is told through the window and the command line.
TEST(AuditExport, RefusesBadInputWithAGermanMessageAndWritesNothing)
{
    struct Case
    {
        const char* what;
        std::string row;
        std::string journal;
        const char* from;
        const char* to;
        const char* message;
    };
    const std::string income = test::kIncomeRow;
    const Case cases[] = {
        {"no first day", income, "", " ", "25.11.2026", "Bitte geben Sie den ersten und den letzten Tag"},
        {"no real day", income, "", "31.02.2026", "25.11.2026",
         "\"31.02.2026\" ist kein Datum der Form TT.MM.JJJJ."},
        {"row without a date", "2026-11-25\t1\t5,00", "", "24.11.2026", "25.11.2026",
         "Zeile 1 der Belegliste hat kein lesbares Datum (\"2026-11-25\")."},
        {"amount in words", "25.11.2026\t7\tzwölf", "", "24.11.2026", "25.11.2026",
         "Zeile 1 der Belegliste (Beleg 7): \"zwölf\" in der Spalte Einnahme ist kein Betrag."},
        {"journal line", income, "kein Eintrag\r\n", "24.11.2026", "25.11.2026",
         "Zeile 1 des Änderungsprotokolls (journal.dat) ist kein lesbarer Eintrag."},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        test::BooksFolder folder({row.row});
        if (!row.journal.empty())
            folder.writeBytes("journal.dat", row.journal);
        test::TempFolder target;
        const auto exportIt = [&] { exportAuditData(folder.paths, auditPeriod(row.from, row.to), target.path()); };
        EXPECT_EQ(test::errorNumberOf(exportIt), 5);
        EXPECT_THAT(test::messageOf(exportIt), HasSubstr(row.message));
        EXPECT_TRUE(std::filesystem::is_empty(target.path()));
    }
}

} // namespace
} // namespace zw
