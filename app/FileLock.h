#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace zw {

// Which version of a file a program last read or wrote. Every save replaces the file through a rename, so a
// save by anyone gives a new inode and a new change time.
struct FileStamp
{
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    long long modifiedNs = 0;
    long long changedNs = 0;

    bool operator==(const FileStamp&) const = default;
};

// The stamp of the file a path names now (a link is followed); a missing file gives a stamp with exists false.
FileStamp stampOf(const std::filesystem::path& path);

// An exclusive advisory lock over one data file, held from construction to destruction, for programs that
// read, change and replace the same file (two copies of the program, the window and the command line, two desks
// on one shared folder). It locks a hidden lock file beside the data file, ".NAME.lock", since the data file
// itself is replaced by a rename on every save. The lock is an open-file-description lock (fcntl F_OFD_SETLKW):
// it belongs to this object's descriptor, so two threads of one program exclude each other as two programs do,
// and it goes with the descriptor if the program dies. NFS and SMB mounts with locking support it.
class FileLock
{
public:
    // Waits until the lock is free. A folder where the lock file cannot be made throws RunError as the save
    // would (76 missing folder, 70 no permission, 61 disk full, 75 other); a file system without locks leaves
    // the lock unheld and the caller goes on as before, since refusing every save would lose more.
    explicit FileLock(const std::filesystem::path& dataFile);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    bool held() const { return m_held; }

    static std::filesystem::path lockFileOf(const std::filesystem::path& dataFile);
    // True for a name lockFileOf gives: such a file holds no data and goes into no backup.
    static bool isLockFileName(std::string_view fileName);

private:
    int m_fd = -1;
    bool m_held = false;
};

// What a locked cycle found on disk: the bytes, or nothing for a missing file.
struct FileOnDisk
{
    bool exists = false;
    std::string bytes;
};

// One locked read-modify-replace cycle: under the lock the file is read again and `change` is handed what is
// on disk now; the bytes it returns replace the file through writeFileAtomically (mode as there), nothing
// leaves the file as it is. Returns the stamp of the file after the cycle. Throws what the read (a file that
// cannot be read: unreadableError, never replaced), the change or the write throws; the lock is released
// either way.
using FileChange = std::function<std::optional<std::string>(const FileOnDisk& onDisk)>;
FileStamp updateFileLocked(const std::filesystem::path& file, const FileChange& change, mode_t mode = 0644);

} // namespace zw
