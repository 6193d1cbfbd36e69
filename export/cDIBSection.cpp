#include "export/cDIBSection.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <random>
#include <utility>

#include "export/BitmapFile.h"

namespace zw {
namespace {

// Handles only need to be distinct and non-zero while a section lives.
std::uintptr_t nextHandle()
{
    static std::atomic<std::uintptr_t> counter{0};
    return ++counter;
}

bool usesSource(RasterOp rop) { return rop != RasterOp::BLACKNESS && rop != RasterOp::WHITENESS; }

std::uint8_t combine(RasterOp rop, std::uint8_t source, std::uint8_t target)
{
    switch (rop) {
    case RasterOp::SRCCOPY:
        return source;
    case RasterOp::SRCPAINT:
        return static_cast<std::uint8_t>(source | target);
    case RasterOp::SRCAND:
        return static_cast<std::uint8_t>(source & target);
    case RasterOp::SRCINVERT:
        return static_cast<std::uint8_t>(source ^ target);
    case RasterOp::NOTSRCCOPY:
        return static_cast<std::uint8_t>(~source);
    case RasterOp::BLACKNESS:
        return 0;
    case RasterOp::WHITENESS:
        return 0xFF;
    }
    return target; // a number outside the list leaves the target alone
}

} // namespace

cDIBSection::cDIBSection(const cDIBSection& other)
    : m_width(other.m_width), m_height(other.m_height), m_bits(other.m_bits)
{
    if (!m_bits.empty()) {
        m_hdc = nextHandle();
        m_hDib = nextHandle();
    }
}

cDIBSection& cDIBSection::operator=(const cDIBSection& other)
{
    if (this != &other) {
        cDIBSection copy(other);
        *this = std::move(copy);
    }
    return *this;
}

cDIBSection::cDIBSection(cDIBSection&& other) noexcept
    : m_width(std::exchange(other.m_width, 0)), m_height(std::exchange(other.m_height, 0)),
      m_hdc(std::exchange(other.m_hdc, 0)), m_hDib(std::exchange(other.m_hDib, 0)), m_bits(std::move(other.m_bits))
{
    other.m_bits.clear();
}

cDIBSection& cDIBSection::operator=(cDIBSection&& other) noexcept
{
    if (this != &other) {
        m_width = std::exchange(other.m_width, 0);
        m_height = std::exchange(other.m_height, 0);
        m_hdc = std::exchange(other.m_hdc, 0);
        m_hDib = std::exchange(other.m_hDib, 0);
        m_bits = std::move(other.m_bits);
        other.m_bits.clear();
    }
    return *this;
}

void cDIBSection::CopyToClipboard(DibClipboard& clipboard, bool asBitmap) const
{
    if (!asBitmap) {
        clipboard.showMessage("I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!");
        return;
    }
    if (m_hDib != 0)
        clipboard.setBitmap(*this);
}

bool cDIBSection::Create(int Width, int Height)
{
    ClearUp();
    if (Width <= 0 || Height <= 0 || Width > kMaxSide || Height > kMaxSide)
        return false;
    const std::size_t rowBytes = (static_cast<std::size_t>(Width) * 3 + 3) & ~std::size_t{3};
    const std::size_t bytes = rowBytes * static_cast<std::size_t>(Height);
    if (bytes > kMaxBytes)
        return false;
    m_bits.assign(bytes, 0);
    m_width = Width;
    m_height = Height;
    m_hdc = nextHandle();
    m_hDib = nextHandle();
    return true;
}

bool cDIBSection::CreateFromPicture(const Bitmap& Picture)
{
    const auto expected = static_cast<std::size_t>(std::max(Picture.width, 0)) *
                          static_cast<std::size_t>(std::max(Picture.height, 0)) * 3;
    if (Picture.pixels.size() != expected || !Create(Picture.width, Picture.height)) {
        ClearUp();
        return false;
    }
    const std::uint8_t* from = Picture.pixels.data();
    for (int y = 0; y < m_height; ++y) {
        std::uint8_t* row = scanLine(y);
        for (int x = 0; x < m_width; ++x, from += 3) {
            row[3 * x] = from[2];
            row[3 * x + 1] = from[1];
            row[3 * x + 2] = from[0];
        }
    }
    return true;
}

void cDIBSection::ClearUp()
{
    m_bits.clear();
    m_bits.shrink_to_fit();
    m_width = 0;
    m_height = 0;
    m_hdc = 0;
    m_hDib = 0;
}

void cDIBSection::blit(const cDIBSection* source, int sourceX, int sourceY, cDIBSection& target, int targetX,
                       int targetY, int width, int height, RasterOp rop)
{
    if (target.m_bits.empty())
        return;
    // Clip in 64 bits so that no coordinate the caller passes can overflow.
    long long sx = sourceX, sy = sourceY, tx = targetX, ty = targetY, w = width, h = height;
    auto clip = [&](long long& first, long long& other, long long& extent, long long limit) {
        if (first < 0) {
            extent += first;
            other -= first;
            first = 0;
        }
        extent = std::min(extent, limit - first);
    };
    clip(tx, sx, w, target.m_width);
    clip(ty, sy, h, target.m_height);
    if (source != nullptr) {
        if (source->m_bits.empty())
            return;
        clip(sx, tx, w, source->m_width);
        clip(sy, ty, h, source->m_height);
    }
    if (w <= 0 || h <= 0)
        return;
    const auto bytes = static_cast<std::size_t>(w) * 3;
    // A surface painted onto itself with overlap must read the pixels as they were before.
    cDIBSection before;
    if (source == &target) {
        before = target;
        source = &before;
    }
    for (long long row = 0; row < h; ++row) {
        std::uint8_t* to = target.scanLine(static_cast<int>(ty + row)) + tx * 3;
        const std::uint8_t* from =
            source != nullptr ? source->scanLine(static_cast<int>(sy + row)) + sx * 3 : nullptr;
        for (std::size_t i = 0; i < bytes; ++i)
            to[i] = combine(rop, from != nullptr ? from[i] : 0, to[i]);
    }
}

void cDIBSection::PaintPicture(cDIBSection& target, int X, int Y, int Width, int Height, int SrcX, int SrcY,
                               RasterOp Rop) const
{
    blit(usesSource(Rop) ? this : nullptr, SrcX, SrcY, target, X, Y, Width, Height, Rop);
}

void cDIBSection::RandomiseBits(BitsKind kind, std::uint32_t seed)
{
    std::mt19937 generator(seed);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int y = 0; y < m_height; ++y) {
        std::uint8_t* row = scanLine(y);
        for (int x = 0; x < m_width; ++x) {
            if (kind == BitsKind::Grey) {
                const auto grey = static_cast<std::uint8_t>(byte(generator));
                row[3 * x] = row[3 * x + 1] = row[3 * x + 2] = grey;
            } else {
                for (int channel = 0; channel < 3; ++channel)
                    row[3 * x + channel] = static_cast<std::uint8_t>(byte(generator));
            }
        }
    }
}

