#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

namespace zw {

// A picture as the writers take it: 8-bit red, green, blue per pixel, rows from the top, no padding.
struct Bitmap
{
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint8_t> pixels; // width * height * 3 bytes

    bool operator==(const Bitmap&) const = default;
};

// Reads a Windows bitmap file of 24 or 32 bits per pixel, stored bottom-up or top-down (negative height).
// 32-bit files may carry BI_BITFIELDS masks of whole bytes; their fourth byte (alpha or padding) is dropped.
// Throws RunError: 53 when the file is missing, 75 when it cannot be read, 481 when it is no such bitmap.
Bitmap readBitmapFile(const std::filesystem::path& path);
Bitmap parseBitmapFile(std::string_view bytes);

} // namespace zw
