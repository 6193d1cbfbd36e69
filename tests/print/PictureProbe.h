#pragma once

#include <QImage>
#include <QRect>
#include <filesystem>

namespace zw::test {

// Pixels of text or lines: clearly darker than paper and the grey of the form area.
inline bool isInk(QRgb pixel) { return qGray(pixel) < 140; }

inline int inkIn(const QImage& image, const QRect& area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.rect().contains(x, y) && isInk(image.pixel(x, y)))
                ++count;
        }
    }
    return count;
}

inline int pixelsOf(const QImage& image, const QRect& area, QRgb colour)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.rect().contains(x, y) && (image.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF))
                ++count;
        }
    }
    return count;
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
