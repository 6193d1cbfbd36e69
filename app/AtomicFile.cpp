#include "app/AtomicFile.h"

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace zw {
namespace {

// One spelling per file, so that a link, a relative name and the target meet in one mark.
std::string keyOf(const std::filesystem::path& path)
{
    std::error_code error;
    auto resolved = std::filesystem::weakly_canonical(path, error);
    return (error ? std::filesystem::absolute(path, error) : resolved).string();
}

struct UnreadableFiles
{
    std::mutex lock;
    std::set<std::string> keys;
};

UnreadableFiles& unreadableFiles()
{
    static UnreadableFiles files;
    return files;
}

void syncFolder(const std::filesystem::path& folder)
{
    int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return; // the rename is done; a folder that cannot be opened for syncing is not a failed save
    ::fsync(fd);
    ::close(fd);
}

} // namespace

RunError fileSystemError(int code, const std::filesystem::path& folder)
{
    switch (code) {
    case ENOENT:
    case ENOTDIR:
        // A missing folder is named, so the user knows which one to make.
        return folder.empty() ? RunError::pathNotFound()
                              : RunError(RunError::pathNotFound().number(),
                                         RunError::pathNotFound().description() + ": " + folder.string());
    case EACCES:
    case EPERM:
    case EROFS:
        return RunError::permissionDenied();
    case ENOSPC:
    case EDQUOT:
        return RunError::diskFull();
    default:
        return RunError::pathFileAccess();
    }
}

namespace {

constexpr std::string_view kTemporaryMark = ".zwtmp-";
constexpr std::size_t kRandomPart = 6; // mkstemp's XXXXXX

const std::filesystem::file_time_type kProgramStart = std::filesystem::file_time_type::clock::now();

// An open-file-description lock: it belongs to this descriptor and goes when the descriptor is closed.
bool lockWhole(int fd, short type)
{
    struct flock whole
    {
    };
    whole.l_type = type;
    whole.l_whence = SEEK_SET;
    return ::fcntl(fd, F_OFD_SETLK, &whole) == 0;
}

} // namespace

bool isOwnTemporaryFile(std::string_view fileName)
{
    if (fileName.size() < 1 + kTemporaryMark.size() + kRandomPart + 1 || fileName.front() != '.')
        return false;
    const auto mark = fileName.size() - kRandomPart - kTemporaryMark.size();
    return fileName.substr(mark, kTemporaryMark.size()) == kTemporaryMark;
}

int createOwnTemporaryFile(const std::filesystem::path& target, std::string& name, mode_t mode)
{
    name = (target.parent_path() / ("." + target.filename().string() + std::string(kTemporaryMark) + "XXXXXX"))
               .string();
    int fd = ::mkostemp(name.data(), O_CLOEXEC);
    if (fd < 0)
        throw fileSystemError(errno, target.parent_path());
    if (!lockWhole(fd, F_WRLCK) || ::fchmod(fd, mode) != 0) {
        int code = errno;
        ::close(fd);
        ::unlink(name.c_str());
        throw fileSystemError(code, target.parent_path());
    }
    return fd;
}

int removeStaleTemporaryFiles(const std::filesystem::path& folder, std::filesystem::file_time_type olderThan)
{
    int removed = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        std::error_code entryError;
        if (!isOwnTemporaryFile(entry.path().filename().string()) || !entry.is_regular_file(entryError) ||
            entry.is_symlink(entryError) || entry.last_write_time(entryError) >= olderThan || entryError)
            continue;
        int fd = ::open(entry.path().c_str(), O_RDWR | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
        if (fd < 0)
            continue;
        // A writer holds its temporary file locked; one that is locked is still being written.
        if (lockWhole(fd, F_WRLCK) && ::unlink(entry.path().c_str()) == 0)
            ++removed;
        ::close(fd);
    }
    return removed;
}

std::filesystem::file_time_type programStartTime() { return kProgramStart; }

void markUnreadable(const std::filesystem::path& path)
{
    auto& files = unreadableFiles();
    std::lock_guard guard(files.lock);
    files.keys.insert(keyOf(path));
}

void markReadable(const std::filesystem::path& path)
{
    auto& files = unreadableFiles();
    std::lock_guard guard(files.lock);
    files.keys.erase(keyOf(path));
}

bool isUnreadable(const std::filesystem::path& path)
{
    auto& files = unreadableFiles();
    std::lock_guard guard(files.lock);
    return files.keys.contains(keyOf(path));
}

RunError unreadableError(const std::filesystem::path& path)
{
    return {
        75,
        "Die Datei " + path.string() +
            " konnte nicht gelesen werden. Sie wird nicht überschrieben, damit ihr Inhalt erhalten bleibt."};
}

void writeFileAtomicallyInPieces(const std::filesystem::path& requested, const ByteProducer& produce, mode_t mode,
                                 ExistingMode existing)
{
    std::error_code statusError;
    // A mark protects what is there; once the name is gone there is nothing left to lose.
    if (isUnreadable(requested) &&
        std::filesystem::status(requested, statusError).type() != std::filesystem::file_type::not_found)
        throw unreadableError(requested);
    // A link the user set up stays a link: its target is what gets replaced.
    std::filesystem::path path = requested;
    std::error_code linkError;
    for (int hops = 0; hops < 40 && std::filesystem::is_symlink(path, linkError); ++hops) {
        auto target = std::filesystem::read_symlink(path, linkError);
        if (linkError)
            break;
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    struct stat old
    {
    };
    if (::stat(path.c_str(), &old) == 0) {
        // A FIFO, a device or a folder in the file's place is the user's, not a file to replace.
        if (!S_ISREG(old.st_mode))
            throw unreadableError(requested);
        if (existing == ExistingMode::Keep)
            mode = old.st_mode & 07777;
    }
    std::string temporary;
    int fd = createOwnTemporaryFile(path, temporary, mode);
    auto fail = [&](int code) {
        ::close(fd);
        ::unlink(temporary.c_str());
        fd = -1;
        throw fileSystemError(code, path.parent_path());
    };
    auto write = [&](std::string_view bytes) {
        const char* data = bytes.data();
        std::size_t left = bytes.size();
        while (left > 0) {
            ssize_t written = ::write(fd, data, left);
            if (written < 0) {
                if (errno == EINTR)
                    continue;
                fail(errno);
            }
            data += written;
            left -= static_cast<std::size_t>(written);
        }
    };
    try {
        produce(write);
    } catch (...) {
        // A piece that could not be made (a source that failed to read) leaves the old file as it was.
        if (fd >= 0) {
            ::close(fd);
            ::unlink(temporary.c_str());
        }
        throw;
    }
    if (::fsync(fd) != 0)
        fail(errno);
    // Renamed while still open and locked, so that no starting program takes it for a leftover meanwhile.
    if (::rename(temporary.c_str(), path.c_str()) != 0)
        fail(errno);
    ::close(fd);
    syncFolder(path.parent_path());
}

void writeFileAtomically(const std::filesystem::path& requested, std::string_view bytes, mode_t mode,
                         ExistingMode existing)
{
    writeFileAtomicallyInPieces(
        requested, [bytes](const std::function<void(std::string_view)>& write) { write(bytes); }, mode, existing);
}

} // namespace zw
