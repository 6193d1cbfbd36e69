#pragma once

#include <filesystem>

namespace zw {

// The stamp field pictures stempel_leer.jpg, stempel_original.jpg, stempel_kopie.jpg and the template
// ZW-Schablone.pdf and an empty daten/aussteller.dat, written into the distribution folder. Needs hintergrund/quittung_leer.jpg drawn first.
bool generatePrintAssets(const std::filesystem::path& folder);

} // namespace zw
