#include "service/ZipArchive.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>
#include <zip.h>

namespace fs = std::filesystem;

namespace zw {

namespace {

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

// Copies one entry into a fresh file beside `target` and renames it there; false leaves `target` as it was.
bool restoreEntry(zip_t* archive, zip_uint64_t index, zip_uint64_t size, const fs::path& target)
{
    zip_file_t* entry = zip_fopen_index(archive, index, 0);
    if (entry == nullptr)
        return false;
    std::string pattern = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    const int fd = mkstemp(pattern.data());
    if (fd < 0) {
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
        if (copied > size || write(fd, buffer.data(), static_cast<size_t>(n)) != n) {
            ok = false;
            break;
        }
    }
    // Closing checks the entry's CRC.
    ok = zip_fclose(entry) == 0 && ok && copied == size;
    ok = fchmod(fd, 0644) == 0 && fsync(fd) == 0 && ok;
    ok = close(fd) == 0 && ok;
    if (ok)
        ok = std::rename(pattern.c_str(), target.c_str()) == 0;
    if (!ok)
        ::unlink(pattern.c_str());
    return ok;
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

int ZipArchive::ZipFolder(const fs::path& archive, const fs::path& folder, const std::string& /*password*/,
                          int /*mode*/, const ZipStatus& status) const
{
    std::error_code error;
    const fs::path root = folder.has_filename() ? folder : folder.parent_path(); // "daten/" names "daten"
    std::vector<fs::path> files;
    for (fs::recursive_directory_iterator it(root, error), end; !error && it != end; it.increment(error)) {
        if (it->is_regular_file(error) && !it->is_symlink(error))
            files.push_back(it->path());
    }
    if (error || files.empty())
        return 0;
    std::sort(files.begin(), files.end());

    Progress progress{status};
    progress.show(0);
    int zipError = 0;
    // libzip writes into a temporary file beside the archive and renames it only in zip_close.
    zip_t* zip = zip_open(archive.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &zipError);
    if (zip == nullptr)
        return 0;
    const std::string top = root.filename().string();
    int stored = 0;
    for (const auto& file : files) {
        const std::string name = top + "/" + fs::relative(file, root, error).generic_string();
        zip_source_t* source = zip_source_file(zip, file.c_str(), 0, -1);
        const zip_int64_t index =
            source == nullptr ? -1 : zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE);
        if (index < 0) {
            zip_source_free(source);
            zip_discard(zip);
            return 0;
        }
        zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE,
                                 static_cast<zip_uint32_t>(std::clamp(m_rate, 1, 9)));
        ++stored;
    }
    zip_register_progress_callback_with_state(zip, 0.01, &onZipProgress, nullptr, &progress);
    if (zip_close(zip) != 0) {
        zip_discard(zip);
        return 0;
    }
    progress.show(1);
    return stored;
}

int ZipArchive::UnZip(const fs::path& archive, const fs::path& target, const std::string& /*password*/,
                      int /*mode*/, const ZipStatus& status) const
{
    int zipError = 0;
    zip_t* zip = zip_open(archive.c_str(), ZIP_RDONLY, &zipError);
    if (zip == nullptr)
        return 0;
    std::error_code error;
    const fs::path dataRoot = fs::weakly_canonical(target / "daten", error);
    const zip_int64_t count = zip_get_num_entries(zip, 0);
    zip_uint64_t totalBytes = 0;
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        if (zip_stat_index(zip, static_cast<zip_uint64_t>(i), 0, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE))
            totalBytes += stat.size;
    }
    Progress progress{status};
    progress.show(0);
    zip_uint64_t doneBytes = 0;
    int restored = 0;
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        zip_stat_t stat;
        if (zip_stat_index(zip, index, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_NAME) ||
            !(stat.valid & ZIP_STAT_SIZE))
            continue;
        const std::string name = stat.name;
        if (!isSafeEntryName(name, "daten") || isLinkEntry(zip, index))
            continue;
        const fs::path place = dataRoot / fs::path(name).lexically_relative("daten");
        const bool isFolder = name.back() == '/';
        fs::create_directories(isFolder ? place : place.parent_path(), error);
        // A folder on the way that is a link to elsewhere must not carry the file out of daten/.
        const fs::path real = fs::weakly_canonical(isFolder ? place : place.parent_path(), error);
        if (error || !isWithin(real, dataRoot) || isFolder)
            continue;
        if (restoreEntry(zip, index, stat.size, real / place.filename()))
            ++restored;
        doneBytes += stat.size;
        progress.show(totalBytes == 0 ? 1.0 : static_cast<double>(doneBytes) / static_cast<double>(totalBytes));
    }
    zip_discard(zip);
    progress.show(1);
    return restored;
}

} // namespace zw
