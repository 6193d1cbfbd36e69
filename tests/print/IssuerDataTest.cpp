#include "print/IssuerData.h"

#include <gtest/gtest.h>

#include "tests/core/RunErrorNumber.h"

#include "core/ReceiptForm.h"
#include "tests/app/LockProbe.h"
#include "tests/app/ProgramFolder.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using F = FormElement;

class IssuerDataTest : public ::testing::Test, protected test::ProgramFolder
{
protected:
    void steuer(const char* key, const char* value) { settings.save(kApplicationName, "Steuer", key, value); }
    std::string steuer(const char* key) { return settings.get(kApplicationName, "Steuer", key, "<none>"); }

    ReceiptForm form;
    test::MemorySettings settings;
    test::FakeHost host;
    IssuerData issuers{form, settings, paths, host};
};

TEST_F(IssuerDataTest, OpeningReadsTheWholeFileInItsCodePageAndTheDefaultsOfEmptyKeys)
{
    EXPECT_EQ(test::errorNumberOf([&] { issuers.openAussteller(); }), 53) << "no aussteller.dat";
    writeBytes("aussteller.dat", "M\xfcller GmbH\r\nStra\xdf"
                                "e 1\r\n");
    IssuerEntry entry = issuers.openAussteller();
    EXPECT_EQ(entry.text, "Müller GmbH\r\nStraße 1\r\n");
    EXPECT_EQ(entry.taxNumber, "");
    EXPECT_FALSE(entry.showTaxNumber);
    EXPECT_EQ(entry.exemptionNote, "Von der Umsatzsteuer nach §19 UStG befreit.");

    steuer("Steuernummer", "12/345/67890");
    steuer("Steuer_Check", "1");
    steuer("Kleinunternehmer", "Kein Ausweis der USt.");
    entry = issuers.openAussteller();
    EXPECT_EQ(entry.taxNumber, "12/345/67890");
    EXPECT_TRUE(entry.showTaxNumber);
    EXPECT_EQ(entry.exemptionNote, "Kein Ausweis der USt.");
}

// Each open and save adds one empty line, an empty text is saved as one; the three keys come back.
TEST_F(IssuerDataTest, SavingAddsALineEndToTheTextAndStoresTheThreeKeys)
{
    writeBytes("aussteller.dat", "Muster\r\n");
    for (int round = 0; round < 2; ++round)
        issuers.saveAussteller(issuers.openAussteller());
    EXPECT_EQ(readBytes("aussteller.dat"), "Muster\r\n\r\n\r\n");
    EXPECT_EQ(form.text(F::RTFBox), "Muster\r\n\r\n");
    EXPECT_EQ(host.notices, (std::vector<Notice>{Notice::aussteller1, Notice::aussteller1}));

    issuers.saveAussteller({"", "99/999", true, "Notiz"});
    EXPECT_EQ(readBytes("aussteller.dat"), "\r\n");
    const IssuerEntry back = issuers.openAussteller();
    EXPECT_EQ(back.taxNumber, "99/999");
    EXPECT_TRUE(back.showTaxNumber);
    EXPECT_EQ(back.exemptionNote, "Notiz");
}

TEST_F(IssuerDataTest, ThePagesShowTheirTaxNumbersOnlyWhileTheFirstIssuerHasOne)
{
    writeBytes("aussteller.dat", "Eins\r\n");
    writeBytes("aussteller2.dat", "Zwei\r\n");
    steuer("Steuernummer2", "222");
    steuer("Steuernummer3", "333");

    auto pages = issuers.openAusstellerPro();
    EXPECT_EQ(pages[1].text, "Zwei\r\n");
    EXPECT_EQ(pages[2].text, "");
    for (const auto& page : pages)
        EXPECT_EQ(page.taxNumber, "");

    steuer("Steuernummer", "111");
    pages = issuers.openAusstellerPro();
    EXPECT_EQ(pages[0].taxNumber, "111");
    EXPECT_EQ(pages[2].taxNumber, "333");
}

TEST_F(IssuerDataTest, ChoosingASecondIssuerShowsItButLeavesTheActiveFileAndKey)
{
    writeBytes("aussteller.dat", "Eins\r\n");
    steuer("Steuernummer", "111");
    issuers.chooseIssuer(1, {"Zwei GmbH\r\nWeg 2", "222"});

    EXPECT_EQ(form.text(F::RTFBox), "Zwei GmbH\r\nWeg 2");
    EXPECT_EQ(form.text(F::steuernummer2), "222");
    EXPECT_EQ(issuers.openAusstellerPro()[1].text, "Zwei GmbH\r\nWeg 2\r\n");
    EXPECT_EQ(readBytes("aussteller.dat"), "Eins\r\n");
    EXPECT_EQ(steuer("Steuernummer"), "111");

    issuers.chooseIssuer(0, {"Neu", "000"});
    EXPECT_EQ(readBytes("aussteller.dat"), "Neu\r\n");
    EXPECT_EQ(steuer("Steuernummer"), "000");
}

// The issuer files are replaced whole; their writes wait for another program's cycle on the same file.
TEST_F(IssuerDataTest, SavingWaitsForAnotherProgramsLock)
{
    writeBytes("aussteller.dat", "Alt\r\n");
    EXPECT_TRUE(test::waitsForLock(paths.dataFile("aussteller.dat"), [this] { issuers.saveAussteller({"Neu", "", false, ""}); }));
    EXPECT_TRUE(test::waitsForLock(paths.dataFile("aussteller2.dat"),
                                   [this] { issuers.chooseIssuer(1, {"Zweiter", "12/345"}); }));
    EXPECT_EQ(readBytes("aussteller.dat"), "Neu\r\n");
    EXPECT_EQ(readBytes("aussteller2.dat"), "Zweiter\r\n");
}

} // namespace
} // namespace zw
