#include "tools/Environment.h"


#include <iostream>

#include "app/SettingsStore.h"

namespace zw::cli {
namespace {

std::filesystem::path executableFolder()
{
    std::error_code error;
    auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : self.parent_path();
}

} // namespace

ProgramPaths programPaths(const CliContext& context)
{
    if (context.home)
        return ProgramPaths(*context.home);
    return ProgramPaths::locate(executableFolder());
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
