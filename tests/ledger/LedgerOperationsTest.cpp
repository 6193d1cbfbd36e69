#include "ledger/LedgerOperations.h"

#include <gtest/gtest.h>

#include "core/ReceiptForm.h"
#include "ledger/LedgerStore.h"
#include "tests/app/ProgramFolder.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using F = FormElement;
using C = LedgerColumn;

class LedgerOperationsTest : public ::testing::Test, protected test::FakeFormParts
{
protected:
    void SetUp() override
    {
        settings.set("Options", "Berechnung", "0");
        ledger.appendRow(
            "12.03.2011\t1047\t119,00\t\tEUR\t19\t100,00\t19,00\teinhundertneunzehn\tMax Muster\t\t"
            "Beratung\tBonn\t\tQuittung");
        ledger.appendRow(
            "13.03.2011\t1048\t\t--35,50\tUSD\t7\t33,18\t2,32\tfünfunddreißig\tPost\tAG\tPorto\tBonn\t"
            "Notiz\tAusgabebeleg");
    }
    void show(std::size_t row)
    {
        ledger.setCurrentRow(row);
        selectRow(operations.buffer(), ledger, static_cast<long>(row + 1));
        operations.anzeigen();
    }

    ReceiptLedger ledger;
    int saves = 0;
    LedgerOperations operations{ledger, form, host, [this](const LedgerChangeRoutine& change) {
                                    const bool done = change(ledger, nullptr);
                                    saves += done ? 1 : 0;
                                    return done;
                                }};
};

// A doubled minus comes back with one, and the switch of the form is not touched.
TEST_F(LedgerOperationsTest, ShowPutsTheRowBackIntoTheForm)
{
    form.setIncome(1);
    show(1);
    const std::pair<F, const char*> expected[] = {
        {F::Label1, "Ausgabebeleg"}, {F::Text2, "USD"},   {F::Text4, "fünfunddreißig"}, {F::Text5, "Post"},
        {F::Text6, "AG"},            {F::Text7, "Porto"}, {F::Text9, "13.03.2011"},     {F::Text12, "-35,50"},
        {F::Text14, "Notiz"}};
    for (const auto& [field, text] : expected) {
        SCOPED_TRACE(text);
        EXPECT_EQ(form.text(field), text);
    }
    EXPECT_EQ(form.income(), 1);
}

// Delete on an empty grid reaches the error trap in the ledger window's tests.
TEST_F(LedgerOperationsTest, OnAnEmptyGridShowBlanksTheFieldsButTheGross)
{
    ReceiptLedger empty;
    LedgerOperations onEmpty(empty, form, host, [](const LedgerChangeRoutine&) { return true; });
    form.setText(F::Text12, "50,00");
    form.setText(F::Text7, "Alt");
    onEmpty.anzeigen();
    EXPECT_EQ(form.text(F::Text12), "50,00");
    EXPECT_EQ(form.text(F::Text7), "");
    EXPECT_EQ(form.text(F::Label1), "");
}

TEST_F(LedgerOperationsTest, SelectionOfRowZeroKeepsTheBuffer)
{
    selectRow(operations.buffer(), ledger, 2);
    selectRow(operations.buffer(), ledger, 0);
    EXPECT_EQ(operations.buffer()[1], "1048");
}

// That the question's OK keeps the row and its JA deletes it is checked through the ledger window.
TEST_F(LedgerOperationsTest, DeleteAsksWithTheNumber)
{
    ledger.setCurrentRow(1);
    host.confirmAnswer = kAnswerNo;
    operations.loeschen();
    ASSERT_EQ(host.questions.size(), 1u);
    EXPECT_EQ(host.questions[0].text,
              "Wollen Sie den Eintrag mit der Belegnummer 1048\rwirklich löschen?\r\r"
              "Wenn Sie jetzt auf JA klicken, wird der Eintrag\runwiderruflich gelöscht.");
    EXPECT_EQ(host.questions[0].title, "Achtung!!!");
}

