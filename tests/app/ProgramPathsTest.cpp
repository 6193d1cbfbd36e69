#include "app/ProgramPaths.h"

#include <fstream>
#include <gtest/gtest.h>

#include "tests/app/TempFolder.h"

namespace zw {
namespace {

TEST(ProgramPaths, BackslashPathsResolveBelowTheProgramFolder)
{
    ProgramPaths paths("/opt/zw");
    EXPECT_EQ(paths.resolve("\\hintergrund\\hg1.jpg"), std::filesystem::path("/opt/zw/hintergrund/hg1.jpg"));
    EXPECT_EQ(paths.resolve("temp/temp_.bmp"), std::filesystem::path("/opt/zw/temp/temp_.bmp"));
    EXPECT_EQ(paths.dataFile("nummer.dat"), std::filesystem::path("/opt/zw/daten/nummer.dat"));
}

TEST(ProgramPaths, FirstStartCopiesTheWholeDistributionAndLaterStartsLeaveItAlone)
{
    test::TempFolder folder;
    auto dist = folder / "dist";
    std::filesystem::create_directories(dist / "daten");
    std::filesystem::create_directories(dist / "hintergrund");
    std::filesystem::create_directories(dist / "temp");
    std::ofstream(dist / "daten" / "waehrung.dat") << "EUR\r\n";
    std::ofstream(dist / "hintergrund" / "quittung_leer.jpg") << "jpg";

    auto home = folder / "home";
    ASSERT_TRUE(ProgramPaths::install(dist, home));
    EXPECT_TRUE(std::filesystem::exists(home / "daten" / "waehrung.dat"));
    EXPECT_TRUE(std::filesystem::exists(home / "hintergrund" / "quittung_leer.jpg"));
    EXPECT_TRUE(std::filesystem::is_directory(home / "temp"));

    // The user's own data is never overwritten by a later start.
    std::ofstream(home / "daten" / "waehrung.dat") << "CHF\r\n";
    ASSERT_TRUE(ProgramPaths::install(dist, home));
    std::ifstream in(home / "daten" / "waehrung.dat");
    std::string line;
    std::getline(in, line);
    EXPECT_EQ(line, "CHF\r");
    // No staging folder is left behind.
    for (const auto& entry : std::filesystem::directory_iterator(home))
        EXPECT_NE(entry.path().filename().string().rfind(".install-", 0), 0u) << entry.path();
}

TEST(ProgramPaths, MissingDistributionInstallsNothing)
{
    test::TempFolder folder;
    EXPECT_FALSE(ProgramPaths::install(folder / "nowhere", folder / "home"));
    EXPECT_FALSE(std::filesystem::exists(folder / "home" / "daten"));
}

} // namespace
} // namespace zw
