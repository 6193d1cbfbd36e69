#include "ledger/LedgerStore.h"

#include <csignal>
#include <functional>
#include <malloc.h>
#include <iostream>
#include <random>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/AtomicFile.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"
#include "tests/core/FakeHost.h"
#include "tests/core/RunErrorNumber.h"
#include "tests/app/ProgramFolder.h"

namespace zw {
namespace {

using F = FormElement;
using C = LedgerColumn;

// The two example lines of the file format, in Windows-1252. The colours they load with and their text are
// checked through the ledger window.
const std::string kIncomeLine = "12.03.2011;1047;119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max Muster;;Beratung;Bonn;;Quittung";
const std::string kExpenseLine = "13.03.2011;1048;;-35,50;EUR;7;33,18;2,32;f\xFCnfunddrei\xDFig;Post;;Porto;Bonn;;Ausgabebeleg";

ReceiptLedger read(const std::string& bytes)
{
    std::istringstream in(bytes);
    ReceiptLedger ledger;
    readLedger(in, ledger);
    return ledger;
}

TEST(LedgerStore, DamagedLinesLoadAsTheGridShowsThem)
{
    struct Case
    {
        const char* name;
        std::string bytes;
        std::size_t rows;
        std::size_t row;
        C column;
        std::string expected;
    };
    const std::string longNote(10 * 1024 * 1024, 'x');
    const Case cases[] = {
        {"sixteen fields: the last one is not shown", kIncomeLine + ";zuviel\r\n", 1, 0, C::bezeichnung, "Quittung"},
        {"a semicolon in a field shifts the row", "1.1.2020;5;10,00;;EUR;19;;;;;;Miete; Strom;Bonn;;Quittung\r\n", 1, 0,
         C::ort, " Strom"},
        {"three fields leave the rest empty", "1.1.2020;5;10,00\r\n", 1, 0, C::waehrung, ""},
        {"a TAB inside a field does not split it", "a\tb;c\r\n", 1, 0, C::belegnr, "c"},
        {"a line break in the note makes two rows", "1.1.2020;5;10,00;;EUR;19;;;;;;;;erste\r\nzweite;Quittung\r\n", 2, 1,
         C::datum, "zweite"},
        {"a UTF-8 file shows its bytes as Windows-1252", "1.1.2020;5;;;;;;;f\xC3\xBCnf\r\n", 1, 0, C::biw, "fÃ¼nf"},
        {"ten megabytes in one line", "1.1.2020;5;;;;;;;;;;;;" + longNote + ";Quittung\r\n", 1, 0, C::bezeichnung,
         "Quittung"},
        {"lone CR and LF end lines as well", "a\rb\nc", 3, 2, C::datum, "c"},
        // The reader takes the file in blocks of a mebibyte; the CR is the last byte of the first block.
        {"a line end split across read blocks counts once", std::string((1 << 20) - 1, 'a') + "\r\nzweite\r\n", 2, 1,
         C::datum, "zweite"},
        {"an empty file has no rows", "", 0, 0, C::datum, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto ledger = read(c.bytes);
        ASSERT_EQ(ledger.rowCount(), c.rows);
        if (c.rows > 0) {
            EXPECT_EQ(ledger.cell(c.row, c.column), c.expected);
        }
    }
}

// What the reader makes of a file comes back byte for byte at the next save, wherever the reader leaves its fast
// way (a byte beyond ASCII, a TAB, a long row, a line end at a block's edge), and edits change only their rows.
TEST(LedgerStore, EveryLineIsSavedAsItWasReadAndAnEditChangesOnlyItsRow)
{
    std::string everyByte;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r' && byte != '\n')
            everyByte += static_cast<char>(byte);
    std::string growing;
    for (int length = 0; length < 700; ++length)
        growing += std::string(static_cast<std::size_t>(length), length % 7 == 0 ? '\xE4' : 'x') + ";\r\n";
    std::string edited;
    std::string editedSaved;
    for (int row = 0; row < 9000; ++row) {
        edited += "1.1.2020;" + std::to_string(row) + ";10,00\r\n";
        editedSaved += "1.1.2020;" + std::to_string(row) + (row % 2 ? ";10,00\r\n" : ";10,00;;EUR\r\n");
    }
    const std::string lines = kIncomeLine + "\r\n" + kExpenseLine + "\r\n";
    struct Case
    {
        const char* name;
        std::string file;
        std::function<void(ReceiptLedger&)> edit;
        std::string saved;
    };
    const Case cases[] = {
        {"empty lines stay rows", "\r\n\r\na;b\r\n\r\n", {}, "\r\n\r\na;b\r\n\r\n"},
        {"a file without a final line break gets one", "a;b", {}, "a;b\r\n"},
        {"every byte but the line ends", everyByte + "\r\n", {}, everyByte + "\r\n"},
        {"a TAB after bytes beyond ASCII", "Gr\xF6\xDF" "e\t\x80;x", {}, "Gr\xF6\xDF" "e\t\x80;x\r\n"},
        {"rows from empty to 700 bytes", growing, {}, growing},
        {"an edited row keeps the others' bytes", lines,
         [](ReceiptLedger& ledger) { ledger.setCell(1, columnIndex(C::ort), "Köln"); },
         kIncomeLine + "\r\n13.03.2011;1048;;-35,50;EUR;7;33,18;2,32;f\xFCnfunddrei\xDFig;Post;;Porto;K\xF6ln;;"
                       "Ausgabebeleg\r\n"},
        {"a filed, an edited and a removed row", lines,
         [](ReceiptLedger& ledger) {
             ledger.insertRow(0, "neu\tG\xC3\xBC" "ltig");
             ledger.setCell(2, 0, "x" + std::string(kLiteralTab) + "Tab");
             ledger.removeRow(1);
         },
         "neu;G\xFCltig\r\nx\tTab;1048;;-35,50;EUR;7;33,18;2,32;f\xFCnfunddrei\xDFig;Post;;Porto;Bonn;;"
         "Ausgabebeleg\r\n"},
        {"thousands of edits", edited,
         [](ReceiptLedger& ledger) {
             for (std::size_t row = 0; row < ledger.rowCount(); row += 2)
                 ledger.setCell(row, columnIndex(C::waehrung), "EUR");
         },
         editedSaved},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto ledger = read(c.file);
        if (c.edit)
            c.edit(ledger);
        EXPECT_EQ(ledgerBytes(ledger), c.saved);
    }
    auto ledger = read(edited);
    std::rbegin(cases)->edit(ledger);
    EXPECT_EQ(ledger.cellColour(8998, columnIndex(C::einnahme)), kIncomeColour) << "an edit keeps the colours";
}

// Empty lines cost no more than their line ends on disk; when every row was a block of its own they took six
// times the file.
TEST(LedgerStore, AFileOfEmptyLinesTakesNoMoreMemoryThanOnDisk)
{
    std::string file;
    for (int line = 0; line < (4 << 20); ++line)
        file += "\r\n";
    std::istringstream in(file);
    ::malloc_trim(0);
    const auto inUse = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
    const std::size_t before = inUse();
    ReceiptLedger ledger;
    readLedger(in, ledger);
    ASSERT_EQ(ledger.rowCount(), std::size_t{4} << 20);
    EXPECT_LE(static_cast<double>(inUse() - before), 1.15 * static_cast<double>(file.size()));
}

// The window looks at the file when it is activated: what another program saved meanwhile is read again, and
// only then.
TEST(LedgerStore, ALedgerFollowsWhatAnotherProgramSaved)
{
    test::ProgramFolder home;
    ReceiptLedger mine;
    EXPECT_FALSE(reloadLedgerIfChanged(mine, home.paths));
    ReceiptLedger other;
    fileReceiptRow(other, {"1", "1047"}, home.paths);
    EXPECT_TRUE(reloadLedgerIfChanged(mine, home.paths));
    EXPECT_EQ(mine.rowCount(), 1u);
    EXPECT_FALSE(reloadLedgerIfChanged(mine, home.paths));
    fileReceiptRow(mine, {"2", "1048"}, home.paths);
    EXPECT_FALSE(reloadLedgerIfChanged(mine, home.paths));
    std::filesystem::remove(home.paths.dataFile("belege.dat"));
    EXPECT_TRUE(reloadLedgerIfChanged(mine, home.paths));
    EXPECT_EQ(mine.rowCount(), 0u);
}

TEST(LedgerStore, AMissingFileLeavesAnEmptyLedgerAndNoReportFolder)
{
    test::ProgramFolder home;
    ReceiptLedger ledger;
    ledger.appendRow("alt");
    EXPECT_EQ(test::errorNumberOf([&] { loadLedger(ledger, home.paths); }), 53);
    EXPECT_EQ(ledger.rowCount(), 0u);
    EXPECT_FALSE(std::filesystem::exists(home.paths.reportFolder()));

    home.writeBytes("belege.dat", kIncomeLine + "\r\n");
    loadLedger(ledger, home.paths);
    EXPECT_EQ(ledger.rowCount(), 1u);
    EXPECT_TRUE(std::filesystem::is_directory(home.paths.reportFolder()));
}

// A belege.dat that exists but cannot be read: loading says so at once (no waiting on a FIFO), filing is
// refused before the row enters the grid, and the file stays exactly as it was.
TEST(LedgerStore, ALedgerThatCouldNotBeReadIsNeverWrittenOver)
{
    using std::filesystem::path;
    const struct
    {
        const char* name;
        std::function<void(const test::ProgramFolder&, const path&)> make;
    } cases[] = {
        {"a folder", [](const test::ProgramFolder&, const path& file) { std::filesystem::create_directory(file); }},
        {"a FIFO", [](const test::ProgramFolder&, const path& file) { ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0); }},
        {"a file without read permission",
         [](const test::ProgramFolder& home, const path& file) {
             home.writeBytes("belege.dat", kIncomeLine + "\r\n");
             std::filesystem::permissions(file, std::filesystem::perms::none);
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::ProgramFolder home;
        const auto file = home.paths.dataFile("belege.dat");
        c.make(home, file);
        if (std::filesystem::is_regular_file(file) && ::access(file.c_str(), R_OK) == 0) {
            std::cout << "left out: root reads a mode-000 file\n";
            continue;
        }
        const auto kind = std::filesystem::status(file).type();
        ReceiptLedger ledger;
        try {
            loadLedger(ledger, home.paths);
            ADD_FAILURE() << "an unreadable ledger loaded";
        } catch (const RunError& error) {
            EXPECT_EQ(error.number(), 75);
            EXPECT_THAT(error.description(), testing::HasSubstr("konnte nicht gelesen werden"));
        }
        EXPECT_THROW(fileReceiptRow(ledger, {"01.01.2026", "1"}, home.paths), RunError);
        EXPECT_THROW(fileReceiptRowOnTop({"01.01.2026", "1"}, home.paths), RunError);
        EXPECT_THROW(saveLedger(ledger, home.paths), RunError);
        EXPECT_EQ(ledger.rowCount(), 0u);
        EXPECT_EQ(std::filesystem::status(file).type(), kind);
        if (kind == std::filesystem::file_type::regular) {
            std::filesystem::permissions(file, std::filesystem::perms::owner_all);
            EXPECT_EQ(home.readBytes("belege.dat"), kIncomeLine + "\r\n");
        }
    }
}

TEST(LedgerStore, FilingPutsTheReceiptOnTopOfTheFile)
{
    test::ProgramFolder home;
    test::FakeFormParts parts;
    parts.settings.set("Options", "Berechnung", "0");
    ReceiptForm& form = parts.form;
    home.writeBytes("belege.dat", kIncomeLine + "\r\n");
    ReceiptLedger ledger;
    loadLedger(ledger, home.paths);
    ledger.setCurrentRow(0);

    form.setText(F::Label1, "Ausgabebeleg");
    form.setText(F::Text1, "1049");
    form.setText(F::Text2, "EUR");
    form.setText(F::Text3, "19");
    form.setText(F::Text12, "-5,00");
    form.setText(F::Text7, "Miete; Strom");
    form.setText(F::Text9, "14.03.2011");
    form.setIncome(0);
    fileReceipt(ledger, form, home.paths);

    EXPECT_EQ(ledger.cell(0, C::von), "Miete; Strom");
    EXPECT_EQ(home.readBytes("belege.dat"),
              "14.03.2011;1049;;--5,00;EUR;19;0,00;0,00;;;;Miete; Strom;;;Ausgabebeleg\r\n" + kIncomeLine + "\r\n");

    form.setIncome(1);
    form.setText(F::Text12, "7,00");
    fileReceipt(ledger, form, home.paths);
    EXPECT_EQ(ledger.cell(0, C::einnahme), "7,00");
    EXPECT_EQ(ledger.cell(0, C::ausgabe), "");
}

TEST(LedgerStore, AnEmptyLedgerSavesZeroBytesAndAMissingFolderIsPathNotFound)
{
    test::ProgramFolder home;
    home.writeBytes("belege.dat", kIncomeLine + "\r\n");
    ReceiptLedger ledger;
    saveLedger(ledger, home.paths);
    EXPECT_EQ(home.readBytes("belege.dat"), "");
    std::filesystem::remove_all(home.paths.dataFolder());
    ledger.appendRow("x");
    EXPECT_EQ(test::errorNumberOf([&] { saveLedger(ledger, home.paths); }), 76);
}

TEST(LedgerStore, AKilledSaveLeavesTheOldOrTheNewLedgerWhole)
{
    test::ProgramFolder home;
    ReceiptLedger first;
    ReceiptLedger second;
    for (int i = 0; i < 20000; ++i) {
        first.appendRow("01.01.2020\t" + std::to_string(i) + "\t10,00\t\tEUR\t19\t\t\t\t\t\t\t\t\tQuittung");
        second.appendRow("02.02.2022\t" + std::to_string(i) + "\t\t-7,50\tUSD\t7\t\t\t\t\t\t\t\t\tAusgabebeleg");
    }
    const std::string firstBytes = ledgerBytes(first);
    const std::string secondBytes = ledgerBytes(second);
    saveLedger(first, home.paths);

    std::mt19937 random(12345);
    std::uniform_int_distribution<int> wait(0, 40000);
    for (int round = 0; round < 25; ++round) {
        SCOPED_TRACE(round);
        pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i)
                saveLedger(i % 2 == 0 ? second : first, home.paths);
        }
        ::usleep(static_cast<useconds_t>(wait(random)));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        const std::string bytes = home.readBytes("belege.dat");
        EXPECT_TRUE(bytes == firstBytes || bytes == secondBytes) << "size " << bytes.size();
    }
}

} // namespace
} // namespace zw
