#include <gtest/gtest.h>

#include <fstream>

#include "app/TextFile.h"
#include "core/RunError.h"
#include "service/Autostart.h"
#include "service/Tips.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

namespace fs = std::filesystem;

TEST(TipListTest, ReadsTheTipsFileByItsLineRulesAndSurvivesBadFiles)
{
    test::TempFolder folder;
    const auto file = folder / "Tipofday.txt";
    const auto never = [] { return 0.0; };
    TipList tips;
    EXPECT_FALSE(tips.LoadTips(folder / "fehlt.txt", never));

    std::ofstream(file, std::ios::binary) << "  Erster;Zeile 1\\nZeile 2;Rest  \r\n\r\n   \r\nZweiter;B\xE4r\r\nOhne Strichpunkt\r\n";
    ASSERT_TRUE(tips.LoadTips(file, [] { return 0.999; }));
    EXPECT_EQ(tips.count(), 3u) << "blank lines are skipped";
    EXPECT_EQ(tips.CurrentTip, 3);
    EXPECT_THROW(tips.DisplayCurrentTip(), RunError) << "a line without \";\" has no body";
    tips.next();
    const auto first = tips.DisplayCurrentTip();
    EXPECT_EQ(first.caption, "Erster");
    EXPECT_EQ(first.content, "Zeile 1\r\nZeile 2") << "further parts are ignored";
    EXPECT_EQ(first.count, "1 of 3");
    tips.previous();
    tips.previous();
    EXPECT_EQ(tips.DisplayCurrentTip().content, "Bär");

    // A draw of 1 lands above the count and falls back to the first tip.
    ASSERT_TRUE(tips.LoadTips(file, [] { return 1.0; }));
    EXPECT_EQ(tips.CurrentTip, 1);

    std::ofstream(file, std::ios::binary) << "\r\n  \r\n";
    ASSERT_TRUE(tips.LoadTips(file, never));
    EXPECT_EQ(tips.count(), 0u);
    EXPECT_THROW(tips.DisplayCurrentTip(), RunError);

    std::ofstream(file, std::ios::binary) << "Lang;" << std::string(10 << 20, 'x') << "\x81\x8D";
    ASSERT_TRUE(tips.LoadTips(file, never));
    tips.next();
    EXPECT_EQ(tips.CurrentTip, 1) << "one tip: next stays on it";
    EXPECT_GT(tips.DisplayCurrentTip().content.size(), std::size_t{10 << 20});
}

TEST(AutostartTest, TheEntryQuotesTheProgramAndItsNameIsCutFromThePath)
{
    const struct
    {
        const char* path;
        const char* name;
    } names[] = {{"/usr/bin/zettelwerk", "zettelwerk"},
                 {"/opt/zettel.werk/bin/zettelwerk", "zettelwerk"},
                 {"/home/a/zettel.werk.bin", "zettel.werk"}};
    for (const auto& row : names)
        EXPECT_EQ(autostartName(row.path), row.name) << row.path;

    test::TempFolder folder;
    const auto autostart = folder / "neu" / "autostart";
    const std::string program = "/home/Kasse $1/zettel werk";
    ASSERT_TRUE(SetAutoRun(autostart, "zettelwerk", program)) << "a missing folder is made";
    const std::string entry = readFileBytes(autostart / "zettelwerk.desktop");
    EXPECT_NE(entry.find("\nExec=\"/home/Kasse \\\\$1/zettel werk\"\n"), std::string::npos) << entry;

    std::ofstream(folder / "blockiert") << "eine Datei, kein Ordner";
    EXPECT_FALSE(SetAutoRun(folder / "blockiert", "zettelwerk", program));
}

} // namespace
} // namespace zw
