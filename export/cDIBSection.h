#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace zw {

struct Bitmap;
class cDIBSection;

// The blit rules of the drawing calls, with their platform numbers.
enum class RasterOp : std::uint32_t {
    SRCCOPY = 0x00CC0020,
    SRCPAINT = 0x00EE0086,
    SRCAND = 0x008800C6,
    SRCINVERT = 0x00660046,
    NOTSRCCOPY = 0x00330008,
    BLACKNESS = 0x00000042,
    WHITENESS = 0x00FF0062,
};

enum class BitsKind { Colour, Grey };

// Where CopyToClipboard puts the surface; the windows give it the desktop's clipboard.
class DibClipboard
{
public:
    virtual ~DibClipboard() = default;
    virtual void setBitmap(const cDIBSection& surface) = 0;
    virtual void showMessage(std::string_view text) = 0;
};

// A 24-bit device-independent bitmap: rows bottom-up, blue-green-red, each row padded to four bytes, so that
// its bits behind a 54-byte header are a bitmap file. Every picture path shares it: the capture, temp.bmp,
// the bitmap files, the clipboard and the previews.
class cDIBSection
{
public:
    // No surface can be larger; beyond it Create fails instead of exhausting memory.
    static constexpr int kMaxSide = 32767;
    static constexpr std::size_t kMaxBytes = std::size_t{256} << 20;

    cDIBSection() = default;
    cDIBSection(const cDIBSection& other);
    cDIBSection& operator=(const cDIBSection& other);
    cDIBSection(cDIBSection&& other) noexcept;
    cDIBSection& operator=(cDIBSection&& other) noexcept;
    ~cDIBSection() = default;

    // With asBitmap the surface goes onto the clipboard as a bitmap; the other form was never possible.
    void CopyToClipboard(DibClipboard& clipboard, bool asBitmap = true) const;

    // The picture's size, Create, then its pixels blitted in.
    bool CreateFromPicture(const Bitmap& Picture);
    // ClearUp, then a new black section. False (and no section) when the size is zero, negative or too large.
    bool Create(int Width, int Height);

    int BytesPerScanLine() const { return (m_width * 3 + 3) & ~3; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    // Non-zero while a section exists.
    std::uintptr_t hdc() const { return m_hdc; }
    std::uintptr_t hDib() const { return m_hDib; }
    std::uint8_t* DIBSectionBitsPtr() { return m_bits.empty() ? nullptr : m_bits.data(); }
    const std::uint8_t* DIBSectionBitsPtr() const { return m_bits.empty() ? nullptr : m_bits.data(); }
    std::size_t byteSize() const { return m_bits.size(); }

    // This surface from (SrcX, SrcY) out to `target` at (X, Y); both sides are clipped.
    void PaintPicture(cDIBSection& target, int X, int Y, int Width, int Height, int SrcX = 0, int SrcY = 0,
                      RasterOp Rop = RasterOp::SRCCOPY) const;

    void RandomiseBits(BitsKind kind = BitsKind::Colour, std::uint32_t seed = 0);
    void ClearUp();

    // A new surface of the new size: a copy if the size is the same, else each channel bilinear from the four
    // neighbouring source pixels, the corners of the new surface on the corners of this one.
    cDIBSection Resample(int NewHeight, int NewWidth) const;

    // Pixel access with y counted from the top, as pictures are read.
    struct Pixel
    {
        std::uint8_t blue = 0, green = 0, red = 0;
        bool operator==(const Pixel&) const = default;
    };
    Pixel pixel(int x, int yFromTop) const;
    void setPixel(int x, int yFromTop, Pixel value);
    std::uint8_t* scanLine(int yFromTop) { return m_bits.data() + rowOffset(yFromTop); }
    const std::uint8_t* scanLine(int yFromTop) const { return m_bits.data() + rowOffset(yFromTop); }

private:
    std::size_t rowOffset(int yFromTop) const
    {
        return static_cast<std::size_t>(m_height - 1 - yFromTop) * static_cast<std::size_t>(BytesPerScanLine());
    }
    static void blit(const cDIBSection* source, int sourceX, int sourceY, cDIBSection& target, int targetX,
                     int targetY, int width, int height, RasterOp rop);

    int m_width = 0;
    int m_height = 0;
    std::uintptr_t m_hdc = 0;
    std::uintptr_t m_hDib = 0;
    std::vector<std::uint8_t> m_bits;
};

} // namespace zw
