#include "export/BitmapFile.h"

#include "app/TextFile.h"
#include "core/RunError.h"

#include <array>
#include <limits>
#include <string>

namespace zw {
namespace {

constexpr std::size_t kFileHeaderSize = 14;
constexpr std::uint32_t kCoreHeaderSize = 12;
constexpr std::uint32_t kInfoHeaderSize = 40;
constexpr std::uint32_t kCompressionRgb = 0;
constexpr std::uint32_t kCompressionBitFields = 3;
constexpr std::uint32_t kCompressionAlphaBitFields = 6;

class Reader
{
public:
    explicit Reader(std::string_view bytes) : m_bytes(bytes) {}

    std::uint32_t u16(std::size_t at) const { return byte(at) | byte(at + 1) << 8; }
    std::uint32_t u32(std::size_t at) const { return u16(at) | u16(at + 2) << 16; }
    std::int32_t i32(std::size_t at) const { return static_cast<std::int32_t>(u32(at)); }

private:
    std::uint32_t byte(std::size_t at) const
    {
        if (at >= m_bytes.size())
            throw RunError::invalidPicture();
        return static_cast<unsigned char>(m_bytes[at]);
    }

    std::string_view m_bytes;
};

// The byte of a 32-bit pixel that a BI_BITFIELDS mask selects; masks that are not one whole byte are refused.
unsigned byteIndexOfMask(std::uint32_t mask)
{
    for (unsigned index = 0; index < 4; ++index) {
        if (mask == 0xFFu << (8 * index))
            return index;
    }
    throw RunError::invalidPicture();
}

} // namespace

Bitmap parseBitmapFile(std::string_view bytes)
{
    const Reader reader(bytes);
    if (bytes.size() < kFileHeaderSize + 4 || bytes[0] != 'B' || bytes[1] != 'M')
        throw RunError::invalidPicture();
    const std::uint32_t dataOffset = reader.u32(10);
    const std::uint32_t headerSize = reader.u32(kFileHeaderSize);

    std::int64_t width = 0;
    std::int64_t height = 0;
    std::uint32_t bitsPerPixel = 0;
    std::uint32_t compression = kCompressionRgb;
    if (headerSize == kCoreHeaderSize) {
        width = reader.u16(kFileHeaderSize + 4);
        height = reader.u16(kFileHeaderSize + 6);
        bitsPerPixel = reader.u16(kFileHeaderSize + 10);
    } else if (headerSize >= kInfoHeaderSize) {
        width = reader.i32(kFileHeaderSize + 4);
        height = reader.i32(kFileHeaderSize + 8);
        bitsPerPixel = reader.u16(kFileHeaderSize + 14);
        compression = reader.u32(kFileHeaderSize + 16);
    } else {
        throw RunError::invalidPicture();
    }

    // Where red, green and blue lie inside a pixel's bytes; Windows stores blue first.
    std::array<unsigned, 3> channel = {2, 1, 0};
    if (compression == kCompressionBitFields || compression == kCompressionAlphaBitFields) {
        if (bitsPerPixel != 32 || headerSize == kCoreHeaderSize)
            throw RunError::invalidPicture();
        // The masks follow a plain info header and lie inside the later, longer headers.
        const std::size_t masks = kFileHeaderSize + kInfoHeaderSize;
        channel = {byteIndexOfMask(reader.u32(masks)), byteIndexOfMask(reader.u32(masks + 4)),
                   byteIndexOfMask(reader.u32(masks + 8))};
    } else if (compression != kCompressionRgb) {
        throw RunError::invalidPicture();
    }
    if (bitsPerPixel != 24 && bitsPerPixel != 32)
        throw RunError::invalidPicture();

    const bool topDown = height < 0;
    if (topDown)
        height = -height;
    if (width <= 0 || height <= 0 || height > std::numeric_limits<std::int32_t>::max())
        throw RunError::invalidPicture();

    const std::uint64_t bytesPerPixel = bitsPerPixel / 8;
    const std::uint64_t stride = (static_cast<std::uint64_t>(width) * bitsPerPixel + 31) / 32 * 4;
    const std::uint64_t rows = static_cast<std::uint64_t>(height);
    // The last row's padding may be missing; its pixels may not.
    const std::uint64_t needed =
        std::uint64_t{dataOffset} + stride * (rows - 1) + static_cast<std::uint64_t>(width) * bytesPerPixel;
    if (needed > bytes.size())
        throw RunError::invalidPicture();

    Bitmap bitmap;
    bitmap.width = static_cast<std::int32_t>(width);
    bitmap.height = static_cast<std::int32_t>(height);
    bitmap.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    auto* out = bitmap.pixels.data();
    for (std::uint64_t row = 0; row < rows; ++row) {
        const std::uint64_t stored = topDown ? row : rows - 1 - row;
        const auto* in = reinterpret_cast<const unsigned char*>(bytes.data()) + dataOffset + stored * stride;
        for (std::int64_t x = 0; x < width; ++x, in += bytesPerPixel) {
            *out++ = in[channel[0]];
            *out++ = in[channel[1]];
            *out++ = in[channel[2]];
        }
    }
    return bitmap;
}

Bitmap readBitmapFile(const std::filesystem::path& path)
{
    return parseBitmapFile(readFileBytes(path));
}

} // namespace zw
