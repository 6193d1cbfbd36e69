#pragma once

#include <QImage>
#include <QRect>
#include <filesystem>

namespace zw::test {

// Pixels of text or lines: clearly darker than paper and the grey of the form area.
inline bool isInk(QRgb pixel) { return qGray(pixel) < 140; }

// How many pixels of the area pass the test; the part outside the image counts none.
template <typename Test> int countIn(const QImage& image, const QRect& area, Test test)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.rect().contains(x, y) && test(image.pixel(x, y)))
                ++count;
        }
    }
    return count;
}

inline int inkIn(const QImage& image, const QRect& area) { return countIn(image, area, isInk); }

inline int pixelsOf(const QImage& image, const QRect& area, QRgb colour)
{
    return countIn(image, area, [colour](QRgb pixel) { return (pixel & 0xFFFFFF) == (colour & 0xFFFFFF); });
}

// A picture of one colour, saved where the form can load it.
inline void writeSolidPicture(const std::filesystem::path& file, int width, int height, QColor colour)
{
    std::filesystem::create_directories(file.parent_path());
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    image.save(QString::fromStdString(file.string()), "BMP");
}

} // namespace zw::test
