#include "app/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/AtomicFile.h"
#include "app/TextFile.h"
#include "core/RunError.h"

namespace zw {
namespace {

long long nanosecondsOf(const timespec& time) { return time.tv_sec * 1'000'000'000LL + time.tv_nsec; }

} // namespace

FileStamp stampOf(const std::filesystem::path& path)
{
    struct stat status
    {
    };
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return {true,
            status.st_dev,
            status.st_ino,
            status.st_size,
            nanosecondsOf(status.st_mtim),
            nanosecondsOf(status.st_ctim)};
}

std::filesystem::path FileLock::lockFileOf(const std::filesystem::path& dataFile)
{
    return dataFile.parent_path() / ("." + dataFile.filename().string() + ".lock");
}

bool FileLock::isLockFileName(std::string_view fileName)
{
    return fileName.size() > 6 && fileName.front() == '.' && fileName.ends_with(".lock");
}

FileLock::FileLock(const std::filesystem::path& dataFile)
{
    const auto lockFile = lockFileOf(dataFile);
    do
        m_fd = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
    while (m_fd < 0 && errno == EINTR);
    if (m_fd < 0)
        throw fileSystemError(errno, lockFile.parent_path());
    struct flock request
    {
    };
    request.l_type = F_WRLCK;
    request.l_whence = SEEK_SET;
    int result = 0;
    do
        result = ::fcntl(m_fd, F_OFD_SETLKW, &request);
    while (result != 0 && errno == EINTR);
    m_held = result == 0;
}

FileLock::~FileLock()
{
    // Closing the last descriptor of the open file description releases the lock.
    if (m_fd >= 0)
        ::close(m_fd);
}

FileStamp updateFileLocked(const std::filesystem::path& file, const FileChange& change, mode_t mode)
{
    FileLock lock(file);
    FileOnDisk onDisk;
    try {
        onDisk.bytes = readFileBytes(file);
        onDisk.exists = true;
    } catch (const RunError& error) {
        if (error.number() != RunError::fileNotFound().number())
            throw unreadableError(file);
    }
    if (auto replacement = change(onDisk))
        writeFileAtomically(file, *replacement, mode);
    return stampOf(file);
}

} // namespace zw
