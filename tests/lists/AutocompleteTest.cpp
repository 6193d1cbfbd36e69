#include "lists/Autocomplete.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "app/AtomicFile.h"
#include "core/RunError.h"
#include "lists/AutocompleteEditor.h"
#include "lists/AutocompleteTyping.h"
#include "lists/Time.h"
#include "tests/app/LockProbe.h"
#include "tests/app/TempFolder.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using ::testing::ElementsAre;
using Lines = std::vector<std::string>;

class AutocompleteTest : public ::testing::Test
{
protected:
    Autocomplete listOf(const Lines& entries)
    {
        Autocomplete list(file);
        for (const auto& entry : entries)
            list.AddEntry(entry);
        return list;
    }

    test::TempFolder folder;
    std::filesystem::path file = folder / "autocom.dat";
};

TEST_F(AutocompleteTest, CompletesFromTheFirstEntryThatBeginsWithTheTypedText)
{
    struct Row
    {
        const char* name;
        Lines entries;
        const char* typed;
        const char* completed;
    };
    const Row rows[] = {
        {"the earliest entry wins", {"Anna", "Anton"}, "an", "Anna"},
        {"a longer prefix reaches the later one", {"Anna", "Anton"}, "ant", "Anton"},
        {"an entry in upper case counts as existing", {"ABC"}, "abc", ""},
        {"mixed case does not", {"Abc"}, "abc", "Abc"},
        {"typing the whole entry in upper case stops", {"Abc", "ABC"}, "ABC", ""},
        {"no entry begins so", {"Anna"}, "anx", ""},
        {"longer than every entry", {"An"}, "anna", ""},
        {"accented capitals", {"Éclair", "ŒUVRE-Bau"}, "éc", "Éclair"},
        {"sharp s stays itself", {"Straße"}, "STRASS", ""},
        {"an empty list", {}, "a", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(listOf(row.entries).Complete(row.typed, IgnoreCase::Yes), row.completed);
    }
}

TEST_F(AutocompleteTest, ReadsTheFileFieldByField)
{
    struct Row
    {
        const char* name;
        std::string text;
        Lines fields;
    };
    const Row rows[] = {
        {"a comma splits an entry", "Meier, Hans\r\n", {"Meier", "Hans"}},
        {"quotes keep a comma and lose the rest", "\"Meier, Hans\" x,y\r\n", {"Meier, Hans", "y"}},
        {"blanks fall away", " \t Anna  \r\n", {"Anna"}},
        {"an empty line is an empty field", "a\r\n\r\nb", {"a", "", "b"}},
        {"a comma at the end opens an empty field", "a,\n", {"a", ""}},
        {"an unclosed quote ends with its line", "\"offen\r\nzu\r\n", {"offen", "zu"}},
        {"an empty file has no field", "", {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(readInputFields(row.text), row.fields);
    }
}

TEST_F(AutocompleteTest, LoadKeepsEmptyElementsAndWritesEveryElementAsALine)
{
    struct Row
    {
        const char* name;
        std::string onDisk;
        Lines loaded;
        std::string savedBack;
    };
    const Row rows[] = {
        {"an empty file gives two empty elements", "", {"", ""}, "\r\n\r\n"},
        {"a field whose upper case is there already stays empty",
         "abc\r\nABC\r\nAbc\r\n",
         {"abc", "ABC", ""},
         "abc\r\nABC\r\n\r\n"},
        {"Windows-1252 text and its undefined bytes come back byte for byte",
         "M\xFCller\x81\x8D\r\nM\xC3\xBC\r\n",
         {"Müller\u0081\u008D", "MÃ¼"},
         "M\xFCller\x81\x8D\r\nM\xC3\xBC\r\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test::writeBytes(file, row.onDisk);
        Autocomplete list(file);
        list.LoadEntries();
        EXPECT_EQ(list.entries(), row.loaded);
        list.SaveEntries();
        EXPECT_EQ(test::readBytes(file), row.savedBack);
    }
}

TEST_F(AutocompleteTest, WhatCannotBeReadIsKeptAndNeverWrittenOver)
{
    // Missing: the list stays as it is, and nothing is written until asked.
    Autocomplete list = listOf({"Anna"});
    list.LoadEntries();
    EXPECT_THAT(list.entries(), ElementsAre("Anna"));
    EXPECT_FALSE(std::filesystem::exists(file));

    // A 20 MB line is one entry, completed and saved back whole.
    const std::string huge = "Z" + std::string(20 << 20, 'x');
    test::writeBytes(file, huge + "\r\n");
    list.LoadEntries();
    EXPECT_EQ(list.Complete("zx", IgnoreCase::Yes).size(), huge.size());
    list.SaveEntries();
    EXPECT_EQ(test::readBytes(file), huge + "\r\n");

    // Something in the file's place that cannot be read: loading fails, and no save replaces it.
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_THROW(list.LoadEntries(), RunError);
    EXPECT_THAT(list.entries(), ElementsAre(huge));
    EXPECT_THROW(list.SaveEntries(), RunError);
    test::FakeHost host;
    AutocompleteEditor editor(list, host);
    editor.open();
    EXPECT_TRUE(editor.lines().empty());
    EXPECT_THROW(editor.save(), RunError);
    EXPECT_TRUE(std::filesystem::is_directory(file));
}

// The completion and its selection as typed are the autocompletion window test's matter.
TEST_F(AutocompleteTest, BackspaceStopsCompletingUntilAnotherKeyAndEnterAddsTheField)
{
    Autocomplete list = listOf({"Müller GmbH"});
    AutocompleteTyping typing(list);
    ASSERT_TRUE(typing.changed("mü", 2));
    typing.keyPressed(8, "Müller GmbH");
    EXPECT_FALSE(typing.changed("Mü", 2));
    EXPECT_TRUE(typing.keyPressed(13, "Mü")); // Enter adds and leaves the flag set
    EXPECT_FALSE(typing.changed("Mü", 2));
    typing.keyPressed('l', "Mü");
    EXPECT_TRUE(typing.changed("Mül", 3));
    EXPECT_FALSE(typing.changed("", 0));
    EXPECT_TRUE(typing.keyPressed(13, ""));
    EXPECT_THAT(list.entries(), ElementsAre("Müller GmbH", "Mü", ""));
}

TEST_F(AutocompleteTest, TheEditorCountsOnlyWhereItsButtonsSaySo)
{
    test::writeBytes(file, "Anna\r\nAnton\r\nAnna\r\n");
    Autocomplete list(file);
    test::FakeHost host;
    AutocompleteEditor editor(list, host);
    editor.open();
    editor.deleteMarked({});
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, "Es sind keine Einträge zum Löschen markiert!");
    EXPECT_EQ(host.messages[0].title, "Autovervollständigung");

    editor.addEntry("Anna");
    EXPECT_EQ(editor.countCaption(), "Einträge: 4");
    editor.deleteMarked({3, 1});
    EXPECT_THAT(editor.lines(), ElementsAre("Anna", "Anna"));
    EXPECT_EQ(editor.countCaption(), "Einträge: 4"); // deleting leaves the count alone
    editor.removeDuplicates();
    EXPECT_THAT(editor.lines(), ElementsAre("Anna"));
    EXPECT_EQ(editor.countCaption(), "Einträge: 1");

    editor.save(); // saved lines reach the running completion at "Zurück", unsaved ones do not
    editor.clearList();
    EXPECT_EQ(editor.countCaption(), "Einträge: 1");
    editor.back();
    EXPECT_THAT(list.entries(), ElementsAre("Anna"));
    EXPECT_EQ(test::readBytes(file), "Anna\r\n");
}

TEST_F(AutocompleteTest, WaitEndsOnTheWholeSecondsSinceItsStartAlsoPastMidnight)
{
    struct Row
    {
        const char* name;
        double start;
        double endsAt;
    };
    const Row rows[] = {
        {"the start counts from its whole second", 100.7, 103.0},
        {"past midnight", 86399.5, 2.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        double now = row.start;
        int turns = 0;
        Wait(
            3, [&] { return now; },
            [&] {
                ++turns;
                now += 0.1;
                if (now >= 86400)
                    now -= 86400;
            });
        EXPECT_NEAR(now, row.endsAt, 0.11);
        EXPECT_GT(turns, 0);
    }
}

// The completion of two programs, and the editor beside them, keep what the others added or removed.
TEST_F(AutocompleteTest, TwoProgramsAndTheEditorLoseNoEntry)
{
    test::writeBytes(file, "Meier\r\nSchulz\r\n");
    Autocomplete window(file);
    Autocomplete commandLine(file);
    window.LoadEntries();
    commandLine.LoadEntries();
    window.AddEntry("Fenster");
    window.SaveEntries();
    commandLine.AddEntry("Kommandozeile");
    commandLine.SaveEntries();
    EXPECT_EQ(test::readBytes(file), "Meier\r\nSchulz\r\nFenster\r\nKommandozeile\r\n");
    EXPECT_TRUE(commandLine.Exists("Fenster", IgnoreCase::No));

    test::FakeHost host;
    AutocompleteEditor editor(window, host);
    editor.open();
    editor.deleteMarked({0});
    window.AddEntry("Noch eins");
    window.SaveEntries();
    editor.save();
    EXPECT_EQ(test::readBytes(file), "Schulz\r\nFenster\r\nKommandozeile\r\nNoch eins\r\n");
    EXPECT_THAT(editor.lines(), ElementsAre("Schulz", "Fenster", "Kommandozeile", "Noch eins"));
    EXPECT_TRUE(test::waitsForLock(file, [&editor] { editor.save(); }));
    EXPECT_TRUE(test::waitsForLock(file, [&window] { window.SaveEntries(); }));
}

} // namespace
} // namespace zw
