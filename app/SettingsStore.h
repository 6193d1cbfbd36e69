#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/Settings.h"

namespace zw {

// The settings tree kept as one INI-style file per application name in a per-user folder
// ($ZETTELWERK_CONFIG, else $XDG_CONFIG_HOME/Zettelwerk). Every change rewrites the file at once by an atomic
// replace, mode 0600 whatever mode it had (it holds the mail password). Names compare without regard to case, as
// the old store did. Lines the store did not write itself (comments, keys before the first section, lines without
// "=") stay as they are, and so does a line whose key is not changed.
// A file that exists but cannot be read leaves the program on the defaults in memory and is never written over;
// a folder that cannot be written keeps the values for this run. Either is told once through the notice routine
// (in German, naming the file) and the latter also through lastWriteError().
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
    bool readable(std::string_view application) const override;

    const std::filesystem::path& folder() const { return m_folder; }
    std::filesystem::path fileOf(std::string_view application) const;
    const std::string& lastWriteError() const { return m_lastWriteError; }

    // Where the user is told of a file that could not be read or written. Notices raised before a routine is
    // set wait and are handed to it when it is set.
    using NoticeRoutine = std::function<void(const std::string& message)>;
    void setNoticeRoutine(NoticeRoutine routine);

    // The whole tree of one application in file form, for the settings export.
    std::string serialize(std::string_view application) const;

    // One line of the file: a section head, a key, or anything else, kept as it was read.
    struct Line
    {
        enum class Kind
        {
            Section,
            Key,
            Other
        };
        Kind kind = Kind::Other;
        std::string text; // as on disk, without its line end
        std::string name; // section or key, unescaped
        std::string value;
    };
    using Lines = std::vector<Line>;

private:
    Lines& lines(std::string_view application) const;
    // Applies change to the lines and writes the file; false if change found nothing to do.
    bool change(std::string_view application, const std::function<bool(Lines&)>& edit);
    void tell(const std::string& message) const;

    std::filesystem::path m_folder;
    mutable std::map<std::string, Lines> m_files; // by lower-cased application name
    mutable std::set<std::string> m_unreadable;    // applications whose file could not be read
    std::string m_lastWriteError;
    bool m_writeFailureTold = false;
    NoticeRoutine m_notice;
    mutable std::vector<std::string> m_waitingNotices;
};

} // namespace zw
