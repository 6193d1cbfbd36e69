#include "app/OptionenLogic.h"

#include <gtest/gtest.h>

#include "app/ProgramPaths.h"
#include "app/QuittungLogic.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "tests/core/RunErrorNumber.h"
#include "tests/app/ProgramFolder.h"
#include "tests/app/RecordingParts.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using F = FormElement;

class OptionenLogicTest : public ::testing::Test, protected test::FakeFormParts
{
protected:
    test::ProgramFolder home;
    const ProgramPaths& paths = home.paths;
    test::RecordingParts parts;
    OptionenLogic optionen{form, settings, paths, host, parts};
};

TEST_F(OptionenLogicTest, FirstOpeningWritesTheStandardRateAndEmptyFiles)
{
    form.setText(F::Label1, "Spendenquittung");
    optionen.load();
    const auto& fields = optionen.fields();
    EXPECT_EQ(home.readBytes("mwst.dat"), "19\r\n") << "unlike the main window, which writes an empty line";
    EXPECT_EQ(fields.rateChoice, 1);
    EXPECT_EQ(home.readBytes("druck.dat"), "\r\n\r\n\r\n");
    EXPECT_EQ(home.readBytes("nummer.dat"), "\r\n");
    EXPECT_EQ(fields.belegart_opt, "Spendenquittung");
    EXPECT_EQ(fields.ruler_check1, 1);
    EXPECT_EQ(fields.chkLoadTipsAtStartup, 1);
}

TEST_F(OptionenLogicTest, RateFileDecidesTheChoice)
{
    struct Row
    {
        const char* name;
        const char* file;
        const char* field;
        int choice;
    };
    const Row rows[] = {
        {"nineteen typed into the open field earlier", "19\r\n", "19", 1},
        {"the main window's empty line", "\r\n", "", 2},
        {"no line at all keeps the preset", "", "19", 1},
        {"the last of two lines wins", "16\r\n19\r\n", "19", 1},
        {"a rate with a comma", "7,5\r\n", "7,5", 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        home.writeBytes("mwst.dat", row.file);
        OptionenLogic fresh(form, settings, paths, host, parts);
        fresh.load();
        EXPECT_EQ(fresh.fields().mwstwert1, row.field);
        EXPECT_EQ(fresh.fields().rateChoice, row.choice);
        EXPECT_EQ(fresh.fields().rateLocked, row.choice == 1);
    }
}

TEST_F(OptionenLogicTest, SaveWritesTheThreeFilesAndTheCalculationSwitchThenTheNotice)
{
    home.writeBytes("druck.dat", "10\r\n2\r\n15\r\n");
    home.writeBytes("nummer.dat", "00000041\r\n");
    settings.set("Options", "Berechnung", "1");
    optionen.load();
    auto& fields = optionen.fields();
    EXPECT_EQ(fields.Text1, "00000041");

    optionen.chooseOption2();
    fields.mwstwert1 = "";
    fields.abstand = "-5";
    fields.Text1 = "100";
    fields.checkGB_Berechnung = 0;
    optionen.save();
    EXPECT_EQ(home.readBytes("mwst.dat"), "\r\n") << "an empty rate is an empty line";
    EXPECT_EQ(home.readBytes("druck.dat"), "-5\r\n2\r\n15\r\n");
    EXPECT_EQ(settings.option("Options", "Berechnung"), "0");
    EXPECT_EQ(form.abstand(), "") << "the main window's own print fields are not touched";
}

TEST_F(OptionenLogicTest, ShortPrintFileEndsTheLoadAndLeavesTheLaterFieldsAsTheWindowOpened)
{
    home.writeBytes("druck.dat", "10\r\n1\r\n20\r\n5\r\n");
    home.writeBytes("nummer.dat", "42\r\n");
    EXPECT_EQ(test::errorNumberOf([&] { optionen.load(); }), 62) << "a fourth line without the two after it";
    EXPECT_EQ(optionen.fields().abstand, "105");
    EXPECT_EQ(optionen.fields().Text1, "") << "the number step never ran";
}

TEST_F(OptionenLogicTest, OnlySomeButtonStylesAreShown)
{
    const std::pair<const char*, const char*> rows[] = {{"Vista", "Vista"}, {"Cool", "Cool"}, {"Flat", ""}, {"vista", ""}};
    for (auto [stored, shown] : rows) {
        SCOPED_TRACE(stored);
        settings.set("Options", "Buttons", stored);
        OptionenLogic fresh(form, settings, paths, host, parts);
        fresh.load();
        EXPECT_EQ(fresh.fields().Label12, shown);
    }
}

TEST_F(OptionenLogicTest, SwitchesAreThereWhenTheWindowOpensAgain)
{
    optionen.load();
    optionen.setTipsAtStartup(0);
    optionen.setDateAtStart(1);
    optionen.setRuler(0);
    EXPECT_EQ(parts.rulers, false);

    OptionenLogic reopened(form, settings, paths, host, parts);
    reopened.load();
    EXPECT_EQ(reopened.fields().chkLoadTipsAtStartup, 0);
    EXPECT_EQ(reopened.fields().xpCheck1, 1);
    EXPECT_EQ(reopened.fields().ruler_check1, 0);
}

TEST_F(OptionenLogicTest, TakingAndDeletingChangeTheStoreAndTheMainWindow)
{
    settings.set("Ausstellungsort", "Text8.Text", "Köln");
    settings.set("Options", "Buttons", "Vista");
    settings.set("Options", "Ruler", "0");
    form.setText(F::Text8, "Köln");
    optionen.load();
    optionen.fields().belegart_opt = "Barquittung";
    optionen.takeReceiptType();
    EXPECT_EQ(form.text(F::Label1), "Barquittung");
    EXPECT_EQ(settings.option("Options", "Belegart"), "Barquittung");

    optionen.deletePlaceOfIssue();
    EXPECT_EQ(settings.option("Ausstellungsort", "Text8.Text"), "");
    EXPECT_EQ(form.text(F::Text8), "");
    optionen.deleteReceiptType();
    EXPECT_EQ(settings.option("Options", "Belegart"), "");
    EXPECT_EQ(form.text(F::Label1), "Quittung");
    optionen.deleteButtonStyle();
    EXPECT_EQ(optionen.fields().Label12, "Standard");
    optionen.deleteRuler();
    EXPECT_EQ(settings.get(kApplicationName, "Options", "Ruler", "absent"), "absent");

    // A second round deletes what is no longer there, without a trace.
    optionen.deletePlaceOfIssue();
    optionen.deleteReceiptType();
    optionen.deleteButtonStyle();
    optionen.deleteRuler();
    EXPECT_TRUE(host.messages.empty());
}

} // namespace
} // namespace zw