cDIBSection cDIBSection::Resample(int NewHeight, int NewWidth) const
{
    cDIBSection result;
    if (!result.Create(NewWidth, NewHeight) || m_bits.empty())
        return result;
    if (NewWidth == m_width && NewHeight == m_height) {
        PaintPicture(result, 0, 0, m_width, m_height, 0, 0, RasterOp::SRCCOPY);
        return result;
    }
    const double xScale = NewWidth > 1 ? static_cast<double>(m_width - 1) / (NewWidth - 1) : 0.0;
    const double yScale = NewHeight > 1 ? static_cast<double>(m_height - 1) / (NewHeight - 1) : 0.0;
    for (int y = 0; y < NewHeight; ++y) {
        const double sourceY = y * yScale;
        const int y0 = std::min(static_cast<int>(sourceY), m_height - 1);
        const int y1 = std::min(y0 + 1, m_height - 1);
        const double fy = sourceY - y0;
        const std::uint8_t* top = scanLine(y0);
        const std::uint8_t* bottom = scanLine(y1);
        std::uint8_t* out = result.scanLine(y);
        for (int x = 0; x < NewWidth; ++x) {
            const double sourceX = x * xScale;
            const int x0 = std::min(static_cast<int>(sourceX), m_width - 1);
            const int x1 = std::min(x0 + 1, m_width - 1);
            const double fx = sourceX - x0;
            for (int channel = 0; channel < 3; ++channel) {
                const double upper = top[3 * x0 + channel] * (1 - fx) + top[3 * x1 + channel] * fx;
                const double lower = bottom[3 * x0 + channel] * (1 - fx) + bottom[3 * x1 + channel] * fx;
                const double value = upper * (1 - fy) + lower * fy;
                out[3 * x + channel] = static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
            }
        }
    }
    return result;
}

cDIBSection::Pixel cDIBSection::pixel(int x, int yFromTop) const
{
    if (x < 0 || yFromTop < 0 || x >= m_width || yFromTop >= m_height)
        return {};
    const std::uint8_t* at = scanLine(yFromTop) + 3 * x;
    return {at[0], at[1], at[2]};
}

void cDIBSection::setPixel(int x, int yFromTop, Pixel value)
{
    if (x < 0 || yFromTop < 0 || x >= m_width || yFromTop >= m_height)
        return;
    std::uint8_t* at = scanLine(yFromTop) + 3 * x;
    at[0] = value.blue;
    at[1] = value.green;
    at[2] = value.red;
}

} // namespace zw
