#pragma once

#include <string>

#include "export/BitmapFile.h"

namespace zw {

// Encodes a picture as an 8-bit RGB PNG file. The bytes depend on the pixels alone, so the same picture gives
// the same file whichever way it reached the encoder.
std::string encodePng(const Bitmap& picture);

} // namespace zw
