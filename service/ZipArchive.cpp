#include "service/ZipArchive.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fcntl.h>
#include <limits>
#include <set>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <vector>
#include <zip.h>

#include "app/AtomicFile.h"
#include "app/FileLock.h"

namespace fs = std::filesystem;

namespace zw {

namespace {

constexpr std::uint64_t kSmallestCap = std::uint64_t{64} << 20;

struct Progress
{
    const ZipStatus& status;
    int last = -1;
    void show(double fraction)
    {
        const int percent = std::clamp(static_cast<int>(fraction * 100.0), 0, 100);
        if (percent != last && status) {
            last = percent;
            status(std::to_string(percent));
        }
    }
};

void onZipProgress(zip_t*, double fraction, void* progress) { static_cast<Progress*>(progress)->show(fraction); }

bool isLinkEntry(zip_t* archive, zip_uint64_t index)
{
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0)
        return true;
    return system == ZIP_OPSYS_UNIX && S_ISLNK(attributes >> 16);
}

bool isWithin(const fs::path& inner, const fs::path& outer)
{
    const auto [end, _] = std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
    return end == outer.end();
}

// Syncs a file or a folder by name.
bool syncPath(const fs::path& path, int flags)
{
    const int fd = ::open(path.empty() ? "." : path.c_str(), flags | O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    return ::close(fd) == 0 && synced;
}

bool syncFolder(const fs::path& folder) { return syncPath(folder, O_DIRECTORY); }

// The program's temporary files and lock files, and the ones libzip puts beside such a file, are never data.
bool isTemporaryName(const std::string& name)
{
    return isOwnTemporaryFile(name) || FileLock::isLockFileName(name) || name.find(".zwtmp-") != std::string::npos;
}

// The change journal and the archived documents only grow: an older copy from a backup never replaces them, so no
// entry made after the backup is lost; the restored ledger is journalled as a change at the next step.
bool isKeptHistory(const fs::path& relative)
{
    return relative == "journal.dat" || (!relative.empty() && *relative.begin() == "archiv");
}

// The archive's own mode when it came from a Unix system, never wider than the file it replaces; the address
// book stays its owner's alone.
mode_t restoredMode(zip_t* archive, zip_uint64_t index, const fs::path& place, const struct stat* existing)
{
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    mode_t mode = 0644;
    if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) == 0 && system == ZIP_OPSYS_UNIX &&
        ((attributes >> 16) & 0777) != 0)
        mode = (attributes >> 16) & 0777;
    if (existing != nullptr)
        mode &= existing->st_mode & 0777;
    if (place.filename() == "adressbuch.dat")
        mode &= 0600;
    return mode;
}

struct PlannedFile
{
    zip_uint64_t index;
    zip_uint64_t size;
    fs::path place; // where the bytes go: a link inside the program folder is already followed
    mode_t mode;
    std::string temporary;
};

// Copies one entry into a fresh temporary file beside its place; false removes it again. The caller syncs and
// renames, so that many small files cost one sync of the volume instead of one each.
bool unpackEntry(zip_t* archive, PlannedFile& file)
{
    zip_file_t* entry = zip_fopen_index(archive, file.index, 0);
    if (entry == nullptr)
        return false;
    int fd = -1;
    try {
        fd = createOwnTemporaryFile(file.place, file.temporary, file.mode);
    } catch (const RunError&) {
        zip_fclose(entry);
        return false;
    }
    std::vector<char> buffer(1 << 16);
    zip_uint64_t copied = 0;
    bool ok = true;
    for (;;) {
        // Reading one byte past the stated size shows an entry that holds more than it claims.
        const zip_int64_t n = zip_fread(entry, buffer.data(), buffer.size());
        if (n < 0) {
            ok = false;
            break;
        }
        if (n == 0)
            break;
        copied += static_cast<zip_uint64_t>(n);
        if (copied > file.size || ::write(fd, buffer.data(), static_cast<size_t>(n)) != n) {
            ok = false;
            break;
        }
    }
    // Closing checks the entry's CRC.
    ok = zip_fclose(entry) == 0 && ok && copied == file.size;
    ok = ::close(fd) == 0 && ok;
    if (!ok) {
        ::unlink(file.temporary.c_str());
        file.temporary.clear();
    }
    return ok;
}

