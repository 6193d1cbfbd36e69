#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/BitmapFile.h"
#include "export/DibFile.h"
#include "export/cDIBSection.h"
#include "tests/app/TempFolder.h"
#include "tests/app/PeerProgram.h"

namespace zw {
namespace {

using Pixel = cDIBSection::Pixel;

cDIBSection filled(int width, int height, Pixel value)
{
    cDIBSection surface;
    EXPECT_TRUE(surface.Create(width, height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            surface.setPixel(x, y, value);
    return surface;
}

TEST(cDIBSection, RowsArePaddedToFourBytesAndStoredBottomUp)
{
    const struct
    {
        int width;
        int rowBytes;
    } rows[] = {{1, 4}, {2, 8}, {3, 12}, {4, 12}, {5, 16}, {570, 1712}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        cDIBSection surface;
        ASSERT_TRUE(surface.Create(row.width, 2));
        EXPECT_EQ(surface.BytesPerScanLine(), row.rowBytes);
        EXPECT_EQ(surface.byteSize(), static_cast<std::size_t>(2 * row.rowBytes));
    }
    cDIBSection surface;
    ASSERT_TRUE(surface.Create(2, 2));
    surface.setPixel(1, 0, {1, 2, 3}); // top row, second pixel
    // The top row is the second row in memory; blue comes first.
    const std::uint8_t* bits = surface.DIBSectionBitsPtr();
    EXPECT_THAT(std::vector<int>(bits + 8, bits + 16), ::testing::ElementsAre(0, 0, 0, 1, 2, 3, 0, 0));
}

TEST(cDIBSection, ImpossibleSizesMakeNoSectionAndClearUpLetsGo)
{
    for (auto [width, height] : {std::pair{0, 5}, {5, 0}, {-1, 5}, {5, -3}, {32768, 1}, {20000, 20000}}) {
        SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height));
        cDIBSection surface;
        std::uintptr_t hdc = 0, hDib = 7;
        EXPECT_FALSE(surface.CreateDIB(hdc, width, height, hDib));
        EXPECT_EQ(hDib, 0u);
        EXPECT_EQ(surface.hDib(), 0u);
        EXPECT_EQ(surface.DIBSectionBitsPtr(), nullptr);
    }
    cDIBSection surface;
    std::uintptr_t hdc = 0, hDib = 0;
    ASSERT_TRUE(surface.CreateDIB(hdc, 3, 3, hDib));
    EXPECT_NE(hdc, 0u);
    EXPECT_NE(hDib, 0u);
    cDIBSection copy = surface;
    EXPECT_NE(copy.hDib(), surface.hDib()) << "a copy is a section of its own";
    surface.ClearUp();
    EXPECT_EQ(surface.hdc(), 0u);
    EXPECT_EQ(surface.Width(), 0);
    EXPECT_EQ(copy.Width(), 3);
}

TEST(cDIBSection, RasterOpsCombineSourceAndTargetAsTheirTruthTablesSay)
{
    // With source 0xCC and target 0xAA every operation yields the middle byte of its own code.
    const struct
    {
        RasterOp rop;
        std::uint8_t expected;
    } rows[] = {{RasterOp::SRCCOPY, 0xCC},    {RasterOp::SRCPAINT, 0xEE},  {RasterOp::SRCAND, 0x88},
                {RasterOp::SRCINVERT, 0x66},  {RasterOp::NOTSRCCOPY, 0x33}, {RasterOp::BLACKNESS, 0x00},
                {RasterOp::WHITENESS, 0xFF}};
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<std::uint32_t>(row.rop));
        const cDIBSection source = filled(4, 3, {0xCC, 0xCC, 0xCC});
        cDIBSection target = filled(4, 3, {0xAA, 0xAA, 0xAA});
        source.PaintPicture(target, 1, 1, 2, 1, 0, 0, row.rop);
        EXPECT_EQ(target.pixel(1, 1), (Pixel{row.expected, row.expected, row.expected}));
        EXPECT_EQ(target.pixel(2, 1), (Pixel{row.expected, row.expected, row.expected}));
        EXPECT_EQ(target.pixel(0, 1), (Pixel{0xAA, 0xAA, 0xAA})) << "outside the rectangle";
        EXPECT_EQ(target.pixel(1, 0), (Pixel{0xAA, 0xAA, 0xAA}));
        EXPECT_EQ(target.pixel(3, 1), (Pixel{0xAA, 0xAA, 0xAA}));
        // The same through the other direction.
        cDIBSection loaded = filled(2, 1, {0xAA, 0xAA, 0xAA});
        loaded.LoadPictureBlt(source, 2, 2, 2, 1, row.rop);
        EXPECT_EQ(loaded.pixel(1, 0), (Pixel{row.expected, row.expected, row.expected}));
    }
}

