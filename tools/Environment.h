#pragma once

#include <filesystem>

#include "app/ProgramPaths.h"
#include "tools/CliContext.h"

namespace zw {
class SettingsStore;
}

namespace zw::cli {

// The program folder and the settings folder as the window finds them, unless --home / --config name others.
ProgramPaths programPaths(const CliContext& context);
std::filesystem::path settingsFolder(const CliContext& context);

// What the settings store has to tell (a file it could not read or write) goes to standard error, once.
void tellNoticesOnStandardError(SettingsStore& settings);

} // namespace zw::cli
