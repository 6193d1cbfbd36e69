#pragma once

#include <filesystem>
#include <string>

namespace zw {

// Starting with the desktop session: an XDG autostart entry <folder>/<name>.desktop whose Exec is the program.

// What stands between the last "/" and the last "." of the program's path; without a dot in the file name, all of
// the file name.
std::string autostartName(const std::string& programPath);

// $XDG_CONFIG_HOME/autostart, else ~/.config/autostart.
std::filesystem::path autostartFolder();

// The entry's text; the path is quoted as the desktop entry format asks.
std::string autostartEntry(const std::string& name, const std::string& programPath);

// Writes the entry, making the folder when needed; false when it cannot be written.
bool SetAutoRun(const std::filesystem::path& folder, const std::string& name, const std::string& programPath);
// Removes the entry; reports nothing, also when there was none.
void RemoveAutoRun(const std::filesystem::path& folder, const std::string& name);

} // namespace zw
