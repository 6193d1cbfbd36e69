#include "app/SettingsStore.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/app/LockProbe.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

// Names compare without case, as the registry did, and keep their first spelling.
TEST(SettingsStore, ValuesWrittenInOneRunAreThereInTheNext)
{
    test::TempFolder folder;
    {
        SettingsStore store(folder.path() / "Zettelwerk");
        store.save("Zettelwerk", "Ausstellungsort", "Text8.Text", "Köln");
        store.save("Zettelwerk", "Options", "Belegart", "Rechnung");
        store.save("Zettelwerk", "OPTIONS", "belegart", "Praxisgebühr und Zuzahlungen");
        store.save("Zettelwerk", "Steuer", "Kleinunternehmer", "Gemäß § 19 UStG\r\nkeine Umsatzsteuer = 0 [x]\\");
        store.save("zettelwerk", "Options", "Show Tips at Startup", "0");
        EXPECT_NE(test::readBytes(store.fileOf("Zettelwerk")).find("[Options]\nBelegart="), std::string::npos);
    }
    SettingsStore next(folder.path() / "Zettelwerk");
    EXPECT_EQ(next.get("Zettelwerk", "Ausstellungsort", "Text8.Text", ""), "Köln");
    EXPECT_EQ(next.get("Zettelwerk", "options", "BELEGART", ""), "Praxisgebühr und Zuzahlungen");
    EXPECT_EQ(next.get("Zettelwerk", "Steuer", "Kleinunternehmer", ""), "Gemäß § 19 UStG\r\nkeine Umsatzsteuer = 0 [x]\\");
    EXPECT_EQ(next.get("zettelwerk", "Options", "Show Tips at Startup", "1"), "0");
    EXPECT_EQ(next.get("ZETTELWERK", "Options", "Show Tips at Startup", "1"), "0");
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

// The file holds the mail password: a new file and one that was readable to others are the owner's alone.
TEST(SettingsStore, FileIsPrivateToTheUser)
{
    test::TempFolder folder;
    std::filesystem::create_directory(folder / "old");
    test::writeBytes(folder / "old" / "zettelwerk.ini", "[EMail]\nPasswort=geheim\n");
    for (const char* sub : {"new", "old"}) {
        SCOPED_TRACE(sub);
        if (std::filesystem::exists(folder / sub / "zettelwerk.ini"))
            ::chmod((folder / sub / "zettelwerk.ini").c_str(), 0644);
        SettingsStore store(folder / sub);
        store.save("Zettelwerk", "EMail", "Passwort", "geheim");
        struct stat info{};
        ASSERT_EQ(::stat(store.fileOf("Zettelwerk").c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 07777, 0600u);
    }
}

// A file edited by hand keeps every line the program did not change: comments, keys before the first section,
// lines without "=" (which are no key), blank lines and backslashes.
TEST(SettingsStore, KeepsWhatItDidNotWrite)
{
    test::TempFolder folder;
    const std::string handWritten = "; von Hand\r\nvorab=1\r\n\r\n[Options]\r\n# Pfad der Belege\r\n"
                                    "Ablage=D:\\Belege\\2026\\\r\nMenue=XP\r\nohne Gleichheitszeichen\r\n\r\n"
                                    "[Steuer]\r\nSteuer_Check=1\r\n";
    test::writeBytes(folder / "zettelwerk.ini", handWritten);
    SettingsStore store(folder.path());
    EXPECT_EQ(store.get("Zettelwerk", "Options", "Ablage", ""), "D:\\Belege\\2026\\");
    EXPECT_EQ(store.get("Zettelwerk", "Options", "ohne Gleichheitszeichen", "x"), "x");
    store.save("Zettelwerk", "Options", "Menue", "2007");
    store.save("Zettelwerk", "Options", "Kalender", "1");
    store.save("Zettelwerk", "Waehrung", "waehr.Text", "CHF");
    EXPECT_TRUE(store.remove("Zettelwerk", "Steuer", "Steuer_Check"));
    EXPECT_EQ(test::readBytes(folder / "zettelwerk.ini"),
              "; von Hand\nvorab=1\n\n[Options]\n# Pfad der Belege\nAblage=D:\\Belege\\2026\\\nMenue=2007\n"
              "Kalender=1\nohne Gleichheitszeichen\n\n[Steuer]\n[Waehrung]\nwaehr.Text=CHF\n");
    SettingsStore next(folder.path());
    EXPECT_EQ(next.get("Zettelwerk", "Options", "Ablage", ""), "D:\\Belege\\2026\\");
    EXPECT_EQ(next.get("Zettelwerk", "Options", "Menue", ""), "2007");
}

// Told once in German, naming the file; a later success and a new failure tell again.
TEST(SettingsStore, AFailedWriteIsToldOnce)
{
    test::TempFolder folder;
    std::ofstream(folder / "blocker") << "x";
    SettingsStore store(folder / "blocker" / "Zettelwerk");
    store.save("Zettelwerk", "Options", "Menue", "2007");
    std::vector<std::string> told;
    store.setNoticeRoutine([&told](const std::string& message) { told.push_back(message); });
    store.save("Zettelwerk", "Options", "Buttons", "Flat");
    ASSERT_EQ(told.size(), 1u) << "a notice raised before the routine was set waits for it";
    EXPECT_NE(told[0].find("Die Einstellungen konnten nicht in " + (folder / "blocker").string()), std::string::npos)
        << told[0];
    EXPECT_EQ(store.get("Zettelwerk", "Options", "Buttons", ""), "Flat") << "the value stays for the run";
    EXPECT_FALSE(store.lastWriteError().empty());
}

// Whatever stands in the file's place, the program runs on defaults, is told once which file, and never
// replaces it.
TEST(SettingsStore, AnUnreadableFileIsToldOnceAndNeverWrittenOver)
{
    const std::pair<const char*, std::function<void(const std::filesystem::path&)>> things[] = {
        {"fifo", [](const std::filesystem::path& file) { ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0); }},
        {"folder", [](const std::filesystem::path& file) { std::filesystem::create_directories(file / "x"); }},
    };
    for (const auto& [kind, make] : things) {
        SCOPED_TRACE(kind);
        test::TempFolder folder;
        const auto file = folder / "zettelwerk.ini";
        make(file);
        const auto type = std::filesystem::status(file).type();
        SettingsStore store(folder.path());
        std::vector<std::string> told;
        store.setNoticeRoutine([&told](const std::string& message) { told.push_back(message); });
        EXPECT_EQ(store.get("Zettelwerk", "Steuer", "Steuer_Check", "leer"), "leer");
        EXPECT_FALSE(store.readable("Zettelwerk"));
        store.save("Zettelwerk", "Options", "Menue", "2007");
        store.removeSection("Zettelwerk", "Options");
        store.save("Zettelwerk", "Options", "Menue", "2003");
        EXPECT_EQ(store.get("Zettelwerk", "Options", "Menue", ""), "2003");
        EXPECT_EQ(std::filesystem::status(file).type(), type);
        ASSERT_EQ(told.size(), 1u);
        EXPECT_EQ(told[0], "Die Einstellungsdatei " + file.string() +
                               " konnte nicht gelesen werden. Das Programm arbeitet bis zum Ende mit den "
                               "Standardwerten und überschreibt die Datei nicht.");
        EXPECT_TRUE(store.readable("zettelwerk.tips")) << "another application's file is its own matter";
    }
}

// The window and the command line each keep a store; what one saved is not dropped by the other's next save.
TEST(SettingsStore, TwoProgramsSavingKeepEachOthersValues)
{
    test::TempFolder folder;
    SettingsStore window(folder.path());
    SettingsStore commandLine(folder.path());
    EXPECT_EQ(window.get("Zettelwerk", "Options", "Menue", ""), "");
    EXPECT_EQ(commandLine.get("Zettelwerk", "EMail", "Name", ""), "");
    window.save("Zettelwerk", "Options", "Menue", "2007");
    commandLine.save("Zettelwerk", "EMail", "Name", "Anna");
    window.save("Zettelwerk", "Options", "Buttons", "Flat");
    EXPECT_TRUE(commandLine.removeSection("Zettelwerk", "Options")) << "a section the other saved is there to remove";
    SettingsStore next(folder.path());
    EXPECT_EQ(next.get("Zettelwerk", "EMail", "Name", ""), "Anna");
    EXPECT_EQ(next.get("Zettelwerk", "Options", "Buttons", "weg"), "weg") << "the section went as the other asked";
    EXPECT_TRUE(test::waitsForLock(window.fileOf("Zettelwerk"),
                                   [&window] { window.save("Zettelwerk", "Options", "Kalender", "1"); }));
}

} // namespace
} // namespace zw
