#include "app/ProgramPaths.h"

#include <cstdlib>
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
    EXPECT_FALSE(ProgramPaths::install(folder / "nowhere", folder / "nohome"));
    EXPECT_FALSE(std::filesystem::exists(folder / "nohome" / "daten")) << "no distribution, nothing installed";
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
    EXPECT_EQ(test::readBytes(home / "daten" / "waehrung.dat"), "CHF\r\n");
    // No staging folder is left behind.
    for (const auto& entry : std::filesystem::directory_iterator(home))
        EXPECT_NE(entry.path().filename().string().rfind(".install-", 0), 0u) << entry.path();
}

// A portable folder named by ZETTELWERK_HOME is filled when missing or empty, never when in other use.
TEST(ProgramPaths, HomeFromTheEnvironmentIsFilledOnlyWhenMissingOrEmpty)
{
    test::TempFolder folder;
    std::filesystem::create_directories(folder / "dist" / "daten");
    std::ofstream(folder / "dist" / "daten" / "mwst.dat") << "19\r\n";
    std::filesystem::create_directories(folder / "empty");
    std::filesystem::create_directories(folder / "used");
    std::ofstream(folder / "used" / "notes.txt") << "mine";
    const std::string savedDist = std::getenv("ZETTELWERK_DIST") ? std::getenv("ZETTELWERK_DIST") : "";
    ::setenv("ZETTELWERK_DIST", (folder / "dist").c_str(), 1);
    for (auto [name, filled] : {std::pair{"missing/portable", true}, {"empty", true}, {"used", false}}) {
        ::setenv("ZETTELWERK_HOME", (folder / name).c_str(), 1);
        auto paths = ProgramPaths::locate(folder / "bin");
        EXPECT_EQ(paths.home(), folder / name);
        EXPECT_EQ(std::filesystem::exists(paths.dataFile("mwst.dat")), filled) << name;
    }
    ::unsetenv("ZETTELWERK_HOME");
    ::setenv("ZETTELWERK_DIST", savedDist.c_str(), 1);
}

} // namespace
} // namespace zw