TEST(cDIBSection, BlitsAreClippedAtEveryEdgeAndMayOverlapThemselves)
{
    cDIBSection source;
    ASSERT_TRUE(source.Create(4, 4));
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            source.setPixel(x, y, {static_cast<std::uint8_t>(10 * y + x), 0, 0});
    const struct
    {
        const char* name;
        int x, y, width, height, sourceX, sourceY;
        int probeX, probeY, expectedBlue; // a pixel of the 3x3 target afterwards
    } rows[] = {
        {"left and top outside", -2, -1, 4, 4, 0, 0, 0, 0, 12},
        {"right and bottom outside", 2, 2, 4, 4, 0, 0, 2, 2, 0},
        {"source from outside", 0, 0, 3, 3, -1, -1, 1, 1, 0},
        {"huge extents", 0, 0, 2147483647, 2147483647, 1, 1, 2, 2, 33},
        {"far away", 1000000, 5, 3, 3, 0, 0, 0, 0, 99},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        cDIBSection target = filled(3, 3, {99, 0, 0});
        source.PaintPicture(target, row.x, row.y, row.width, row.height, row.sourceX, row.sourceY);
        EXPECT_EQ(target.pixel(row.probeX, row.probeY).blue, row.expectedBlue);
    }
    // Shifting a surface one pixel down onto itself copies the rows as they were.
    cDIBSection same = source;
    same.PaintPicture(same, 0, 1, 4, 3, 0, 0);
    EXPECT_EQ(same.pixel(0, 3).blue, 20);
    EXPECT_EQ(same.pixel(0, 1).blue, 0);
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

    const cDIBSection same = source.Resample(2, 2);
    EXPECT_EQ(same.pixel(1, 1), source.pixel(1, 1));
    EXPECT_NE(same.hDib(), source.hDib());
    EXPECT_EQ(source.Resample(0, 5).hDib(), 0u);
    EXPECT_EQ(cDIBSection().Resample(3, 3).pixel(1, 1), Pixel{}) << "nothing to sample gives black";
}

class RecordingClipboard : public DibClipboard
{
public:
    void setBitmap(const cDIBSection& surface) override { bitmaps.push_back(surface.Width()); }
    void showMessage(std::string_view text) override { messages.emplace_back(text); }
    std::vector<int> bitmaps;
    std::vector<std::string> messages;
};

TEST(cDIBSection, OnlyTheBitmapFormGoesOnTheClipboard)
{
    const cDIBSection surface = filled(7, 2, {1, 2, 3});
    RecordingClipboard clipboard;
    surface.CopyToClipboard(clipboard, /*asBitmap=*/false);
    EXPECT_TRUE(clipboard.bitmaps.empty());
    EXPECT_THAT(clipboard.messages,
                ::testing::ElementsAre("I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!"));
    surface.CopyToClipboard(clipboard, /*asBitmap=*/true);
    EXPECT_THAT(clipboard.bitmaps, ::testing::ElementsAre(7));
}

TEST(DibFile, IsABitmapFileThatImageMagickReadsPixelForPixel)
{
    test::TempFolder folder;
    cDIBSection surface = filled(5, 3, {});
    surface.RandomiseBits(BitsKind::Colour, 11);
    const auto file = folder / "odd width.bmp";
    saveBitmapFile(surface, file);
    const std::string bytes = test::readBytes(file);
    EXPECT_EQ(bytes.size(), 54u + 3 * 16) << "54-byte header, three rows of 15 bytes padded to 16";

    int status = -1;
    const std::string described =
        test::runPeer("/usr/bin/identify -format '%m %w %h %z' '" + file.string() + "' 2>&1", &status);
    ASSERT_EQ(status, 0) << described;
    EXPECT_EQ(described, "BMP3 5 3 8") << "the Windows 3 header";
    const std::string rgb = test::runPeer("/usr/bin/convert '" + file.string() + "' -depth 8 rgb:- 2>/dev/null");
    ASSERT_EQ(rgb.size(), 5u * 3 * 3);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x) {
            SCOPED_TRACE(std::to_string(x) + "," + std::to_string(y));
            const auto at = static_cast<std::size_t>((y * 5 + x) * 3);
            const Pixel expected = surface.pixel(x, y);
            EXPECT_EQ(static_cast<std::uint8_t>(rgb[at]), expected.red);
            EXPECT_EQ(static_cast<std::uint8_t>(rgb[at + 1]), expected.green);
            EXPECT_EQ(static_cast<std::uint8_t>(rgb[at + 2]), expected.blue);
        }
    // And back through the program's own bitmap reader.
    const cDIBSection again = loadBitmapFile(file);
    EXPECT_EQ(again.pixel(4, 2), surface.pixel(4, 2));
}

} // namespace
} // namespace zw
