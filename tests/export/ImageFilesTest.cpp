#include <QImage>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <sys/mount.h>
#include <unistd.h>

#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "tests/app/TempFolder.h"
#include "tests/app/PeerProgram.h"
#include "tests/export/TestPicture.h"

namespace zw {
namespace {

// A message box as shown: its text, then its title.
using Message = std::pair<std::string, std::string>;

struct Recorder
{
    std::vector<Message> messages;
    PictureMessage show()
    {
        return [this](std::string_view text, std::string_view title) {
            messages.push_back({std::string(text), std::string(title)});
        };
    }
};

cDIBSection receiptLike()
{
    cDIBSection surface;
    EXPECT_TRUE(surface.CreateFromPicture(test::testPicture(570, 429, test::PictureKind::Areas)));
    return surface;
}

std::string shellQuote(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

// That quality 0 and 100 give files of clearly different size, the JPG window's test and the command line's
// check show; here ImageMagick reads the quality back from the quantisation tables. The encoder is the first of
// the table whose MIME type matches in any case: "jpeg", not "bmp".
TEST(PictureFiles, JpegQualityOutsideZeroToHundredIsClampedAndTheFirstMatchingEncoderWrites)
{
    test::TempFolder folder;
    PictureSession session([] {
        return std::vector<ImageEncoder>{{"image/png", "png"}, {"IMAGE/JPEG", "jpeg"}, {"image/jpeg", "bmp"}};
    });
    ASSERT_EQ(session.startup(), 0);
    Recorder recorder;
    for (const auto& [quality, lowest, highest] : {std::tuple{-20, 0, 5}, std::tuple{250, 98, 100}}) {
        SCOPED_TRACE(quality);
        const auto file = folder / "q.jpg";
        ASSERT_EQ(savePicture(session, receiptLike(), file, PictureFormat::Jpeg, quality, recorder.show()), 0);
        int status = -1;
        const std::string described = test::runPeer(
            "/usr/bin/identify -regard-warnings -format '%m %w %h %Q' " + shellQuote(file) + " 2>&1", &status);
        ASSERT_EQ(status, 0) << described;
        EXPECT_THAT(described, ::testing::StartsWith("JPEG 570 429 "));
        const int estimated = std::stoi(described.substr(described.rfind(' ') + 1));
        EXPECT_TRUE(estimated >= lowest && estimated <= highest) << estimated;
    }
    EXPECT_TRUE(recorder.messages.empty());
}

TEST(PictureFiles, FailuresReachTheErrorReportAndLeaveNoFileBehind)
{
    test::TempFolder folder;
    std::filesystem::create_directory(folder / "locked");
    std::filesystem::permissions(folder / "locked", std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    // The superuser writes into any folder; a kernel folder refuses even it.
    const std::filesystem::path unwritable =
        ::geteuid() == 0 ? std::filesystem::path("/sys") : folder / "locked";
    const struct
    {
        const char* name;
        std::vector<ImageEncoder> encoders;
        cDIBSection picture;
        std::filesystem::path target;
        int status;
        Message message;
    } rows[] = {
        {"missing folder", installedEncoders(), receiptLike(), folder / "nirgends" / "a.png", 10,
         {"File Not Found. GDI+ Error:10", "GDI Error"}},
        {"unwritable folder", installedEncoders(), receiptLike(), unwritable / "a.png", 12,
         {"Access Denied. GDI+ Error:12", "GDI Error"}},
        {"no picture", installedEncoders(), cDIBSection(), folder / "a.png", 2,
         {"Invalid Parameter. GDI+ Error:2", "GDI Error"}},
        {"no PNG encoder", {{"image/jpeg", "jpeg"}}, receiptLike(), folder / "a.png", PictureStatus::NoEncoder,
         {"Konnte keinen passenden Encoder ermitteln.", "Encoder Error"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        PictureSession session([&] { return row.encoders; });
        ASSERT_EQ(session.startup(), 0);
        Recorder recorder;
        EXPECT_EQ(savePicture(session, row.picture, row.target, PictureFormat::Png, 85, recorder.show()), row.status);
        EXPECT_THAT(recorder.messages, ::testing::ElementsAre(row.message));
        EXPECT_FALSE(std::filesystem::exists(row.target));
    }
}

TEST(PictureFiles, AFullDiskIsAWin32ErrorAndKeepsTheEarlierFile)
{
    test::TempFolder folder;
    const auto disk = folder / "disk";
    std::filesystem::create_directory(disk);
    if (::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "a small disk needs the right to mount one";
    const auto file = disk / "beleg.jpg";
    test::writeBytes(file, "earlier");
    Recorder recorder;
    PictureSession session;
    ASSERT_EQ(session.startup(), 0);
    // Noise at the highest quality is far larger than the 64 kB disk.
    cDIBSection noise;
    ASSERT_TRUE(noise.Create(570, 429));
    noise.RandomiseBits();
    const int status = savePicture(session, noise, file, PictureFormat::Jpeg, 100, recorder.show());
    const std::string left = test::readBytes(file);
    const auto entries = std::distance(std::filesystem::directory_iterator(disk), {});
    ::umount(disk.c_str());
    EXPECT_EQ(status, 7);
    EXPECT_THAT(recorder.messages, ::testing::ElementsAre(Message{"Win32 Error. GDI+ Error:7", "GDI Error"}));
    EXPECT_EQ(left, "earlier");
    EXPECT_EQ(entries, 1) << "no temporary file stays behind";
}

TEST(LoadPicturePlus, ReadsWhatPythonWroteAndReportsWhatItCannotRead)
{
    test::TempFolder folder;
    const auto written = folder / "python.png";
    int status = -1;
    test::runPeer("/usr/bin/python3 -c \"import sys; from PIL import Image; im = Image.new('RGB', (3, 2), (10, 20, 30)); "
                  "im.putpixel((2, 1), (200, 100, 50)); im.save(sys.argv[1])\" " + shellQuote(written),
                  &status);
    ASSERT_EQ(status, 0);
    Recorder recorder;
    const cDIBSection picture = loadPicturePlus(written, recorder.show());
    ASSERT_EQ(picture.Width(), 3);
    ASSERT_EQ(picture.Height(), 2);
    EXPECT_EQ(picture.pixel(0, 0), (cDIBSection::Pixel{30, 20, 10}));
    EXPECT_EQ(picture.pixel(2, 1), (cDIBSection::Pixel{50, 100, 200}));
    EXPECT_TRUE(recorder.messages.empty());

    test::writeBytes(folder / "kaputt.png", "\x89PNG\r\n\x1a\n but not a picture");
    const struct
    {
        const char* name;
        std::filesystem::path file;
        const char* report;
    } rows[] = {
        {"missing file", folder / "fehlt.bmp", "File Not Found. GDI+ Error:10"},
        {"broken file", folder / "kaputt.png", "Unknown Image Format. GDI+ Error:13"},
        {"a folder", folder.path(), "Generic Error. GDI+ Error:1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Recorder failures;
        EXPECT_EQ(loadPicturePlus(row.file, failures.show()).hDib(), 0u);
        EXPECT_THAT(failures.messages, ::testing::ElementsAre(Message{row.report, "GDI Error"}));
    }
}

TEST(LoadPicturePlus, DamagedFilesGiveAStatusAndNeverACrash)
{
    // Every kind of picture the windows may meet, cut and bitten at random.
    std::vector<std::string> originals;
    cDIBSection picture;
    ASSERT_TRUE(picture.CreateFromPicture(test::testPicture(80, 60, test::PictureKind::Noise)));
    originals.push_back(bitmapFileBytes(picture));
    for (auto format : {PictureFormat::Png, PictureFormat::Jpeg}) {
        std::string bytes;
        int status = 0;
        ASSERT_TRUE(encodePicture(picture, format == PictureFormat::Png ? "png" : "jpeg", format, 60, bytes, status));
        originals.push_back(bytes);
    }
    std::mt19937 random(17);
    for (const std::string& original : originals) {
        for (int round = 0; round < 150; ++round) {
            std::string bytes = original;
            if (round % 3 == 0)
                bytes.resize(random() % bytes.size());
            for (int bite = 0; bite < 1 + round % 8 && !bytes.empty(); ++bite)
                bytes[random() % bytes.size()] = static_cast<char>(random());
            int status = -1;
            const cDIBSection result = readPictureBytes(bytes, status);
            EXPECT_EQ(result.hDib() != 0, status == 0);
        }
    }
}

} // namespace
} // namespace zw
