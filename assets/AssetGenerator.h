#pragma once

#include <filesystem>

namespace zw {

// Writes the distribution folder: pictures under hintergrund/, data files under daten/, temp/ and hilfe/.
// Returns false if a file could not be written.
bool generateDistribution(const std::filesystem::path& folder);

} // namespace zw