// The volume's free bytes for an unprivileged writer; unknown counts as plenty.
std::uint64_t freeSpaceAt(const fs::path& folder)
{
    struct statvfs volume
    {
    };
    if (::statvfs(folder.c_str(), &volume) != 0)
        return std::numeric_limits<std::uint64_t>::max();
    return static_cast<std::uint64_t>(volume.f_bavail) * volume.f_frsize;
}

std::string linkOutsideMessage(const std::string& name, const fs::path& link)
{
    std::error_code error;
    return "Die Datei " + name + " ist eine Verknüpfung nach " + fs::read_symlink(link, error).string() +
           " außerhalb des Programmordners und wurde nicht wiederhergestellt.";
}

std::string tooLargeMessage(const fs::path& archive, std::uint64_t planned, std::uint64_t cap)
{
    return "Die Sicherung " + archive.string() + " würde " + std::to_string(planned) +
           " Bytes schreiben, mehr als die erlaubten " + std::to_string(cap) +
           " Bytes (das Zehnfache der Sicherung oder der freie Platz). Es wurde nichts wiederhergestellt.";
}

} // namespace

bool isSafeEntryName(const std::string& name, const std::string& topFolder)
{
    if (name.empty() || name.front() == '/' || name.find('\\') != std::string::npos ||
        name.find('\0') != std::string::npos)
        return false;
    if (name.size() >= 2 && name[1] == ':' && std::isalpha(static_cast<unsigned char>(name[0])))
        return false;
    if (name.compare(0, topFolder.size() + 1, topFolder + "/") != 0)
        return false;
    std::size_t start = 0;
    while (start <= name.size()) {
        std::size_t end = name.find('/', start);
        if (end == std::string::npos)
            end = name.size();
        const std::string_view part(name.data() + start, end - start);
        if (part == ".." || part == ".")
            return false;
        start = end + 1;
    }
    return true;
}

std::uint64_t restoreCap(std::uint64_t archiveSize, std::uint64_t freeSpace)
{
    const std::uint64_t tenfold =
        archiveSize > std::numeric_limits<std::uint64_t>::max() / 10 ? archiveSize : archiveSize * 10;
    return std::min(std::max(tenfold, kSmallestCap), freeSpace);
}

int ZipArchive::ZipFolder(const fs::path& archive, const fs::path& folder, const std::string& /*password*/,
                          int /*mode*/, const ZipStatus& status) const
{
    std::error_code error;
    const fs::path root = folder.has_filename() ? folder : folder.parent_path(); // "daten/" names "daten"
    std::vector<fs::path> files;
    // is_regular_file follows a link, so a data file kept elsewhere through a link is packed with its content.
    for (fs::recursive_directory_iterator it(root, error), end; !error && it != end; it.increment(error)) {
        std::error_code entryError;
        if (it->is_regular_file(entryError) && !isTemporaryName(it->path().filename().string()) &&
            !fs::equivalent(it->path(), archive, entryError))
            files.push_back(it->path());
    }
    if (error || files.empty())
        return 0;
    std::sort(files.begin(), files.end());

    Progress progress{status};
    progress.show(0);
    // Written under a temporary name of our own, synced, and only then renamed onto the archive.
    std::string temporary;
    try {
        ::close(createOwnTemporaryFile(archive, temporary, 0644));
    } catch (const RunError&) {
        return 0;
    }
    auto fail = [&temporary](zip_t* zip) {
        if (zip != nullptr)
            zip_discard(zip);
        ::unlink(temporary.c_str());
        return 0;
    };
    int zipError = 0;
    zip_t* zip = zip_open(temporary.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &zipError);
    if (zip == nullptr)
        return fail(nullptr);
    const std::string top = root.filename().string();
    int stored = 0;
    for (const auto& file : files) {
        const std::string name = top + "/" + file.lexically_relative(root).generic_string();
        zip_source_t* source = zip_source_file(zip, file.c_str(), 0, -1);
        const zip_int64_t index =
            source == nullptr ? -1 : zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE);
        if (index < 0) {
            zip_source_free(source);
            return fail(zip);
        }
        zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE,
                                 static_cast<zip_uint32_t>(std::clamp(m_rate, 1, 9)));
        ++stored;
    }
    zip_register_progress_callback_with_state(zip, 0.01, &onZipProgress, nullptr, &progress);
    if (zip_close(zip) != 0)
        return fail(zip);
    const fs::path place = archive.parent_path();
    if (!syncPath(temporary, 0) || !syncFolder(place) || std::rename(temporary.c_str(), archive.c_str()) != 0)
        return fail(nullptr);
    syncFolder(place);
    progress.show(1);
    return stored;
}

