#pragma once

#include <filesystem>

namespace zw {

// The program's icon for the desktop's hicolor theme below `folder`: scalable/apps/zettelwerk.svg and
// <n>x<n>/apps/zettelwerk.png for 16 to 256 pixels, both drawn from one table of shapes. Returns false if a file
// could not be written.
bool generateIcons(const std::filesystem::path& folder);

} // namespace zw
