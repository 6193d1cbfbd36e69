#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace zw {

// Receives the current percentage as decimal text ("0" to "100"), as a status box would.
using ZipStatus = std::function<void(const std::string& percent)>;
// Receives a German message about something a job left out on purpose, naming it.
using ZipNotice = std::function<void(const std::string& message)>;

// The archiver of the data backup, with the four calls the backup window makes. Both jobs return the number of
// files they stored or restored; 0 is the only sign of a failure.
class ZipArchive
{
public:
    void SetLanguage(int language) { m_language = language; }
    void SetCompressionRate(int rate) { m_rate = rate; }

    // Packs every file below `folder`, sub-folders included, under the folder's own name as the archive's top
    // folder. A link to a file is packed as that file's content under the link's name; the program's own
    // temporary files are left out. The archive is written beside `archive`, synced with its folder and renamed
    // onto it at the end, so a failed job or a crash never leaves a half archive under that name. Names go in as
    // UTF-8.
    int ZipFolder(const std::filesystem::path& archive, const std::filesystem::path& folder,
                  const std::string& password, int mode, const ZipStatus& status) const;

    // Restores the entries below `target`/daten/ only. Every entry is checked before anything is created: a name
    // with "..", a leading "/" or "\", a drive letter or a backslash, a link entry, anything outside daten/ and
    // anything whose folder leads out of daten/ through a link are passed over; a file that is a link inside
    // `target` is written through, a link leading out of it is left alone and named through `notice`. When the
    // entries would write more than the cap (see restoreCap) nothing is restored and `notice` says why. Each
    // file is read whole into a temporary file beside its place and renamed onto it, so a damaged entry restores
    // nothing and an existing file is replaced whole or not at all; every folder changed is synced.
    int UnZip(const std::filesystem::path& archive, const std::filesystem::path& target, const std::string& password,
              int mode, const ZipStatus& status, const ZipNotice& notice = {}) const;

private:
    int m_language = 1;
    int m_rate = 6;
};

// Whether an archive entry's name may be restored below `topFolder`/ (e.g. "daten").
bool isSafeEntryName(const std::string& name, const std::string& topFolder);

// The most a restore of an archive of `archiveSize` bytes may write when `freeSpace` bytes are free: ten times the
// archive but at least 64 MiB, since small data folders of text pack far tighter, and never more than is free.
std::uint64_t restoreCap(std::uint64_t archiveSize, std::uint64_t freeSpace);

} // namespace zw