int ZipArchive::UnZip(const fs::path& archive, const fs::path& target, const std::string& /*password*/,
                      int /*mode*/, const ZipStatus& status, const ZipNotice& notice) const
{
    auto tell = [&notice](const std::string& message) {
        if (notice)
            notice(message);
    };
    int zipError = 0;
    zip_t* zip = zip_open(archive.c_str(), ZIP_RDONLY, &zipError);
    if (zip == nullptr)
        return 0;
    std::error_code error;
    const fs::path programRoot = fs::weakly_canonical(target, error);
    const fs::path dataRoot = fs::weakly_canonical(target / "daten", error);
    if (error) {
        zip_discard(zip);
        return 0;
    }

    // Every entry is checked and placed before anything is created.
    std::vector<fs::path> folders;
    std::vector<PlannedFile> files;
    std::uint64_t plannedBytes = 0;
    const zip_int64_t count = zip_get_num_entries(zip, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        zip_stat_t stat;
        if (zip_stat_index(zip, index, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_NAME) ||
            !(stat.valid & ZIP_STAT_SIZE))
            continue;
        std::string name = stat.name;
        if (!isSafeEntryName(name, "daten") || isLinkEntry(zip, index))
            continue;
        const bool isFolder = name.back() == '/';
        if (isFolder)
            name.pop_back();
        const fs::path relative = fs::path(name).lexically_relative("daten");
        // weakly_canonical follows every link that exists on the way; the rest is yet to be made.
        const fs::path folder = fs::weakly_canonical(dataRoot / (isFolder ? relative : relative.parent_path()), error);
        if (error || !isWithin(folder, dataRoot))
            continue;
        if (isFolder) {
            folders.push_back(folder);
            continue;
        }
        fs::path place = folder / relative.filename();
        struct stat found
        {
        };
        if (::lstat(place.c_str(), &found) == 0 && S_ISLNK(found.st_mode)) {
            const fs::path through = fs::weakly_canonical(place, error);
            if (error || !isWithin(through, programRoot)) {
                tell(linkOutsideMessage(name, place));
                continue;
            }
            place = through;
        }
        const bool exists = ::stat(place.c_str(), &found) == 0;
        if (exists && !S_ISREG(found.st_mode))
            continue; // a folder, a FIFO or a device in the file's place is left as it is
        if (exists && isKeptHistory(relative))
            continue;
        files.push_back({index, stat.size, place, restoredMode(zip, index, place, exists ? &found : nullptr), {}});
        plannedBytes += stat.size;
    }
    const std::uint64_t cap = restoreCap(fs::file_size(archive, error), freeSpaceAt(programRoot));
    if (plannedBytes > cap) {
        tell(tooLargeMessage(archive, plannedBytes, cap));
        zip_discard(zip);
        return 0;
    }

    Progress progress{status};
    progress.show(0);
    std::set<fs::path> changed;
    auto makeFolder = [&](const fs::path& folder) {
        if (!fs::create_directories(folder, error))
            return !error;
        for (fs::path made = folder; made != dataRoot.parent_path() && made.has_relative_path(); made = made.parent_path())
            changed.insert(made.parent_path());
        return true;
    };
    for (const auto& folder : folders)
        makeFolder(folder);
    std::uint64_t doneBytes = 0;
    for (auto& file : files) {
        if (makeFolder(file.place.parent_path()))
            unpackEntry(zip, file);
        doneBytes += file.size;
        progress.show(plannedBytes == 0 ? 1.0 : static_cast<double>(doneBytes) / static_cast<double>(plannedBytes));
    }
    zip_discard(zip);
    // One sync of the volume makes every unpacked file durable before any of them replaces a file.
    const int volume = ::open(dataRoot.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = volume >= 0 && ::syncfs(volume) == 0;
    if (volume >= 0)
        ::close(volume);
    int restored = 0;
    for (const auto& file : files) {
        if (file.temporary.empty())
            continue;
        if (synced && std::rename(file.temporary.c_str(), file.place.c_str()) == 0) {
            ++restored;
            changed.insert(file.place.parent_path());
        } else {
            ::unlink(file.temporary.c_str());
        }
    }
    for (const auto& folder : changed)
        syncFolder(folder);
    progress.show(1);
    return restored;
}

} // namespace zw
