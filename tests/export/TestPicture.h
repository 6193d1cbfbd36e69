#pragma once

#include "export/BitmapFile.h"

#include <array>
#include <cstdint>
#include <random>

namespace zw::test {

enum class PictureKind { Areas, Noise };

// A picture like the receipt's areas: white paper, a blue band and a red block, whose long runs every encoder packs;
// or noise, which none predicts. The same arguments give the same picture.
inline Bitmap testPicture(int width, int height, PictureKind kind, unsigned seed = 1)
{
    Bitmap picture{width, height, {}};
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::array<std::uint8_t, 3> rgb = {255, 255, 255};
            if (kind == PictureKind::Noise)
                rgb = {static_cast<std::uint8_t>(random()), static_cast<std::uint8_t>(random()),
                       static_cast<std::uint8_t>(random())};
            else if (y < height / 6)
                rgb = {40, 90, 160};
            else if (x > width / 2 && y > height / 2)
                rgb = {200, 40, 40};
            picture.pixels.insert(picture.pixels.end(), rgb.begin(), rgb.end());
        }
    }
    return picture;
}

} // namespace zw::test
