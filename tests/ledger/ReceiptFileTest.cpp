#include "ledger/ReceiptFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/QuittungLogic.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "tests/app/RecordingParts.h"
#include "tests/core/FakeHost.h"
#include "tests/core/RunErrorNumber.h"
#include "tests/app/ProgramFolder.h"

namespace zw {
namespace {

using F = FormElement;
using ::testing::HasSubstr;

class ReceiptFileTest : public ::testing::Test, protected test::FakeFormParts
{
protected:
    void automaticCalculation(bool on) { settings.set("Options", "Berechnung", on ? "1" : "0"); }
    void fill()
    {
        form.setText(F::Label1, "Quittung");
        form.setText(F::Text1, "1047");
        form.setText(F::Text2, "EUR");
        form.setText(F::Text3, "19");
        form.setText(F::Text12, "119,00");
        form.setText(F::Text10, "100,00");
        form.setText(F::Text11, "19,00");
        form.setText(F::Text4, "einhundertneunzehn");
        form.setText(F::Text5, "Jürgen Müller");
        form.setText(F::Text6, "");
        form.setText(F::Text7, "Größe € 5");
        form.setText(F::Text8, "Köln");
        form.setText(F::Text9, "12.03.2011");
        form.setText(F::Text14, "Kasse");
    }

    test::RecordingParts parts;
    test::ProgramFolder home;
};

TEST_F(ReceiptFileTest, FourteenLinesInWindows1252AndEveryFieldButTheWordsComesBack)
{
    automaticCalculation(false);
    fill();
    const auto bytes = receiptFileBytes(form);
    EXPECT_EQ(bytes, "Quittung\r\n1047\r\nEUR\r\n19\r\n100,00\r\n19,00\r\n119,00\r\n"
                     "einhundertneunzehn\r\nJ\xFCrgen M\xFCller\r\n\r\nGr\xF6\xDF"
                     "e \x80 5\r\nK\xF6ln\r\n12.03.2011\r\nKasse\r\n");
    ReceiptForm opened;
    opened.attach(&settings, &host);
    readReceiptRecords(bytes, opened, ReceiptFileFormat::Zw5);
    for (F field : {F::Label1, F::Text1, F::Text2, F::Text3, F::Text10, F::Text11, F::Text12, F::Text5, F::Text6,
                    F::Text7, F::Text8, F::Text9, F::Text14}) {
        SCOPED_TRACE(std::string(elementName(field)));
        EXPECT_EQ(opened.text(field), form.text(field));
    }
    EXPECT_EQ(opened.text(F::Text4), "");
}

TEST_F(ReceiptFileTest, OpeningRecomputesNetShareAndWordsFromTheGrossLine)
{
    automaticCalculation(true);
    const std::string bytes = "Quittung\r\n7\r\nEUR\r\n19\r\n1,00\r\n2,00\r\n119,00\r\nFALSCH\r\nA\r\nB\r\nC\r\nD\r\n"
                              "01.01.2020\r\nE\r\n";
    readReceiptRecords(bytes, form, ReceiptFileFormat::Zw5);
    EXPECT_EQ(form.text(F::Text10), "100,00");
    EXPECT_EQ(form.text(F::Text11), "19,00");
    EXPECT_THAT(form.text(F::Text4), HasSubstr("einhundertneunzehn"));
}

TEST_F(ReceiptFileTest, OldFormatRestoresTheWordsAndLeavesTheKindOfReceipt)
{
    automaticCalculation(false);
    form.setText(F::Label1, "Ausgabebeleg");
    const std::string bytes = "7\r\nUSD\r\n7\r\n10,00\r\n0,70\r\n10,70\r\nzehn\r\nA\r\nB\r\nC\r\nD\r\n01.01.2020\r\nE\r\n";
    readReceiptRecords(bytes, form, ReceiptFileFormat::Zwi);
    EXPECT_EQ(form.text(F::Label1), "Ausgabebeleg");
    EXPECT_EQ(form.text(F::Text2), "USD");
    EXPECT_EQ(form.text(F::Text4), "zehn");
    EXPECT_EQ(form.text(F::Text14), "E");
}

TEST_F(ReceiptFileTest, DamagedFilesEndInRunErrorsWithWhatWasReadKept)
{
    automaticCalculation(false);
    struct Case
    {
        const char* name;
        std::string bytes;
        int error; // 0: none
        F field;
        const char* expected;
    };
    const Case cases[] = {
        {"two records leave the second", std::string("Erste") + std::string(14, '\n') + "Zweite\n1" + std::string(13, '\n'),
         0, F::Label1, "Zweite"},
        {"an empty file leaves the form untouched", "", 0, F::Text7, "Größe € 5"},
        {"a short file keeps the fields read", "Quittung\r\n42\r\nCHF\r\n", 62, F::Text2, "CHF"},
        {"fields after the end stay empty", "Quittung\r\n42\r\nCHF\r\n", 62, F::Text9, ""},
        {"a two-line note starts a second record", "Q\r\n1\r\nEUR\r\n19\r\n\r\n\r\n5\r\n\r\n\r\n\r\n\r\n\r\n\r\nerste\r\nzweite\r\n",
         62, F::Label1, "zweite"},
        {"the second record clears the first", "Q\r\n1\r\nEUR\r\n19\r\n\r\n\r\n5\r\n\r\n\r\n\r\n\r\n\r\n\r\nerste\r\nzweite\r\n",
         62, F::Text1, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        fill();
        EXPECT_EQ(test::errorNumberOf([&] { readReceiptRecords(c.bytes, form, ReceiptFileFormat::Zw5); }), c.error);
        EXPECT_EQ(form.text(c.field), c.expected);
    }
}

// Storing the last file and opening it again are checked through the ledger window.
TEST_F(ReceiptFileTest, SaveWithAnEmptyNameBlanksTheLastFile)
{
    automaticCalculation(false);
    fill();
    ReceiptFileCommands commands(form, settings, parts);
    const std::string path = (home.paths.home() / "beleg.ZW5").string();
    commands.save(path);
    commands.save("");
    EXPECT_EQ(settings.option("Options", "Letzter_Beleg"), "");
    EXPECT_THAT(parts.captions, ::testing::ElementsAre(path, ""));
}

TEST_F(ReceiptFileTest, MissingPathsReachTheErrorTrap)
{
    ReceiptFileCommands commands(form, settings, parts);
    for (const std::string& path : {std::string("Kein Pfad vorhanden..."), (home.paths.home() / "fehlt.ZW5").string()}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(test::errorNumberOf([&] { commands.openLast(path); }), 53);
    }
    fill();
    commands.open(""); // the dialog was cancelled
    EXPECT_EQ(form.text(F::Text1), "1047");
    EXPECT_THROW(commands.save((home.paths.home() / "fehlt" / "x.ZW5").string()), RunError);
    EXPECT_EQ(settings.option("Options", "Letzter_Beleg"), "");
}

} // namespace
} // namespace zw
