#include "export/DibFile.h"

#include <cstdint>

#include "app/AtomicFile.h"
#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::uint32_t kHeaderBytes = 14 + 40;
constexpr std::int32_t kPixelsPerMetre = 3780; // 96 dots per inch, the screen the picture comes from

void put16(std::string& out, std::uint16_t value)
{
    out.push_back(static_cast<char>(value & 0xFF));
    out.push_back(static_cast<char>(value >> 8));
}

void put32(std::string& out, std::uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>((value >> shift) & 0xFF));
}

} // namespace

std::string bitmapFileBytes(const cDIBSection& surface)
{
    if (surface.hDib() == 0)
        throw RunError::invalidPicture();
    const auto imageBytes = static_cast<std::uint32_t>(surface.byteSize());
    std::string out;
    out.reserve(kHeaderBytes + imageBytes);
    out += "BM";
    put32(out, kHeaderBytes + imageBytes);
    put32(out, 0);
    put32(out, kHeaderBytes);
    put32(out, 40);
    put32(out, static_cast<std::uint32_t>(surface.Width()));
    put32(out, static_cast<std::uint32_t>(surface.Height())); // positive: rows bottom-up
    put16(out, 1);
    put16(out, 24);
    put32(out, 0); // BI_RGB
    put32(out, imageBytes);
    put32(out, kPixelsPerMetre);
    put32(out, kPixelsPerMetre);
    put32(out, 0);
    put32(out, 0);
    out.append(reinterpret_cast<const char*>(surface.DIBSectionBitsPtr()), imageBytes);
    return out;
}

void saveBitmapFile(const cDIBSection& surface, const std::filesystem::path& path)
{
    writeFileAtomically(path, bitmapFileBytes(surface));
}

} // namespace zw
