#include "app/QuittungLogic.h"

#include <gtest/gtest.h>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "tests/app/ProgramFolder.h"
#include "tests/app/RecordingParts.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using F = FormElement;

class QuittungLogicTest : public ::testing::Test, protected test::FakeFormParts
{
protected:
    test::ProgramFolder home;
    const ProgramPaths& paths = home.paths;
    test::RecordingParts parts;
    QuittungLogic logic{form, settings, paths, host, parts, [] { return std::string("23.11.2026"); }};
};

// A first start must come up usable, ask once for the tax number and write the small files it will read later.
TEST_F(QuittungLogicTest, FirstStartWithAnEmptyStoreUsesTheDefaultsAndAsksForTheTaxNumber)
{
    logic.load();

    EXPECT_EQ(parts.menuDesign, 2);
    EXPECT_EQ(parts.buttonStyle, 5);
    EXPECT_EQ(form.printLayout(), PrintLayout::OneReceipt);
    EXPECT_EQ(form.text(F::Label1), "Quittung");
    EXPECT_TRUE(form.isChecked("steueran"));
    EXPECT_EQ(form.text(F::Text3), "19"); // no mwst.dat yet: the form's own value stays for this run
    EXPECT_EQ(form.text(F::Text1), "00000001");
    EXPECT_EQ(form.text(F::Text2), "EUR");
    EXPECT_EQ(form.text(F::Datum2), "23.11.2026");
    EXPECT_EQ(form.incomeCaption(), "Einnahme aktiv");
    EXPECT_EQ(parts.captions, std::vector<std::string>{"Kein Pfad vorhanden..."});
    EXPECT_EQ(parts.started[StartStep::ShowTipWindow], 1);

    ASSERT_EQ(host.questions.size(), 1u);
    EXPECT_EQ(host.questions[0].title, "Steuernummer");
    EXPECT_EQ(host.questions[0].text,
              "Sie haben noch keine Steuernummer hinterlegt.\rBitte tragen Sie diese im Menüpunkt Aussteller ein.");

    EXPECT_EQ(home.readBytes("mwst.dat"), "\r\n");
    EXPECT_EQ(home.readBytes("nummer.dat"), "00000001\r\n");
    EXPECT_EQ(home.readBytes("druck.dat"), "\r\n\r\n\r\n");
    EXPECT_EQ(settings.option("Options", "Menue"), "XP");
}

// Settings that could not be read are no first start: the user is told of the file, not asked for a tax number
// (that the file stays is the settings store's matter).
TEST(QuittungLogicStart, UnreadableSettingsAskNoTaxNumberAndStayAsTheyAre)
{
    test::ProgramFolder home;
    std::filesystem::create_directories(home.folder / "config" / "zettelwerk.ini");
    SettingsStore settings(home.folder / "config");
    test::FakeHost host;
    ReceiptForm form;
    form.attach(&settings, &host);
    test::RecordingParts parts;
    QuittungLogic(form, settings, home.paths, host, parts, [] { return std::string("23.11.2026"); }).load();
    EXPECT_TRUE(host.questions.empty());
    EXPECT_FALSE(form.isVisible(F::Label29));
}

// Everything the user chose last time must be back after a restart (the menu design and button style: the frame's
// window test; saving at print: the main window's print test).
TEST_F(QuittungLogicTest, StoredValuesComeBackAtStart)
{
    settings.set("Options", "Belegart", "Rechnung");
    settings.set("Options", "Datumanzeige", "1");
    settings.set("Options", "Letzter_Beleg", "/home/anna/a.ZW5");
    settings.set("Options", "Ruler", "0");
    settings.set("Drucken", "Belege", "2b");
    settings.set("Drucken", "ZW_NR", "1");
    settings.set("Steuer", "Anzeigen", "Nein");
    settings.set("Steuer", "Kleinunternehmer", "Kleinunternehmer gem. § 19 UStG");
    settings.set("Steuer", "Steuer_Check", "1");
    settings.set("Steuer", "Steuernummer", "12/345/67890");
    settings.set("Waehrung", "waehr.Text", "USD");
    settings.set("Ausstellungsort", "Text8.Text", "Münster");
    settings.save(kTipApplicationName, "Options", "Show Tips at Startup", "0");
    home.writeBytes("mwst.dat", "7\r\n");
    home.writeBytes("nummer.dat", "00000041\r\n");
    home.writeBytes("druck.dat", "10\r\n2\r\n15\r\n");
    home.writeBytes("siglogoaa.dat", "1\r\n");
    home.writeBytes("aussteller.dat", "Zahnarztpraxis Dr. Wei\xDF\r\nHauptstra\xDF" "e 1");

    logic.load();

    EXPECT_EQ(form.text(F::Label1), "Rechnung");
    EXPECT_EQ(form.text(F::Text9), "23.11.2026");
    EXPECT_EQ(parts.captions, std::vector<std::string>{"/home/anna/a.ZW5"});
    EXPECT_EQ(parts.rulers, false);
    EXPECT_EQ(form.printLayout(), PrintLayout::TwoBlanks);
    EXPECT_EQ(form.quittnr(), 1);
    EXPECT_FALSE(form.isVisible(F::Text10));
    EXPECT_EQ(form.text(F::para19), "Kleinunternehmer gem. § 19 UStG");
    EXPECT_EQ(form.formBackground(), "\\hintergrund\\quittung_steueraus.jpg");
    EXPECT_EQ(form.text(F::steuernummer2), "12/345/67890");
    EXPECT_TRUE(form.isVisible(F::Label29));
    EXPECT_EQ(form.text(F::Text2), "USD");
    EXPECT_EQ(form.text(F::Text8), "Münster");
    EXPECT_EQ(parts.started[StartStep::ShowTipWindow], 0);
    EXPECT_EQ(form.text(F::Text3), "7");
    EXPECT_EQ(form.text(F::Text1), "00000041");
    EXPECT_EQ(form.oben(), "15");
    EXPECT_EQ(parts.started[StartStep::SwitchLogoOn], 1);
    EXPECT_EQ(form.text(F::RTFBox), "Zahnarztpraxis Dr. Wei\xC3\x9F\r\nHauptstra\xC3\x9F" "e 1");
    EXPECT_TRUE(host.questions.empty());
}

