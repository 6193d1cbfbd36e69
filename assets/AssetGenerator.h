#pragma once

#include <filesystem>

namespace zw {

// Writes the distribution folder: pictures under hintergrund/, data files under daten/, temp/ and hilfe/. The
// written texts (tips, news, handbook) come from `content`, UTF-8 there; the tips and the news are stored in
// Windows-1252 as the program reads them. Returns false if a file could not be written.
bool generateDistribution(const std::filesystem::path& folder, const std::filesystem::path& content);

} // namespace zw
