#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace zw {

// Receives the current percentage as decimal text ("0" to "100"), as a status box would.
using ZipStatus = std::function<void(const std::string& percent)>;

// The archiver of the data backup, with the four calls the backup window makes. Both jobs return the number of
// files they stored or restored; 0 is the only sign of a failure.
class ZipArchive
{
public:
    void SetLanguage(int language) { m_language = language; }
    void SetCompressionRate(int rate) { m_rate = rate; }

    // Packs every file below `folder`, sub-folders included, under the folder's own name as the archive's top
    // folder. The archive is written beside `archive` and renamed onto it at the end, so a failed job never
    // leaves a half archive under that name. Links and other non-files are left out. Names go in as UTF-8.
    int ZipFolder(const std::filesystem::path& archive, const std::filesystem::path& folder,
                  const std::string& password, int mode, const ZipStatus& status) const;

    // Restores the entries below `target`/daten/ only: a name with "..", a leading "/" or "\", a drive letter or
    // a backslash, a link, and anything outside daten/ are passed over. Each file is read whole into a temporary
    // file beside its place and renamed onto it, so a damaged entry restores nothing and an existing file is
    // replaced whole or not at all.
    int UnZip(const std::filesystem::path& archive, const std::filesystem::path& target, const std::string& password,
              int mode, const ZipStatus& status) const;

private:
    int m_language = 1;
    int m_rate = 6;
};

// Whether an archive entry's name may be restored below `topFolder`/ (e.g. "daten").
bool isSafeEntryName(const std::string& name, const std::string& topFolder);

} // namespace zw
