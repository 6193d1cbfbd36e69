#include "app/ProgramPaths.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

#include "app/AtomicFile.h"

#ifndef ZETTELWERK_BUILD_DIST_DIR
#define ZETTELWERK_BUILD_DIST_DIR ""
#endif

namespace zw {
namespace fs = std::filesystem;
namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool isDirectory(const fs::path& path)
{
    std::error_code error;
    return fs::is_directory(path, error);
}

bool isRegularFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

} // namespace

ProgramPaths::ProgramPaths(fs::path home) : m_home(std::move(home)) {}

fs::path ProgramPaths::distributionFolder(const fs::path& executableFolder)
{
    if (auto own = environment("ZETTELWERK_DIST"); !own.empty())
        return own;
    if (auto installed = executableFolder / ".." / "share" / "zettelwerk"; isDirectory(installed / "daten"))
        return installed.lexically_normal();
    return ZETTELWERK_BUILD_DIST_DIR;
}

ProgramPaths ProgramPaths::locate(const fs::path& executableFolder)
{
    ProgramPaths paths = locateHome(executableFolder);
    // What an interrupted write of an earlier run left behind would otherwise stay forever and fill backups.
    for (const fs::path& folder : {paths.home(), paths.dataFolder()})
        removeStaleTemporaryFiles(folder, programStartTime());
    if (auto help = distributionFolder(executableFolder) / "hilfe"; isRegularFile(help / "index.html"))
        paths.m_helpFolder = help;
    return paths;
}

ProgramPaths ProgramPaths::locateHome(const fs::path& executableFolder)
{
    if (fs::path home = environment("ZETTELWERK_HOME"); !home.empty()) {
        // A fresh portable folder works at once; a folder already in other use is never filled.
        std::error_code error;
        if (!fs::exists(home, error) || fs::is_empty(home, error))
            install(distributionFolder(executableFolder), home);
        return ProgramPaths(home);
    }
    if (isDirectory(executableFolder / "daten"))
        return ProgramPaths(executableFolder);
    fs::path dataHome = environment("XDG_DATA_HOME");
    if (dataHome.empty())
        dataHome = fs::path(environment("HOME")) / ".local" / "share";
    fs::path home = dataHome / "zettelwerk";
    install(distributionFolder(executableFolder), home);
    return ProgramPaths(home);
}

bool ProgramPaths::install(const fs::path& distribution, const fs::path& home)
{
    if (isDirectory(home / "daten"))
        return true;
    if (distribution.empty() || !isDirectory(distribution / "daten"))
        return false;
    std::error_code error;
    fs::create_directories(home, error);
    // Copy beside the target first, then move each entry in with a rename; daten/ comes last.
    fs::path staging = home / (".install-" + std::to_string(::getpid()));
    fs::remove_all(staging, error);
    fs::copy(distribution, staging, fs::copy_options::recursive, error);
    if (error) {
        fs::remove_all(staging, error);
        return false;
    }
    for (const auto& entry : fs::directory_iterator(staging, error)) {
        auto name = entry.path().filename();
        if (name == "daten" || fs::exists(home / name))
            continue;
        fs::rename(entry.path(), home / name, error);
    }
    fs::rename(staging / "daten", home / "daten", error);
    bool installed = !error;
    fs::remove_all(staging, error);
    return installed;
}

fs::path ProgramPaths::resolve(std::string_view programPath) const
{
    std::string relative(programPath);
    for (char& c : relative) {
        if (c == '\\')
            c = '/';
    }
    while (!relative.empty() && relative.front() == '/')
        relative.erase(relative.begin());
    return m_home / relative;
}

} // namespace zw
