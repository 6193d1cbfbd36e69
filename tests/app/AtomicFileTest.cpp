#include "app/AtomicFile.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

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

// Every file rewritten whole after reading: one that exists but could not be read is refused at once (a FIFO
// does not block the read) and is never replaced; a missing file is a first start and is written.
TEST(AtomicFile, AFileThatCouldNotBeReadIsNeverReplaced)
{
    test::TempFolder folder;
    const auto fifo = folder.path() / "druck.dat";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_THROW(readTextLines(fifo), RunError);
    EXPECT_THROW(writeTextLines(fifo, {"1"}), RunError);
    EXPECT_TRUE(std::filesystem::is_fifo(fifo));

    const auto missing = folder.path() / "mwst.dat";
    EXPECT_THROW(readTextLines(missing), RunError);
    writeTextLines(missing, {"19"});
    EXPECT_EQ(test::readBytes(missing), "19\r\n");

    // The settings store: its INI in place as a folder is not replaced by a file of one key.
    const auto settingsFolder = folder.path() / "settings";
    std::filesystem::create_directories(settingsFolder / "zettelwerk.ini");
    SettingsStore store(settingsFolder);
    store.save("Zettelwerk", "Options", "Kalender", "1");
    EXPECT_FALSE(store.lastWriteError().empty());
    EXPECT_TRUE(std::filesystem::is_directory(settingsFolder / "zettelwerk.ini"));
}

} // namespace
} // namespace zw
