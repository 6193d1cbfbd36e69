#include "app/FileLock.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "tests/core/RunErrorNumber.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

// Two writers that each read a counter, add one and replace the file lose increments unless the whole cycle is
// locked; the threads use separate locks, as two programs would.
TEST(FileLock, ConcurrentCyclesLoseNoChange)
{
    test::TempFolder folder;
    const auto file = folder.path() / "nummer.dat";
    constexpr int kRounds = 50;
    auto count = [&] {
        for (int i = 0; i < kRounds; ++i)
            updateFileLocked(file, [](const FileOnDisk& onDisk) {
                const int value = onDisk.exists ? std::stoi(onDisk.bytes) : 0;
                std::this_thread::yield();
                return std::optional<std::string>(std::to_string(value + 1));
            });
    };
    std::vector<std::thread> writers;
    for (int i = 0; i < 2; ++i)
        writers.emplace_back(count);
    for (auto& writer : writers)
        writer.join();
    EXPECT_EQ(test::readBytes(file), std::to_string(2 * kRounds));
}

TEST(FileLock, ACycleSeesWhatIsOnDiskAndMayLeaveItAlone)
{
    test::TempFolder folder;
    const auto file = folder.path() / "belege.dat";
    updateFileLocked(file, [](const FileOnDisk& onDisk) {
        EXPECT_FALSE(onDisk.exists);
        return std::optional<std::string>("a\r\n");
    });
    const FileStamp written = stampOf(file);
    const FileStamp after = updateFileLocked(file, [](const FileOnDisk& onDisk) {
        EXPECT_EQ(onDisk.bytes, "a\r\n");
        return std::optional<std::string>();
    });
    EXPECT_EQ(after, written);
    EXPECT_TRUE(std::filesystem::exists(FileLock::lockFileOf(file)));
}

TEST(FileLock, AMissingFolderFailsAsTheSaveWould)
{
    test::TempFolder folder;
    EXPECT_EQ(test::errorNumberOf([&] { FileLock lock(folder.path() / "fehlt" / "belege.dat"); }), 76);
}

} // namespace
} // namespace zw
