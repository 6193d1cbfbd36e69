#include "app/SmallFiles.h"

#include <functional>
#include <gtest/gtest.h>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>
#include <thread>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "tests/app/LockProbe.h"
#include "tests/app/ProgramFolder.h"
#include "tests/core/RunErrorNumber.h"

namespace zw {
namespace {

class SmallFilesTest : public ::testing::Test
{
protected:
    test::ProgramFolder home;
    const ProgramPaths& paths = home.paths;
    ReceiptForm form;
};

// Lines of the rate file are joined without a separator, as the old program read them (the number file's are
// joined in the many-lined test below).
TEST_F(SmallFilesTest, RateLinesAreJoined)
{
    home.writeBytes("mwst.dat", "1\r\n9\r\n");
    smallfiles::loadRate(form, paths);
    EXPECT_EQ(form.text(FormElement::Text3), "19");
    // An empty file, and the empty line a first start writes, both leave the next start without a rate.
    for (const char* empty : {"", "\r\n"}) {
        form.setText(FormElement::Text3, "19");
        home.writeBytes("mwst.dat", empty);
        smallfiles::loadRate(form, paths);
        EXPECT_EQ(form.text(FormElement::Text3), "");
    }
}

TEST_F(SmallFilesTest, ManyLinedFilesReachTheWindowOnceWithTheWholeText)
{
    // Told once per line, a window re-lays out the growing text each time and a long file takes minutes.
    int told = 0;
    form.addListener([&told](const FormChange&) { ++told; });
    std::string numberLines, printLines;
    for (int i = 0; i < 10000; ++i)
        numberLines += "7\r\n";
    for (int i = 0; i < 3333; ++i)
        printLines += "1\r\n2\r\n3\r\n";
    home.writeBytes("nummer.dat", numberLines);
    home.writeBytes("druck.dat", printLines);
    smallfiles::loadNumber(form, paths);
    EXPECT_EQ(form.text(FormElement::Text1), std::string(10000, '7'));
    EXPECT_LE(told, 1);
    told = 0;
    smallfiles::loadPrintSetup(form, paths);
    EXPECT_EQ(form.abstand(), std::string(3333, '1'));
    EXPECT_EQ(form.anzahl(), std::string(3333, '2'));
    EXPECT_EQ(form.oben(), std::string(3333, '3'));
    EXPECT_LE(told, 3);
}

TEST_F(SmallFilesTest, PrintSetupWithAFourthLineAppendsAndThenFailsPastTheEnd)
{
    home.writeBytes("druck.dat", "10\r\n1\r\n20\r\n5\r\n");
    EXPECT_EQ(test::errorNumberOf([&] { smallfiles::loadPrintSetup(form, paths); }), 62);
    EXPECT_EQ(form.abstand(), "105");
    EXPECT_EQ(form.anzahl(), "1");
    EXPECT_EQ(form.oben(), "20");
}

TEST_F(SmallFilesTest, PrintSetupIsWrittenInItsOrderWithCrLf)
{
    form.setAbstand("-25");
    form.setAnzahl("3");
    form.setOben("270");
    smallfiles::savePrintSetup(form, paths);
    EXPECT_EQ(home.readBytes("druck.dat"), "-25\r\n3\r\n270\r\n");
}

TEST_F(SmallFilesTest, MarkFileCountsOnlyWhenItHoldsOne)
{
    struct Row
    {
        const char* content;
        bool on;
        int error; // 0: no fault
    };
    const Row rows[] = {{"1\r\n", true, 0}, {" 1 \r\n", true, 0}, {"2\r\n", false, 0},
                        {"ja\r\n", false, 13}, {"", false, 62}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.content);
        home.writeBytes("siglogoaa.dat", row.content);
        bool on = false;
        EXPECT_EQ(test::errorNumberOf([&] { on = smallfiles::readMark(paths.dataFile("siglogoaa.dat")); }), row.error);
        EXPECT_EQ(on, row.on);
    }
    EXPECT_FALSE(smallfiles::readMark(paths.dataFile("sigunteraa.dat")));
}

bool makeDevice(const std::filesystem::path& file)
{
    if (::mknod(file.c_str(), S_IFCHR | 0600, ::makedev(1, 3)) == 0)
        return true;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, file.c_str(), sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool bound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return bound;
}

// Only a name that does not exist is a first start; whatever else stands there fails with 75 and stays, and a
// FIFO never blocks the read.
TEST_F(SmallFilesTest, AFifoADeviceOrAFolderInPlaceOfAFileFailsAndStays)
{
    const std::pair<const char*, std::function<void()>> loads[] = {
        {"mwst.dat", [&] { smallfiles::loadRate(form, paths); }},
        {"druck.dat", [&] { smallfiles::loadPrintSetup(form, paths); }},
        {"nummer.dat", [&] { smallfiles::loadNumber(form, paths); }},
        {"siglogoaa.dat", [&] { smallfiles::readMark(paths.dataFile("siglogoaa.dat")); }},
    };
    const std::pair<const char*, std::function<void(const std::filesystem::path&)>> things[] = {
        {"fifo", [](const std::filesystem::path& file) { ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0); }},
        {"folder", [](const std::filesystem::path& file) { std::filesystem::create_directory(file); }},
        // A private node (of the null device where that may be made, else a socket), never a link to the
        // machine's own: an old reader that replaced it would replace the machine's device.
        {"device", [](const std::filesystem::path& file) { ASSERT_TRUE(makeDevice(file)); }},
    };
    for (const auto& [name, load] : loads) {
        for (const auto& [kind, make] : things) {
            SCOPED_TRACE(std::string(name) + " as " + kind);
            const auto file = paths.dataFile(name);
            make(file);
            const auto type = std::filesystem::status(file).type();
            EXPECT_EQ(test::errorNumberOf(load), 75);
            EXPECT_EQ(std::filesystem::status(file).type(), type);
            std::filesystem::remove(file);
        }
    }
    smallfiles::loadNumber(form, paths);
    EXPECT_EQ(home.readBytes("nummer.dat"), "00000001\r\n") << "a missing file is still written";
}

// Two programs giving out numbers at once never give one twice: the read and the write share one lock.
TEST_F(SmallFilesTest, NumbersAdvancedAtOnceByTwoProgramsAreNeverLost)
{
    home.writeBytes("nummer.dat", "100\r\n");
    auto giveOut = [this] {
        ReceiptForm own;
        for (int i = 0; i < 50; ++i)
            smallfiles::advanceNumber(own, paths, smallfiles::NumberStep::Advance);
    };
    std::thread other(giveOut);
    giveOut();
    other.join();
    EXPECT_EQ(home.readBytes("nummer.dat"), "200\r\n");
    EXPECT_TRUE(test::waitsForLock(paths.dataFile("nummer.dat"),
                                   [this] { smallfiles::saveNumber(paths.dataFile("nummer.dat"), "7"); }));
}

TEST_F(SmallFilesTest, MissingDataFolderFailsWithPathNotFound)
{
    std::filesystem::remove_all(paths.dataFolder());
    EXPECT_EQ(test::errorNumberOf([&] { smallfiles::loadNumber(form, paths); }), 76);
    EXPECT_EQ(form.text(FormElement::Text1), "00000001");
}

} // namespace
} // namespace zw
