#pragma once

#include <filesystem>
#include <string_view>

namespace zw {

// The program folder and the folders in it. Paths of the form "\hintergrund\hg1.jpg" are relative to it.
class ProgramPaths
{
public:
    explicit ProgramPaths(std::filesystem::path home);

    // $ZETTELWERK_HOME if set (filled from the distribution when missing or empty); else the executable's folder if it holds daten/ (a portable install);
    // else $XDG_DATA_HOME/zettelwerk, filled from the distribution data on first start. Leftovers of interrupted
    // writes of earlier runs in the folder and in daten/ are removed.
    static ProgramPaths locate(const std::filesystem::path& executableFolder);

    // Where the distribution data lies: $ZETTELWERK_DIST, the installed share folder beside the executable,
    // or the build tree's generated folder.
    static std::filesystem::path distributionFolder(const std::filesystem::path& executableFolder);

    // Copies the distribution into home unless it already holds daten/. daten/ is moved in last, so a
    // folder with daten/ is always complete. Returns false if nothing could be installed.
    static bool install(const std::filesystem::path& distribution, const std::filesystem::path& home);

    const std::filesystem::path& home() const { return m_home; }
    std::filesystem::path dataFolder() const { return m_home / "daten"; }
    std::filesystem::path dataFile(std::string_view name) const { return dataFolder() / name; }
    std::filesystem::path tempFolder() const { return m_home / "temp"; }
    std::filesystem::path backgroundFolder() const { return m_home / "hintergrund"; }
    std::filesystem::path reportFolder() const { return m_home / "report"; }
    // The help of the distribution the program runs from, so an update of the package brings the new help;
    // hilfe/ of the program folder where the distribution has none.
    std::filesystem::path helpFolder() const { return m_helpFolder.empty() ? m_home / "hilfe" : m_helpFolder; }

    // "\hintergrund\x.jpg" or "hintergrund/x.jpg" to a path below home.
    std::filesystem::path resolve(std::string_view programPath) const;

private:
    static ProgramPaths locateHome(const std::filesystem::path& executableFolder);

    std::filesystem::path m_home;
    std::filesystem::path m_helpFolder;
};

} // namespace zw
