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

std::vector<std::string> journalLines(const BooksFolder& folder)
{
    return splitLines(folder.readBytes("journal.dat"));
}

void writeJournal(const BooksFolder& folder, const std::vector<std::string>& lines)
{
    std::string bytes;
    for (const auto& line : lines)
        bytes += line + "\r\n";
    folder.writeBytes("journal.dat", bytes);
}

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
    EXPECT_EQ(entries.front().operation, JournalOperation::Start);
    const auto copy = folder.paths.dataFolder() / entries.front().document;
    EXPECT_EQ(test::readBytes(copy), original);
    EXPECT_EQ(entries.front().documentHash, sha256sum(copy));
    struct stat status{};
    ::stat(copy.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0444u);
    EXPECT_EQ(verifyJournal(folder.paths).message, "Journal in Ordnung: 5 Einträge");
}

TEST(Journal, VerifyNamesTheFirstEntryOrRowThatDisagrees)
{
    const struct
    {
        const char* name;
        std::function<void(BooksFolder&)> spoil;
        const char* message;
    } cases[] = {
        {"an entry edited",
         [](BooksFolder& folder) {
             auto lines = journalLines(folder);
             lines[2].replace(lines[2].find("Porto"), 5, "Miete");
             writeJournal(folder, lines);
         },
         "Eintrag 3: der Eintrag wurde nach dem Schreiben verändert (sein SHA-256 stimmt nicht)."},
        {"an entry edited and hashed anew",
         [](BooksFolder& folder) {
             auto lines = journalLines(folder);
             lines[3].replace(lines[3].find("20,00"), 5, "90,00");
             const std::string hashed(hashedPart(lines[3]));
             lines[3] = hashed + sha256Hex(hashed);
             writeJournal(folder, lines);
         },
         "Eintrag 5: die Kette ist unterbrochen: der Eintrag davor wurde verändert, entfernt oder umgestellt."},
        {"an entry removed",
         [](BooksFolder& folder) {
             auto lines = journalLines(folder);
             lines.erase(lines.begin() + 2);
             writeJournal(folder, lines);
         },
         "Eintrag 3: hier steht der Eintrag mit der Nummer 4: Einträge fehlen, wurden eingefügt oder umgestellt."},
        {"two entries swapped",
         [](BooksFolder& folder) {
             auto lines = journalLines(folder);
             std::swap(lines[1], lines[2]);
             writeJournal(folder, lines);
         },
         "Eintrag 2: hier steht der Eintrag mit der Nummer 3: Einträge fehlen, wurden eingefügt oder umgestellt."},
        {"the journal cut off",
         [](BooksFolder& folder) {
             const auto bytes = folder.readBytes("journal.dat");
             folder.writeBytes("journal.dat", bytes.substr(0, bytes.size() - 30));
         },
         "Eintrag 5: das Journal endet mitten in diesem Eintrag: es wurde abgeschnitten."},
        {"the ledger edited by hand",
         [](BooksFolder& folder) {
             auto bytes = folder.readBytes("belege.dat");
             bytes.replace(bytes.find("1047;119,00") + 5, 6, "19,00");
             folder.writeBytes("belege.dat", bytes);
         },
         "Die Belegliste wurde nach Eintrag 5 außerhalb von Zettelwerk geändert: Zeile 4: das Journal erwartet "
         "\"25.11.2026;1047;119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max Muster;;Beratung;Köln;;Quittung\", "
         "die Datei enthält \"25.11.2026;1047;19,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max "
         "Muster;;Beratung;Köln;;Quittung\"."},
        {"the start copy deleted",
         [](BooksFolder& folder) {
             std::filesystem::remove(folder.paths.dataFolder() / "archiv/2026/belege-beginn-2026-11-25.dat");
         },
         "Eintrag 1: die Archivdatei archiv/2026/belege-beginn-2026-11-25.dat fehlt."},
        {"the journal deleted",
         [](BooksFolder& folder) { std::filesystem::remove(folder.paths.dataFile("journal.dat")); },
         "Es gibt kein Änderungsprotokoll (daten/journal.dat), aber eine Belegliste: ihre Änderungen sind nicht "
         "nachvollziehbar."},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        BooksFolder folder({test::kIncomeRow, test::kExpenseRow});
        fillJournal(folder);
        row.spoil(folder);
        const auto verdict = verifyJournal(folder.paths);
        EXPECT_FALSE(verdict.sound);
        EXPECT_EQ(verdict.message, row.message);
    }
}

TEST(Journal, AChangeMadeOutsideIsJournaledOnceAndACutJournalTakesNoMoreEntries)
{
    BooksFolder folder({test::kIncomeRow, test::kExpenseRow});
    folder.book.storno(folder.ledger, "1047");
    auto bytes = folder.readBytes("belege.dat");
    folder.writeBytes("belege.dat", bytes + "26.11.2026;7;1,00\r\n");
    const auto outcome = folder.book.storno(folder.ledger, "1048");
    EXPECT_TRUE(outcome.changedOutside);
    const auto entries = journalEntries(folder.paths, std::nullopt, std::nullopt);
    EXPECT_EQ(entries[entries.size() - 2].operation, JournalOperation::OutsideChange);
    EXPECT_EQ(verifyJournal(folder.paths).message, "Journal in Ordnung: " + std::to_string(entries.size()) + " Einträge");

    const auto journal = folder.readBytes("journal.dat");
    folder.writeBytes("journal.dat", journal.substr(0, journal.size() - 1));
    bytes = folder.readBytes("belege.dat");
    try {
        folder.book.storno(folder.ledger, "7");
        ADD_FAILURE() << "a cut journal took an entry";
    } catch (const RunError& error) {
        EXPECT_NE(error.description().find("sein letzter Eintrag ist abgeschnitten"), std::string::npos);
    }
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

TEST(Journal, ShowListsTheEntriesOfTheDaysAsked)
{
    BooksFolder folder({test::kIncomeRow});
    folder.book.storno(folder.ledger, "1047");
    std::ostringstream out;
    EXPECT_EQ(showJournal(folder.paths, BookDate{2026, 11, 26}, std::nullopt, out), 0);
    EXPECT_EQ(showJournal(folder.paths, BookDate{2026, 11, 25}, BookDate{2026, 11, 25}, out), 2);
    // The time is the trader's own: noon UTC is one o'clock in Berlin in November.
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
    out.str("");
    showJournal(folder.paths, std::nullopt, std::nullopt, out);
    ::unsetenv("TZ");
    ::tzset();
    EXPECT_NE(out.str().find("2  25.11.2026 13:00:00  "), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("Beleg storniert (Zeile 1)\n    nachher: 25.11.2026;1048;-119,00;"), std::string::npos);
}

} // namespace
} // namespace zw
