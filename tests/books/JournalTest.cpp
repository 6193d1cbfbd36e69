#include "books/JournalCheck.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "app/TextFile.h"
#include "books/Sha256.h"
#include "core/RunError.h"
#include "tests/books/BooksFixture.h"

namespace zw {
namespace {

using test::BooksFolder;
using test::sha256sum;

// Five entries: the start beside an existing ledger, two Storno rows, a Privateinlage and an edited cell.
void fillJournal(BooksFolder& folder)
{
    folder.book.storno(folder.ledger, "1047");
    folder.book.storno(folder.ledger, "1048");
    folder.book.privateRow(folder.ledger, JournalOperation::PrivateDeposit, {2026, 11, 25}, 2000, "Wechselgeld");
    folder.book.change(folder.ledger, [](ReceiptLedger& ledger) -> std::optional<LedgerEdit> {
        LedgerEdit edit{JournalOperation::Edit, 4, std::string(ledger.rowText(3)), {}, std::nullopt};
        ledger.setCell(3, columnIndex(LedgerColumn::ort), "Köln");
        edit.after = ledger.rowText(3);
        return edit;
    });
}

TEST(Journal, EveryEntryRecordsTheLedgerAsSha256SumReadsItAndTheStartCopyIsReadOnly)
{
    BooksFolder folder({test::kIncomeRow, test::kExpenseRow});
    const std::string original = folder.readBytes("belege.dat");
    fillJournal(folder);
    const auto entries = journalEntries(folder.paths, std::nullopt, std::nullopt);
    ASSERT_EQ(entries.size(), 5u);
    EXPECT_EQ(entries.back().ledgerHash, sha256sum(folder.paths.dataFile("belege.dat")));
    const auto copy = folder.paths.dataFolder() / entries.front().document;
    EXPECT_EQ(test::readBytes(copy), original);
    EXPECT_EQ(entries.front().documentHash, sha256sum(copy));
    struct stat status{};
    ::stat(copy.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0444u);
    EXPECT_EQ(verifyJournal(folder.paths).message, "Journal in Ordnung: 5 Einträge");
}

// A cut or missing journal is told through the command line (books_cli_check.py).
TEST(Journal, VerifyNamesTheFirstEntryOrRowThatDisagrees)
{
    // A case changes the journal's lines or the files themselves.
    using Lines = std::vector<std::string>;
    const struct
    {
        const char* name;
        std::function<void(BooksFolder&, Lines&)> spoil;
        const char* message;
    } cases[] = {
        {"an entry edited", [](BooksFolder&, Lines& lines) { lines[2].replace(lines[2].find("Porto"), 5, "Miete"); },
         "Eintrag 3: der Eintrag wurde nach dem Schreiben verändert (sein SHA-256 stimmt nicht)."},
        {"an entry edited and hashed anew",
         [](BooksFolder&, Lines& lines) {
             lines[3].replace(lines[3].find("20,00"), 5, "90,00");
             const std::string hashed(hashedPart(lines[3]));
             lines[3] = hashed + sha256Hex(hashed);
         },
         "Eintrag 5: die Kette ist unterbrochen: der Eintrag davor wurde verändert, entfernt oder umgestellt."},
        {"an entry removed", [](BooksFolder&, Lines& lines) { lines.erase(lines.begin() + 2); },
         "Eintrag 3: hier steht der Eintrag mit der Nummer 4: Einträge fehlen, wurden eingefügt oder umgestellt."},
        {"two entries swapped", [](BooksFolder&, Lines& lines) { std::swap(lines[1], lines[2]); },
         "Eintrag 2: hier steht der Eintrag mit der Nummer 3: Einträge fehlen, wurden eingefügt oder umgestellt."},
        {"the ledger edited by hand",
         [](BooksFolder& folder, Lines&) {
             auto bytes = folder.readBytes("belege.dat");
             bytes.replace(bytes.find("1047;119,00") + 5, 6, "19,00");
             folder.writeBytes("belege.dat", bytes);
         },
         "Die Belegliste wurde nach Eintrag 5 außerhalb von Zettelwerk geändert: Zeile 4: das Journal erwartet "
         "\"25.11.2026;1047;119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max Muster;;Beratung;Köln;;Quittung\", "
         "die Datei enthält \"25.11.2026;1047;19,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max "
         "Muster;;Beratung;Köln;;Quittung\"."},
        {"the start copy deleted",
         [](BooksFolder& folder, Lines&) {
             std::filesystem::remove(folder.paths.dataFolder() / "archiv/2026/belege-beginn-2026-11-25.dat");
         },
         "Eintrag 1: die Archivdatei archiv/2026/belege-beginn-2026-11-25.dat fehlt."},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        BooksFolder folder({test::kIncomeRow, test::kExpenseRow});
        fillJournal(folder);
        const Lines before = splitLines(folder.readBytes("journal.dat"));
        Lines lines = before;
        row.spoil(folder, lines);
        if (lines != before) {
            std::string bytes;
            for (const auto& line : lines)
                bytes += line + "\r\n";
            folder.writeBytes("journal.dat", bytes);
        }
        const auto verdict = verifyJournal(folder.paths);
        EXPECT_FALSE(verdict.sound);
        EXPECT_EQ(verdict.message, row.message);
    }
}

TEST(Journal, AChangeMadeOutsideIsJournaledOnceAndACutJournalTakesNoMoreEntries)
{
    BooksFolder folder({test::kIncomeRow, test::kExpenseRow});
    folder.book.storno(folder.ledger, "1047");
    folder.writeBytes("belege.dat", folder.readBytes("belege.dat") + "26.11.2026;7;1,00\r\n");
    EXPECT_TRUE(folder.book.storno(folder.ledger, "1048").changedOutside);
    EXPECT_EQ(test::journalOperations(folder.paths).end()[-2], JournalOperation::OutsideChange);

    const auto journal = folder.readBytes("journal.dat");
    folder.writeBytes("journal.dat", journal.substr(0, journal.size() - 1));
    const auto bytes = folder.readBytes("belege.dat");
    EXPECT_NE(test::messageOf([&] { folder.book.storno(folder.ledger, "7"); }).find("sein letzter Eintrag ist abgeschnitten"),
              std::string::npos);
    EXPECT_EQ(folder.readBytes("belege.dat"), bytes);
}

TEST(Journal, RowsWithTheSeparatorsOfBothFilesAndUmlautsReplayAsTheyStand)
{
    // A TAB byte in belege.dat, a backslash and a line feed typed into a note, umlauts in Windows-1252.
    BooksFolder folder;
    folder.writeBytes("belege.dat", "25.11.2026;1047;119,00;;EUR;;;;;M\xFCller\tund\\S\xF6hne;;Miete\r\n");
    folder.book.storno(folder.ledger, "1047");
    folder.book.change(folder.ledger, [](ReceiptLedger& ledger) -> std::optional<LedgerEdit> {
        LedgerEdit edit{JournalOperation::Edit, 2, std::string(ledger.rowText(1)), {}, std::nullopt};
        ledger.setCell(1, columnIndex(LedgerColumn::buchung), "Zeile 1\nZeile 2");
        edit.after = ledger.rowText(1);
        return edit;
    });
    EXPECT_EQ(verifyJournal(folder.paths).message, "Journal in Ordnung: 3 Einträge");
    EXPECT_NE(folder.readBytes("belege.dat").find("M\xFCller\tund\\S\xF6hne"), std::string::npos);
}

// The date filters and the texts of the entries are checked through the command line by books_cli_check.py.
TEST(Journal, ShowGivesTheTimeInTheTradersOwnZone)
{
    BooksFolder folder({test::kIncomeRow});
    folder.book.storno(folder.ledger, "1047");
    std::ostringstream out;
    // Noon UTC is one o'clock in Berlin in November.
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
    showJournal(folder.paths, std::nullopt, std::nullopt, out);
    ::unsetenv("TZ");
    ::tzset();
    EXPECT_NE(out.str().find("2  25.11.2026 13:00:00  "), std::string::npos) << out.str();
}

} // namespace
} // namespace zw
