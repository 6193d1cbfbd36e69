#pragma once

#include <filesystem>

#include "app/ProgramPaths.h"
#include "tools/CliContext.h"

namespace zw::cli {

// The program folder and the settings folder as the window finds them, unless --home / --config name others.
ProgramPaths programPaths(const CliContext& context);
std::filesystem::path settingsFolder(const CliContext& context);

} // namespace zw::cli