TEST_F(QuittungLogicTest, BadSettingsAndFilesNeverStopTheStart)
{
    settings.set("Options", "Auto_Save", "ja");
    settings.set("Options", "Ruler", "viele");
    settings.set("Options", "Menue", "Windows95");
    settings.set("Options", "Buttons", "Rund");
    settings.set("Drucken", "ZW_NR", "0");
    home.writeBytes("mwst.dat", "neunzehn\r\n");
    home.writeBytes("druck.dat", "10\r\n");
    home.writeBytes("nummer.dat", "A-17\r\n");
    home.writeBytes("sigunteraa.dat", "an\r\n");
    std::filesystem::create_directory(paths.dataFile("aussteller.dat")); // unreadable

    logic.load();

    EXPECT_EQ(form.saveCheck(), 0);
    EXPECT_EQ(parts.menuDesign, -1); // unknown design: nothing marked, nothing applied
    EXPECT_EQ(parts.buttonStyle, -1);
    EXPECT_EQ(form.quittnr(), 0);
    EXPECT_EQ(form.text(F::Text3), "neunzehn");
    EXPECT_EQ(form.text(F::Text1), "A-17");
    EXPECT_EQ(parts.started[StartStep::SwitchSignatureOn], 0);
    EXPECT_EQ(form.text(F::RTFBox), "");
    EXPECT_EQ(form.text(F::Label1), "Quittung");
    EXPECT_TRUE(host.messages.empty());
}

TEST_F(QuittungLogicTest, StartWithoutDataFolderStillReachesTheEnd)
{
    std::filesystem::remove_all(paths.dataFolder());
    logic.load();
    EXPECT_EQ(form.text(F::Label1), "Quittung");
    EXPECT_FALSE(std::filesystem::exists(paths.dataFolder())); // daten is expected, never created
}

TEST_F(QuittungLogicTest, NewReceiptAdvancesTheNumberAndClearsTheForm)
{
    form.setQuittnr(1);
    home.writeBytes("nummer.dat", "00000041\r\n");
    home.writeBytes("aussteller.dat", "Schule am See");
    settings.set("Ausstellungsort", "Text8.Text", "Kiel");
    for (F filled : {F::Text4, F::Text5, F::Text6, F::Text7, F::Text9, F::Text14, F::Text12})
        form.setText(filled, "x");
    form.setText(F::Text2, "CHF");

    logic.neue();

    EXPECT_EQ(form.text(F::Text1), "42");
    EXPECT_EQ(home.readBytes("nummer.dat"), "42\r\n");
    EXPECT_EQ(host.notices, std::vector<Notice>{Notice::neue_quittung});
    EXPECT_EQ(form.text(F::Text2), "EUR");
    for (F cleared : {F::Text4, F::Text5, F::Text6, F::Text7, F::Text9, F::Text10, F::Text11, F::Text12, F::Text14})
        EXPECT_EQ(form.text(cleared), "") << elementName(cleared);
    EXPECT_EQ(form.text(F::Text8), "Kiel");
    EXPECT_EQ(form.text(F::RTFBox), "Schule am See");
    logic.neue();
    EXPECT_EQ(form.text(F::Text1), "43");
}

