#include <gtest/gtest.h>

#include "export/BitmapFile.h"
#include "export/DibFile.h"
#include "export/cDIBSection.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"
#include "tests/export/TestPicture.h"

namespace zw {
namespace {

using Pixel = cDIBSection::Pixel;

// The picture window resamples to sizes the user types; the padding and row order are judged by ImageMagick
// below.
TEST(cDIBSection, ImpossibleSizesMakeNoSection)
{
    for (auto [width, height] : {std::pair{0, 5}, {-1, 5}, {32768, 1}, {20000, 20000}}) {
        SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height));
        cDIBSection surface;
        EXPECT_FALSE(surface.Create(width, height));
        EXPECT_EQ(surface.DIBSectionBitsPtr(), nullptr);
    }
}

TEST(cDIBSection, ResampleInterpolatesEachChannelFromTheFourNeighbours)
{
    cDIBSection source;
    ASSERT_TRUE(source.Create(2, 2));
    source.setPixel(0, 0, {0, 10, 255});
    source.setPixel(1, 0, {100, 20, 255});
    source.setPixel(0, 1, {200, 30, 0});
    source.setPixel(1, 1, {40, 41, 0});
    const cDIBSection larger = source.Resample(/*NewHeight=*/3, /*NewWidth=*/3);
    ASSERT_EQ(larger.Width(), 3);
    ASSERT_EQ(larger.Height(), 3);
    // Worked by hand: the middle is the mean of four, the edge middles the mean of two, half rounds up.
    EXPECT_EQ(larger.pixel(0, 0), (Pixel{0, 10, 255}));
    EXPECT_EQ(larger.pixel(2, 2), (Pixel{40, 41, 0}));
    EXPECT_EQ(larger.pixel(1, 0), (Pixel{50, 15, 255}));
    EXPECT_EQ(larger.pixel(0, 1), (Pixel{100, 20, 128}));
    EXPECT_EQ(larger.pixel(2, 1), (Pixel{70, 31, 128}));
    EXPECT_EQ(larger.pixel(1, 2), (Pixel{120, 36, 0}));
    EXPECT_EQ(larger.pixel(1, 1), (Pixel{85, 25, 128}));

    // Four across to three: the middle lands halfway between the second and third source pixel.
    cDIBSection row;
    ASSERT_TRUE(row.Create(4, 1));
    for (int x = 0; x < 4; ++x)
        row.setPixel(x, 0, {static_cast<std::uint8_t>(x * 30), 0, 0});
    const cDIBSection narrower = row.Resample(1, 3);
    EXPECT_EQ(narrower.pixel(0, 0).blue, 0);
    EXPECT_EQ(narrower.pixel(1, 0).blue, 45); // 1.5 source pixels in: 30 + 0.5 * 30
    EXPECT_EQ(narrower.pixel(2, 0).blue, 90);

    EXPECT_EQ(source.Resample(0, 5).hDib(), 0u);
    EXPECT_EQ(cDIBSection().Resample(3, 3).pixel(1, 1), Pixel{}) << "nothing to sample gives black";
}

TEST(DibFile, IsABitmapFileThatImageMagickReadsPixelForPixel)
{
    test::TempFolder folder;
    const Bitmap picture = test::testPicture(5, 3, test::PictureKind::Noise);
    cDIBSection surface;
    ASSERT_TRUE(surface.CreateFromPicture(picture));
    const auto file = folder / "odd width.bmp";
    saveBitmapFile(surface, file);
    const std::string bytes = test::readBytes(file);
    EXPECT_EQ(bytes.size(), 54u + 3 * 16) << "54-byte header, three rows of 15 bytes padded to 16";

    int status = -1;
    const std::string described =
        test::runPeer("/usr/bin/identify -format '%m %w %h %z' '" + file.string() + "' 2>&1", &status);
    ASSERT_EQ(status, 0) << described;
    EXPECT_EQ(described, "BMP3 5 3 8") << "the Windows 3 header";
    const std::string rgb =
        test::runPeer("/usr/bin/convert '" + file.string() + "' -depth 8 rgb:- 2>/dev/null");
    EXPECT_EQ(rgb, std::string(picture.pixels.begin(), picture.pixels.end()));
}

} // namespace
} // namespace zw