TEST_F(LedgerOperationsTest, DeleteAllEmptiesAndSavesOnceEvenWhenEmpty)
{
    operations.loeschen_gesamt();
    EXPECT_EQ(ledger.rowCount(), 0u);
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(static_cast<int>(host.questions[0].style), 276);
    operations.loeschen_gesamt();
    EXPECT_EQ(saves, 2);
}

TEST_F(LedgerOperationsTest, AllFieldsTogglesColumnsFiveToFifteen)
{
    operations.alle_felder();
    for (int column = 0; column < kLedgerColumnCount; ++column) {
        SCOPED_TRACE(column);
        EXPECT_EQ(ledger.isColumnVisible(column), column < 4);
    }
    operations.alle_felder();
    EXPECT_TRUE(ledger.isColumnVisible(14));
}

// That an edited cell is saved as typed is checked through the ledger window.
TEST_F(LedgerOperationsTest, ACellBeyondTheEndOfAShortRowFillsTheFieldsBetween)
{
    ReceiptLedger shortRow;
    shortRow.appendRow("1.1.2020");
    shortRow.setCell(0, columnIndex(C::ort), "Bonn");
    EXPECT_EQ(shortRow.rowText(0), "1.1.2020\t\t\t\t\t\t\t\t\t\t\t\tBonn");
}

// This program's grid was loaded; another program then changed belege.dat before this one deletes or edits.
// Whatever the other wrote stays; a row it changed or deleted is left alone and the user is told.
TEST(LedgerOperationsOnASharedFile, AChangeOfAnotherProgramIsNeverWrittenOver)
{
    struct Case
    {
        const char* name;
        std::function<void(ReceiptLedger& other, const ProgramPaths& paths)> otherProgram;
        std::function<void(LedgerOperations& mine)> thisProgram;
        std::string fileAfter;
        bool told;
    };
    auto files = [](ReceiptLedger& other, const ProgramPaths& paths) {
        fileReceiptRow(other, {"neu"}, paths);
    };
    auto renumbers = [](ReceiptLedger& other, const ProgramPaths& paths) {
        updateLedger(other, paths, [](ReceiptLedger& ledger, const std::vector<LedgerRow>*) {
            ledger.setCell(0, 1, "9999");
            return true;
        });
    };
    auto removesFirst = [](ReceiptLedger& other, const ProgramPaths& paths) {
        updateLedger(other, paths, [](ReceiptLedger& ledger, const std::vector<LedgerRow>*) {
            ledger.removeRow(0);
            return true;
        });
    };
    const Case cases[] = {
        {"deleting keeps a filing", files, [](LedgerOperations& mine) { mine.loeschen(); },
         "neu\r\na;1047\r\n", false},
        {"editing keeps a filing", files, [](LedgerOperations& mine) { mine.cellEdited(0, 1, "2000"); },
         "neu\r\na;2000\r\nb;1048\r\n", false},
        {"deleting all keeps a filing", files, [](LedgerOperations& mine) { mine.loeschen_gesamt(); },
         "neu\r\n", false},
        {"a row changed elsewhere is not edited", renumbers,
         [](LedgerOperations& mine) { mine.cellEdited(0, 1, "2000"); }, "a;9999\r\nb;1048\r\n", true},
        {"a row deleted elsewhere is not deleted again", removesFirst,
         [](LedgerOperations& mine) { mine.loeschen(); }, "b;1048\r\n", true},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        test::ProgramFolder home;
        test::FakeFormParts parts;
        home.writeBytes("belege.dat", "a;1047\r\nb;1048\r\n");
        ReceiptLedger mine;
        ReceiptLedger other;
        loadLedger(mine, home.paths);
        loadLedger(other, home.paths);
        mine.setCurrentRow(row.told ? 0 : 1);
        LedgerOperations operations(mine, parts.form, parts.host, [&](const LedgerChangeRoutine& change) {
            return updateLedger(mine, home.paths, change);
        });
        row.otherProgram(other, home.paths);
        row.thisProgram(operations);
        EXPECT_EQ(home.readBytes("belege.dat"), row.fileAfter);
        EXPECT_EQ(ledgerBytes(mine), row.fileAfter);
        EXPECT_EQ(parts.host.messages.size(), row.told ? 1u : 0u);
    }
}

} // namespace
} // namespace zw
