#include "app/AtomicFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <string>
#include <unistd.h>

#include "core/RunError.h"

namespace zw {
namespace {

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

void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes, mode_t mode)
{
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
}

} // namespace zw
