#include "app/AtomicFile.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "app/TextFile.h"
#include "core/RunError.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

// A data file the user linked elsewhere and made private stays linked and private after a save.
TEST(AtomicFile, ReplacesTheTargetOfALinkAndKeepsTheMode)
{
    test::TempFolder folder;
    const auto target = folder.path() / "elsewhere.dat";
    const auto link = folder.path() / "nummer.dat";
    std::ofstream(target) << "alt";
    ::chmod(target.c_str(), 0600);
    std::filesystem::create_symlink("elsewhere.dat", link);

    writeTextLines(link, {"neu"});

    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(test::readBytes(target), "neu\r\n");
    struct stat status{};
    ASSERT_EQ(::stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

// Leftovers of an earlier run go; one being written by a running program, a newer one, a link and the
// user's own files, named like ours or not, stay.
TEST(AtomicFile, StaleTemporaryFilesAreRemovedAndOthersStay)
{
    test::TempFolder folder;
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    auto make = [&](const std::string& name) {
        test::writeBytes(folder / name, "x");
        std::filesystem::last_write_time(folder / name, old);
    };
    const char* const stays[] = {"belege.dat.XXXXXX.zwtmp-BBBBBB", ".notiz.txt", ".belege.dat.zwtmp-a1B2c",
                                 ".belege.dat.zwtmp-a1B2c3.bak", ".belege.dat.a1B2c3", ".zwtmp-a1B2c3"};
    make(".belege.dat.zwtmp-AAAAAA");
    for (const char* name : stays)
        make(name);
    test::writeBytes(folder / ".nummer.dat.zwtmp-CCCCCC", "newer");
    std::filesystem::create_symlink(folder / ".notiz.txt", folder / ".link.zwtmp-DDDDDD");
    std::string writing;
    int fd = createOwnTemporaryFile(folder / "autocom.dat", writing, 0644);
    std::filesystem::last_write_time(writing, old);

    EXPECT_EQ(removeStaleTemporaryFiles(folder.path(), old + std::chrono::minutes(1)), 1);
    EXPECT_FALSE(std::filesystem::exists(folder / ".belege.dat.zwtmp-AAAAAA"));
    for (const char* name : stays)
        EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
    EXPECT_TRUE(std::filesystem::exists(folder / ".nummer.dat.zwtmp-CCCCCC"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / ".link.zwtmp-DDDDDD"));
    EXPECT_TRUE(std::filesystem::exists(writing));
    ::close(fd);
    EXPECT_EQ(removeStaleTemporaryFiles(folder.path(), old + std::chrono::minutes(1)), 1);
    EXPECT_EQ(removeStaleTemporaryFiles(folder / "nowhere", old), 0);
}

// A save that fails half-way leaves no temporary file, and neither the program folder nor the settings folder keeps
// one from an earlier run.
TEST(AtomicFile, AFailedSaveAndTheNextStartLeaveNoTemporaryFile)
{
    test::TempFolder folder;
    std::filesystem::create_directories(folder / "daten" / "belege.dat");
    EXPECT_THROW(writeTextLines(folder / "daten" / "belege.dat", {"x"}), RunError);
    test::writeBytes(folder / "daten" / ".belege.dat.zwtmp-q1w2e3", "halb");
    std::filesystem::last_write_time(folder / "daten" / ".belege.dat.zwtmp-q1w2e3",
                                     programStartTime() - std::chrono::seconds(10));
    ::setenv("ZETTELWERK_HOME", folder.path().c_str(), 1);
    ProgramPaths::locate(folder.path());
    ::unsetenv("ZETTELWERK_HOME");
    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "daten"))
        left.push_back(entry.path().filename().string());
    EXPECT_EQ(left, std::vector<std::string>{"belege.dat"});

    test::writeBytes(folder / ".zettelwerk.ini.zwtmp-a1s2d3", "Passwort=geheim");
    std::filesystem::last_write_time(folder / ".zettelwerk.ini.zwtmp-a1s2d3",
                                     programStartTime() - std::chrono::seconds(10));
    SettingsStore settings(folder.path());
    EXPECT_FALSE(std::filesystem::exists(folder / ".zettelwerk.ini.zwtmp-a1s2d3"));
}

// A file made in pieces whose source fails half-way (a ledger copied below a new row) keeps the old content and
// leaves no temporary file.
TEST(AtomicFile, APieceThatFailsLeavesTheOldFile)
{
    test::TempFolder folder;
    const auto file = folder / "belege.dat";
    test::writeBytes(file, "alt\r\n");
    EXPECT_THROW(writeFileAtomicallyInPieces(file,
                                             [](const std::function<void(std::string_view)>& write) {
                                                 write("neu\r\n");
                                                 throw RunError::pathFileAccess();
                                             }),
                 RunError);
    EXPECT_EQ(test::readBytes(file), "alt\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

} // namespace
} // namespace zw
