#pragma once

#include <filesystem>
#include <string>

#include "export/cDIBSection.h"

namespace zw {

// The bytes of a 24-bit bitmap file of the surface: a 54-byte header, then its bits as they lie in memory.
// Throws RunError 481 for a surface without a section.
std::string bitmapFileBytes(const cDIBSection& surface);

// Writes those bytes whole (temporary file and rename). Throws RunError as writeFileAtomically does.
void saveBitmapFile(const cDIBSection& surface, const std::filesystem::path& path);

} // namespace zw
