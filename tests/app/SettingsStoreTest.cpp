#include "app/SettingsStore.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/app/TempFolder.h"

namespace zw {
namespace {

TEST(SettingsStore, ValuesWrittenInOneRunAreThereInTheNext)
{
    test::TempFolder folder;
    {
        SettingsStore store(folder.path() / "Zettelwerk");
        store.save("Zettelwerk", "Ausstellungsort", "Text8.Text", "Köln");
        store.save("Zettelwerk", "Options", "Belegart", "Praxisgebühr und Zuzahlungen");
        store.save("Zettelwerk", "Steuer", "Kleinunternehmer", "Gemäß § 19 UStG\r\nkeine Umsatzsteuer = 0 [x]\\");
        store.save("zettelwerk", "Options", "Show Tips at Startup", "0");
    }
    SettingsStore next(folder.path() / "Zettelwerk");
    EXPECT_EQ(next.get("Zettelwerk", "Ausstellungsort", "Text8.Text", ""), "Köln");
    EXPECT_EQ(next.get("Zettelwerk", "Options", "Belegart", ""), "Praxisgebühr und Zuzahlungen");
    EXPECT_EQ(next.get("Zettelwerk", "Steuer", "Kleinunternehmer", ""), "Gemäß § 19 UStG\r\nkeine Umsatzsteuer = 0 [x]\\");
    EXPECT_EQ(next.get("zettelwerk", "Options", "Show Tips at Startup", "1"), "0");
    EXPECT_EQ(next.get("ZETTELWERK", "Options", "Show Tips at Startup", "1"), "0");
}

TEST(SettingsStore, NamesCompareWithoutCaseAndKeepTheirFirstSpelling)
{
    test::TempFolder folder;
    SettingsStore store(folder.path());
    store.save("Zettelwerk", "Options", "Auto_Save", "1");
    store.save("Zettelwerk", "OPTIONS", "auto_save", "0");
    EXPECT_EQ(store.get("Zettelwerk", "options", "AUTO_SAVE", ""), "0");
    EXPECT_NE(test::readBytes(store.fileOf("Zettelwerk")).find("[Options]\nAuto_Save=0\n"), std::string::npos);
}

TEST(SettingsStore, AbsentKeysReadAsTheDefaultAndDeletingThemFailsQuietly)
{
    test::TempFolder folder;
    SettingsStore store(folder.path());
    EXPECT_EQ(store.get("Zettelwerk", "Options", "Ruler", "1"), "1");
    EXPECT_FALSE(store.remove("Zettelwerk", "Options", "Belegart"));
    EXPECT_FALSE(store.removeSection("Zettelwerk", "Waehrung"));
    store.save("Zettelwerk", "Waehrung", "waehr.Text", "USD");
    store.save("Zettelwerk", "Options", "Belegart", "Rechnung");
    EXPECT_TRUE(store.remove("Zettelwerk", "Options", "Belegart"));
    EXPECT_TRUE(store.removeSection("Zettelwerk", "Waehrung"));
    SettingsStore next(folder.path());
    EXPECT_EQ(next.get("Zettelwerk", "Options", "Belegart", "none"), "none");
    EXPECT_EQ(next.get("Zettelwerk", "Waehrung", "waehr.Text", "none"), "none");
}

TEST(SettingsStore, FileIsPrivateToTheUser)
{
    test::TempFolder folder;
    SettingsStore store(folder.path() / "new");
    store.save("Zettelwerk", "EMail", "Passwort", "geheim");
    struct stat info{};
    ASSERT_EQ(::stat(store.fileOf("Zettelwerk").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST(SettingsStore, UnwritableFolderKeepsValuesForTheRunAndReportsTheFailure)
{
    test::TempFolder folder;
    // A folder below a plain file can never be created, not even by root.
    std::ofstream(folder / "blocker") << "x";
    SettingsStore store(folder / "blocker" / "Zettelwerk");
    store.save("Zettelwerk", "Options", "Menue", "2007");
    EXPECT_EQ(store.get("Zettelwerk", "Options", "Menue", ""), "2007");
    EXPECT_FALSE(store.lastWriteError().empty());
}

TEST(SettingsStore, DamagedFileLinesAreSkipped)
{
    test::TempFolder folder;
    std::ofstream(folder / "zettelwerk.ini") << "garbage before any section\n[Options]\nno separator\nMenue=2003\r\n[";
    SettingsStore store(folder.path());
    EXPECT_EQ(store.get("Zettelwerk", "Options", "Menue", ""), "2003");
    EXPECT_EQ(store.get("Zettelwerk", "Options", "no separator", "x"), "x");
}

} // namespace
} // namespace zw
