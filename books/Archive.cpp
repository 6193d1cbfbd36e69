#include "books/Archive.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "app/AtomicFile.h"
#include "app/ProgramPaths.h"
#include "books/Journal.h"
#include "books/Sha256.h"
#include "core/RunError.h"

namespace zw {
namespace {

std::string fileNameSafe(std::string_view text)
{
    std::string safe;
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        safe += (byte < 0x20 || c == '/' || c == '\\' || c == ':' || byte == 0x7F) ? '_' : c;
    }
    if (safe.empty() || safe.front() == '.')
        safe.insert(0, "_");
    return safe;
}

void syncFolder(const std::filesystem::path& folder)
{
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

// Creates the file only if the name is free; false when it is taken.
bool writeNewFile(const std::filesystem::path& file, std::string_view bytes)
{
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0444);
    if (fd < 0) {
        if (errno == EEXIST)
            return false;
        throw fileSystemError(errno);
    }
    std::string_view rest = bytes;
    int failure = 0;
    while (!rest.empty() && failure == 0) {
        const ssize_t written = ::write(fd, rest.data(), rest.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            failure = written < 0 ? errno : ENOSPC;
        else
            rest.remove_prefix(static_cast<std::size_t>(written));
    }
    if (failure == 0 && ::fsync(fd) != 0)
        failure = errno;
    ::close(fd);
    if (failure != 0) {
        ::unlink(file.c_str());
        throw fileSystemError(failure);
    }
    return true;
}

} // namespace

std::filesystem::path archiveFolder(const ProgramPaths& paths) { return paths.dataFolder() / "archiv"; }

ArchivedFile archiveFile(const ProgramPaths& paths, int year, std::string_view stem, std::string_view extension,
                         std::string_view bytes)
{
    const std::string yearName = std::to_string(year);
    const auto folder = archiveFolder(paths) / yearName;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw fileSystemError(error.value());
    const std::string safeStem = fileNameSafe(stem);
    for (int attempt = 1;; ++attempt) {
        std::string name = safeStem;
        if (attempt > 1)
            name += "-" + std::to_string(attempt);
        name += extension;
        if (writeNewFile(folder / name, bytes)) {
            syncFolder(folder);
            return {"archiv/" + yearName + "/" + name, sha256Hex(bytes)};
        }
    }
}

std::string receiptArchiveStem(std::string_view number, const BookDate& date)
{
    return std::string(number) + "-" + date.iso();
}

std::filesystem::path archivedPath(const ProgramPaths& paths, std::string_view name)
{
    return paths.dataFolder() / std::filesystem::path(std::string(name));
}

} // namespace zw
