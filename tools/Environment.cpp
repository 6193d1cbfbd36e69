#include "tools/Environment.h"

#include <iostream>

#include "app/SettingsStore.h"

namespace zw::cli {

ProgramPaths programPaths(const CliContext& context)
{
    if (context.home) {
        // An empty or missing folder is filled as the program's first start fills it; one in other use never is.
        std::error_code error;
        if (!std::filesystem::exists(*context.home, error) || std::filesystem::is_empty(*context.home, error))
            ProgramPaths::install(ProgramPaths::distributionFolder(context.executableFolder), *context.home);
        return ProgramPaths(*context.home);
    }
    return ProgramPaths::locate(context.executableFolder);
}

std::filesystem::path settingsFolder(const CliContext& context)
{
    return context.config ? *context.config : SettingsStore::defaultFolder();
}

void tellNoticesOnStandardError(SettingsStore& settings)
{
    settings.setNoticeRoutine([](const std::string& message) { std::cerr << message << '\n'; });
}

} // namespace zw::cli
