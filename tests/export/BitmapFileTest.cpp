#include "export/BitmapFile.h"

#include <gtest/gtest.h>

#include "tests/core/RunErrorNumber.h"

#include <string>
#include <vector>

// GCC 12 warns about members left to their defaults in designated initializers, which is what they are for
// here.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace zw {
namespace {

void putLittleEndian(std::string& bytes, std::uint64_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

struct BitmapHeader
{
    std::uint32_t headerSize = 40;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint16_t bitsPerPixel = 24;
    std::uint32_t compression = 0;
    std::vector<std::uint32_t> masks; // red, green, blue
};

// A bitmap file as the Windows structures lay it out; rows are given as stored, padding included.
std::string bitmapFile(const BitmapHeader& header, const std::string& rows)
{
    std::string info;
    putLittleEndian(info, header.headerSize, 4);
    if (header.headerSize == 12) {
        putLittleEndian(info, static_cast<std::uint32_t>(header.width), 2);
        putLittleEndian(info, static_cast<std::uint32_t>(header.height), 2);
        putLittleEndian(info, 1, 2);
        putLittleEndian(info, header.bitsPerPixel, 2);
    } else {
        putLittleEndian(info, static_cast<std::uint32_t>(header.width), 4);
        putLittleEndian(info, static_cast<std::uint32_t>(header.height), 4);
        putLittleEndian(info, 1, 2);
        putLittleEndian(info, header.bitsPerPixel, 2);
        putLittleEndian(info, header.compression, 4);
        putLittleEndian(info, rows.size(), 4);
        info.append(16, '\0');
        for (const std::uint32_t mask : header.masks)
            putLittleEndian(info, mask, 4);
        if (info.size() < header.headerSize)
            info.append(header.headerSize - info.size(), '\0');
    }
    std::string file = "BM";
    putLittleEndian(file, 14 + info.size() + rows.size(), 4);
    putLittleEndian(file, 0, 4);
    putLittleEndian(file, 14 + info.size(), 4);
    return file + info + rows;
}

// Red, green in the top row; blue, white below.
const std::vector<std::uint8_t> kTwoByTwo = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
const std::string kTopRow24("\x00\x00\xFF\x00\xFF\x00\x00\x00", 8);
const std::string kBottomRow24("\xFF\x00\x00\xFF\xFF\xFF\x00\x00", 8);

using test::errorNumberOf;

TEST(BitmapFile, ReadsTheLayoutsOtherProgramsWrite)
{
    const std::string top32("\x00\x00\xFF\x11\x00\xFF\x00\x22", 8);
    const std::string bottom32("\xFF\x00\x00\x33\xFF\xFF\xFF\x44", 8);
    struct Row
    {
        const char* name;
        BitmapHeader header;
        std::string rows;
    };
    const std::vector<Row> rows = {
        {"24 bits bottom-up", {.width = 2, .height = 2}, kBottomRow24 + kTopRow24},
        {"24 bits top-down", {.width = 2, .height = -2}, kTopRow24 + kBottomRow24},
        {"32 bits, the fourth byte dropped", {.width = 2, .height = 2, .bitsPerPixel = 32}, bottom32 + top32},
        // Red, green, blue, alpha, as some programs write 32-bit files with a version 5 header.
        {"masks of whole bytes",
         {.headerSize = 124,
          .width = 2,
          .height = -2,
          .bitsPerPixel = 32,
          .compression = 3,
          .masks = {0x000000FF, 0x0000FF00, 0x00FF0000}},
         std::string("\xFF\x00\x00\x80\x00\xFF\x00\x80\x00\x00\xFF\x80\xFF\xFF\xFF\x80", 16)},
        {"the old core header", {.headerSize = 12, .width = 2, .height = 2}, kBottomRow24 + kTopRow24},
        {"no padding after the last row", {.width = 2, .height = 2}, kBottomRow24 + kTopRow24.substr(0, 6)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(parseBitmapFile(bitmapFile(row.header, row.rows)), (Bitmap{2, 2, kTwoByTwo}));
    }
}

TEST(BitmapFile, RefusesWhatIsNoSupportedBitmap)
{
    const std::string good = bitmapFile({.width = 2, .height = 2}, kBottomRow24 + kTopRow24);
    std::string wrongMagic = good;
    wrongMagic[1] = 'A';
    struct Row
    {
        const char* name;
        std::string bytes;
    };
    const std::vector<Row> rows = {
        {"empty", ""},
        {"wrong magic", wrongMagic},
        {"header cut", good.substr(0, 30)},
        {"pixels cut", good.substr(0, good.size() - 3)},
        {"unknown header size",
         bitmapFile({.headerSize = 20, .width = 2, .height = 2}, kBottomRow24 + kTopRow24)},
        {"8 bits", bitmapFile({.width = 2, .height = 2, .bitsPerPixel = 8}, std::string(64, '\0'))},
        {"run-length compressed",
         bitmapFile({.width = 2, .height = 2, .compression = 1}, std::string(64, '\0'))},
        {"masks of half bytes",
         bitmapFile(
             {.width = 1, .height = 1, .bitsPerPixel = 32, .compression = 3, .masks = {0xF00, 0xF0, 0xF}},
             std::string(4, '\0'))},
        {"masks on 24 bits",
         bitmapFile({.width = 1, .height = 1, .compression = 3, .masks = {0xFF, 0xFF00, 0xFF0000}},
                    std::string(4, '\0'))},
        {"zero width", bitmapFile({.width = 0, .height = 2}, std::string(8, '\0'))},
        {"negative width", bitmapFile({.width = -2, .height = 2}, std::string(16, '\0'))},
        {"huge size, no data",
         bitmapFile({.width = 0x7FFFFFFF, .height = -0x7FFFFFFF}, std::string(16, '\0'))},
        {"data offset past the end",
         good.substr(0, 10) + std::string("\xFF\xFF\xFF\x7F", 4) + good.substr(14)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(errorNumberOf([&] { parseBitmapFile(row.bytes); }), 481);
    }
}

} // namespace
} // namespace zw
