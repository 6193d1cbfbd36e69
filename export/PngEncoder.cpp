#include "export/PngEncoder.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <zlib.h>

#include "core/RunError.h"

namespace zw {
namespace {

void putBigEndian(std::string& out, std::uint32_t value)
{
    out += static_cast<char>(value >> 24);
    out += static_cast<char>((value >> 16) & 0xFF);
    out += static_cast<char>((value >> 8) & 0xFF);
    out += static_cast<char>(value & 0xFF);
}

void putChunk(std::string& out, const char* type, const std::string& data)
{
    putBigEndian(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = out.size();
    out.append(type, 4);
    out += data;
    auto crc = ::crc32(0, reinterpret_cast<const Bytef*>(out.data() + start), static_cast<uInt>(out.size() - start));
    putBigEndian(out, static_cast<std::uint32_t>(crc));
}

std::uint8_t paeth(int left, int up, int upLeft)
{
    const int estimate = left + up - upLeft;
    const int toLeft = std::abs(estimate - left);
    const int toUp = std::abs(estimate - up);
    const int toUpLeft = std::abs(estimate - upLeft);
    if (toLeft <= toUp && toLeft <= toUpLeft)
        return static_cast<std::uint8_t>(left);
    return static_cast<std::uint8_t>(toUp <= toUpLeft ? up : upLeft);
}

// Each row gets the filter whose output has the smallest sum of magnitudes, the usual rule of thumb that
// makes flat and ruled areas compress well.
std::string filteredRows(const Bitmap& picture)
{
    const std::size_t stride = static_cast<std::size_t>(picture.width) * 3;
    std::string out;
    out.reserve((stride + 1) * static_cast<std::size_t>(picture.height));
    std::array<std::string, 5> candidates;
    for (auto& candidate : candidates)
        candidate.resize(stride);
    const std::vector<std::uint8_t> zeroRow(stride, 0);
    for (std::int32_t y = 0; y < picture.height; ++y) {
        const std::uint8_t* row = picture.pixels.data() + static_cast<std::size_t>(y) * stride;
        const std::uint8_t* above = y > 0 ? row - stride : zeroRow.data();
        std::size_t best = 0;
        long bestCost = -1;
        for (std::size_t filter = 0; filter < candidates.size(); ++filter) {
            long cost = 0;
            for (std::size_t i = 0; i < stride; ++i) {
                const int left = i >= 3 ? row[i - 3] : 0;
                const int upLeft = i >= 3 ? above[i - 3] : 0;
                int predicted = 0;
                switch (filter) {
                case 1: predicted = left; break;
                case 2: predicted = above[i]; break;
                case 3: predicted = (left + above[i]) / 2; break;
                case 4: predicted = paeth(left, above[i], upLeft); break;
                default: break;
                }
                const auto value = static_cast<std::uint8_t>(row[i] - predicted);
                candidates[filter][i] = static_cast<char>(value);
                cost += value < 128 ? value : 256 - value;
            }
            if (bestCost < 0 || cost < bestCost) {
                bestCost = cost;
                best = filter;
            }
        }
        out += static_cast<char>(best);
        out += candidates[best];
    }
    return out;
}

} // namespace

std::string encodePng(const Bitmap& picture)
{
    if (picture.width <= 0 || picture.height <= 0 ||
        picture.pixels.size() != static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 3)
        throw RunError::invalidPicture();
    std::string header;
    putBigEndian(header, static_cast<std::uint32_t>(picture.width));
    putBigEndian(header, static_cast<std::uint32_t>(picture.height));
    header += '\x08'; // bits per sample
    header += '\x02'; // colour type: RGB
    header.append(3, '\0'); // deflate, adaptive filters, no interlace

    const std::string raw = filteredRows(picture);
    uLongf compressedSize = ::compressBound(static_cast<uLong>(raw.size()));
    std::string compressed(compressedSize, '\0');
    if (::compress2(reinterpret_cast<Bytef*>(compressed.data()), &compressedSize,
                    reinterpret_cast<const Bytef*>(raw.data()), static_cast<uLong>(raw.size()),
                    Z_DEFAULT_COMPRESSION) != Z_OK)
        throw RunError::invalidPicture();
    compressed.resize(compressedSize);

    std::string out("\x89PNG\r\n\x1a\n", 8);
    putChunk(out, "IHDR", header);
    putChunk(out, "IDAT", compressed);
    putChunk(out, "IEND", {});
    return out;
}

} // namespace zw