TEST_F(QuittungLogicTest, NewReceiptNumberFollowsTheSwitchAndTheFile)
{
    struct Row
    {
        const char* name;
        int automatic;
        const char* file; // nullptr: no nummer.dat
        const char* shown;
        const char* written;
    };
    const Row rows[] = {
        {"without automatic numbers the file's number comes back", 0, "17\r\n", "17", "17\r\n"},
        {"a number with letters is kept", 1, "R-2026\r\n", "R-2026", "R-2026\r\n"},
        {"a missing file is written from the field", 0, nullptr, "00000001", "00000001\r\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(paths.dataFile("nummer.dat"));
        if (row.file)
            home.writeBytes("nummer.dat", row.file);
        form.setQuittnr(row.automatic);
        form.setText(F::Text1, row.file ? "99" : "00000001");
        logic.neue();
        EXPECT_EQ(form.text(F::Text1), row.shown);
        EXPECT_EQ(home.readBytes("nummer.dat"), row.written);
    }
}

TEST_F(QuittungLogicTest, TaxModeSwitchesFieldsBackgroundAndSetting)
{
    logic.steueraus();
    for (F hidden : {F::Text3, F::Text10, F::Text11, F::Label12, F::Label13, F::Label14})
        EXPECT_FALSE(form.isVisible(hidden)) << elementName(hidden);
    EXPECT_TRUE(form.isVisible(F::para19));
    EXPECT_EQ(settings.option("Steuer", "Anzeigen"), "Nein");

    logic.steueran();
    EXPECT_TRUE(form.isVisible(F::Text10));
    EXPECT_FALSE(form.isVisible(F::para19));
    EXPECT_EQ(settings.option("Steuer", "Anzeigen"), "Ja");
}

TEST_F(QuittungLogicTest, IncomeAndExpenseMarkExactlyOneEntry)
{
    logic.ausga();
    EXPECT_EQ(form.incomeCaption(), "Ausgabe aktiv");
    EXPECT_FALSE(form.isChecked("einna"));
    logic.incomeSwitchClicked(1);
    EXPECT_EQ(form.incomeCaption(), "Einnahme aktiv");
    EXPECT_FALSE(form.isChecked("ausga"));
}

TEST_F(QuittungLogicTest, PlaceOfIssueIsStoredAndAnEmptyAnswerClearsIt)
{
    for (const char* answer : {"Lübeck", ""}) {
        SCOPED_TRACE(answer);
        host.textAnswer = answer;
        logic.ortfest();
        EXPECT_EQ(form.text(F::Text8), answer);
        EXPECT_EQ(settings.option("Ausstellungsort", "Text8.Text"), answer);
    }
}

TEST_F(QuittungLogicTest, ReceiptTypesSetTitleSizeAndSetting)
{
    logic.beleg(ReceiptTypeMenu::beleg2, 3);
    EXPECT_EQ(form.text(F::Label1), "Praxisgebühr und Zuzahlungen");
    EXPECT_EQ(form.pointSize(F::Label1), 12);
    logic.beleg(ReceiptTypeMenu::beleg1, 7);
    EXPECT_EQ(form.pointSize(F::Label1), 18);
    logic.beleg(ReceiptTypeMenu::beleg2, 1);
    EXPECT_EQ(settings.option("Options", "Belegart"), "Heilbehandlung");
    logic.beleg(ReceiptTypeMenu::beleg1, 8); // the separator
    EXPECT_EQ(form.text(F::Label1), "Heilbehandlung");

    host.textAnswer = "";
    logic.beleg(ReceiptTypeMenu::beleg1, 9);
    EXPECT_EQ(form.text(F::Label1), "");
    // An empty stored type counts as absent at the next start.
    logic.load();
    EXPECT_EQ(form.text(F::Label1), "Quittung");
}

TEST_F(QuittungLogicTest, OwnLabelSetWinsAtStartEvenWithGaps)
{
    settings.set("Felder", "Bezeichnung1", "Firma");
    settings.set("Felder", "Bezeichnung15", "St.-Nr.");
    logic.felder();
    EXPECT_EQ(form.text(F::Label2), "Firma");
    EXPECT_EQ(form.text(F::Label14), ""); // Bezeichnung5 absent
    EXPECT_EQ(form.text(F::Label29), "St.-Nr.");
}

TEST_F(QuittungLogicTest, EnglishLabelsLastOneSession)
{
    logic.spr_englisch();
    EXPECT_EQ(form.text(F::Label7), "correct to reseive");
    logic.felder(); // as at the next start
    EXPECT_EQ(form.text(F::Label7), "richtig erhalten zu haben, bestätigt");
    EXPECT_TRUE(form.isChecked("spr_deutsch"));
}

TEST_F(QuittungLogicTest, ChosenPrintLayoutIsStoredInItsOwnCode)
{
    logic.printLayoutChosen(2);
    EXPECT_EQ(settings.option("Drucken", "Belege"), "1b");
    EXPECT_EQ(form.printLayout(), PrintLayout::OneBlank);
}

TEST_F(QuittungLogicTest, ExitAsksAndTheGuardKeepsASecondUnloadOut)
{
    host.confirmAnswer = kAnswerNo;
    EXPECT_FALSE(logic.exxxit());
    host.confirmAnswer = kAnswerYes;
    EXPECT_TRUE(logic.exxxit());
    EXPECT_EQ(host.questions.back().text, "Wollen Sie das Programm jetzt beenden?");

    EXPECT_TRUE(logic.beginUnload());
    EXPECT_FALSE(logic.beginUnload());
    logic.endUnload();
    EXPECT_TRUE(logic.beginUnload());
}

} // namespace
} // namespace zw
