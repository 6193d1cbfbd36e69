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

RunError errorFor(int code)
{
    switch (code) {
    case ENOENT:
    case ENOTDIR:
        return RunError::pathNotFound();
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

} // namespace

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

void writeFileAtomically(const std::filesystem::path& requested, std::string_view bytes, mode_t mode)
{
    if (isUnreadable(requested))
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
    if (::stat(path.c_str(), &old) == 0 && S_ISREG(old.st_mode))
        mode = old.st_mode & 07777;
    std::string temporary = path.string() + ".XXXXXX";
    int fd = ::mkstemp(temporary.data());
    if (fd < 0)
        throw errorFor(errno);
    auto fail = [&](int code) {
        ::close(fd);
        ::unlink(temporary.c_str());
        throw errorFor(code);
    };
    if (::fchmod(fd, mode) != 0)
        fail(errno);
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
    if (::fsync(fd) != 0)
        fail(errno);
    if (::close(fd) != 0) {
        ::unlink(temporary.c_str());
        throw errorFor(errno);
    }
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        int code = errno;
        ::unlink(temporary.c_str());
        throw errorFor(code);
    }
    syncFolder(path.parent_path());
}

} // namespace zw
