#include "service/Autostart.h"

#include <cstdlib>

#include "app/AtomicFile.h"

namespace fs = std::filesystem;

namespace zw {

std::string autostartName(const std::string& programPath)
{
    const auto slash = programPath.rfind('/');
    const auto start = slash == std::string::npos ? 0 : slash + 1;
    const auto dot = programPath.rfind('.');
    if (dot == std::string::npos || dot < start)
        return programPath.substr(start);
    return programPath.substr(start, dot - start);
}

fs::path autostartFolder()
{
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && *config == '/')
        return fs::path(config) / "autostart";
    const char* home = std::getenv("HOME");
    return fs::path(home != nullptr ? home : "") / ".config" / "autostart";
}

std::string autostartEntry(const std::string& name, const std::string& programPath)
{
    std::string quoted = "\"";
    for (char c : programPath) {
        if (c == '"' || c == '`' || c == '$' || c == '\\')
            quoted += "\\\\";
        if (c == '%')
            quoted += '%';
        if (c == '\n' || c == '\r')
            continue;
        quoted += c;
    }
    quoted += '"';
    std::string shownName;
    for (char c : name)
        shownName += c == '\n' || c == '\r' ? ' ' : c;
    return "[Desktop Entry]\nType=Application\nName=" + shownName + "\nExec=" + quoted +
           "\nX-GNOME-Autostart-enabled=true\n";
}

bool SetAutoRun(const fs::path& folder, const std::string& name, const std::string& programPath)
{
    if (name.empty() || name.find('/') != std::string::npos)
        return false;
    std::error_code error;
    fs::create_directories(folder, error);
    try {
        writeFileAtomically(folder / (name + ".desktop"), autostartEntry(name, programPath));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void RemoveAutoRun(const fs::path& folder, const std::string& name)
{
    if (name.empty() || name.find('/') != std::string::npos)
        return;
    std::error_code ignored;
    fs::remove(folder / (name + ".desktop"), ignored);
}

} // namespace zw
