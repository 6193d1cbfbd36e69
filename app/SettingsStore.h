#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/Settings.h"

namespace zw {

// The settings tree kept as one INI-style file per application name in a per-user folder
// ($ZETTELWERK_CONFIG, else $XDG_CONFIG_HOME/Zettelwerk). Every change rewrites the file at once by an atomic
// replace, mode 0600 (it holds the mail password). Names compare without regard to case, as the old store did.
// A folder that cannot be written keeps the values for this run and reports through lastWriteError().
class SettingsStore : public Settings
{
public:
    explicit SettingsStore(std::filesystem::path folder);

    // The folder the environment names, as described above.
    static std::filesystem::path defaultFolder();

    std::string get(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view defaultValue) const override;
    void save(std::string_view application, std::string_view section, std::string_view key,
              std::string_view value) override;
    bool remove(std::string_view application, std::string_view section, std::string_view key) override;
    bool removeSection(std::string_view application, std::string_view section) override;

    const std::filesystem::path& folder() const { return m_folder; }
    std::filesystem::path fileOf(std::string_view application) const;
    const std::string& lastWriteError() const { return m_lastWriteError; }

    // The whole tree of one application in file form, for the settings export.
    std::string serialize(std::string_view application) const;

private:
    struct Section
    {
        std::string name;
        std::vector<std::pair<std::string, std::string>> keys;
    };
    using Tree = std::vector<Section>;

    Tree& tree(std::string_view application) const;
    void write(std::string_view application);

    std::filesystem::path m_folder;
    mutable std::map<std::string, Tree> m_trees; // by lower-cased application name
    std::string m_lastWriteError;
};

} // namespace zw
