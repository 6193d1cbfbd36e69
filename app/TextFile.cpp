#include "app/TextFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/AtomicFile.h"
#include "core/CodePage.h"
#include "core/RunError.h"

namespace zw {

void readFileInBlocks(const std::filesystem::path& path, const std::function<void(std::string_view)>& consume)
{
    // Non-blocking, so a FIFO or a device in place of a file is refused at once instead of waiting for a
    // writer.
    int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            throw RunError::fileNotFound(); // a missing file is a first start, not a failed read
        markUnreadable(path);
        throw unreadableError(path);
    }
    auto fail = [&] {
        ::close(fd);
        markUnreadable(path);
        throw unreadableError(path);
    };
    struct stat status
    {
    };
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode))
        fail();
    std::vector<char> buffer(1 << 20);
    for (;;) {
        ssize_t got = ::read(fd, buffer.data(), buffer.size());
        if (got == 0)
            break;
        if (got < 0) {
            if (errno == EINTR)
                continue;
            fail();
        }
        try {
            consume({buffer.data(), static_cast<std::size_t>(got)});
        } catch (...) {
            ::close(fd);
            throw;
        }
    }
    ::close(fd);
    markReadable(path);
}

std::string readFileBytes(const std::filesystem::path& path)
{
    std::string bytes;
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (!error)
        bytes.reserve(static_cast<std::size_t>(size));
    readFileInBlocks(path, [&bytes](std::string_view block) { bytes.append(block); });
    return bytes;
}

std::vector<std::string> splitLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    std::size_t i = 0;
    while (i < text.size()) {
        char c = text[i];
        if (c == '\r' || c == '\n') {
            lines.push_back(text.substr(start, i - start));
            i += (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ? 2 : 1;
            start = i;
        } else {
            ++i;
        }
    }
    if (start < text.size())
        lines.push_back(text.substr(start));
    return lines;
}

std::vector<std::string> readTextLines(const std::filesystem::path& path)
{
    return splitLines(cp1252ToUtf8(readFileBytes(path)));
}

std::string readTextFile(const std::filesystem::path& path) { return cp1252ToUtf8(readFileBytes(path)); }

void writeTextLines(const std::filesystem::path& path, const std::vector<std::string>& lines)
{
    std::string bytes;
    for (const auto& line : lines) {
        bytes += utf8ToCp1252(line);
        bytes += "\r\n";
    }
    writeFileAtomically(path, bytes);
}

void writeTextFile(const std::filesystem::path& path, const std::string& text)
{
    writeFileAtomically(path, utf8ToCp1252(text));
}

} // namespace zw
