#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "core/RunError.h"

namespace zw {

// Files that exist but could not be read are remembered for the run; writeFileAtomically refuses them, so
// what could not be read is never replaced by less. A later successful read forgets the mark.
void markUnreadable(const std::filesystem::path& path);
void markReadable(const std::filesystem::path& path);
bool isUnreadable(const std::filesystem::path& path);
// The German message for such a file: which file, and that it is left as it is.
RunError unreadableError(const std::filesystem::path& path);

// The run-time fault for a failed file call's errno: 76 missing folder (naming `folder` when one is given), 70 no
// permission, 61 disk full, 75 anything else. Saves, locks and the journal fail alike through it.
RunError fileSystemError(int code, const std::filesystem::path& folder = {});

enum class ExistingMode
{
    Keep,   // an existing file keeps its mode
    Replace // the file gets the given mode whatever it had (the settings, which hold a password)
};

// Replaces a file whole through a temporary file in the same folder and a rename, so that a crash leaves
// either the old or the new content, never a shortened file. A symbolic link is followed and its target
// replaced; an existing file keeps its mode unless told otherwise; the folder is synced after the rename.
// Throws RunError 75 with unreadableError for a file marked unreadable and RunError 75 for anything but a
// regular file in its place. Throws RunError (76 missing folder, 70 no permission, 61 disk full, 75 other) and
// leaves the old file untouched on failure.
void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes, mode_t mode = 0644,
                         ExistingMode existing = ExistingMode::Keep);

// The same for a file made in pieces, so that it never has to be whole in memory: `produce` hands each piece to
// the writer it is given. What `produce` throws leaves the old file untouched and is passed on.
using ByteProducer = std::function<void(const std::function<void(std::string_view)>& write)>;
void writeFileAtomicallyInPieces(const std::filesystem::path& path, const ByteProducer& produce, mode_t mode = 0644,
                                 ExistingMode existing = ExistingMode::Keep);

// Temporary files of a replacement are named ".<name>.zwtmp-XXXXXX" beside their target, so that the program
// knows the leftovers of an interrupted write as its own: the backup never packs them and the start removes them.
bool isOwnTemporaryFile(std::string_view fileName);

// Creates such a temporary file for target, open for writing with the given mode and locked for as long as the
// descriptor stays open, so that no other program takes it for a leftover. Returns the descriptor and sets name;
// throws RunError (76, 70, 61, 75) as writeFileAtomically does.
int createOwnTemporaryFile(const std::filesystem::path& target, std::string& name, mode_t mode);

// Removes the program's temporary files in folder (not below it) that were last changed before olderThan and
// that no program holds open. Returns how many went; a folder that cannot be read removes nothing.
int removeStaleTemporaryFiles(const std::filesystem::path& folder, std::filesystem::file_time_type olderThan);

// When the running program started, as a file time: leftovers older than that belong to an earlier run.
std::filesystem::file_time_type programStartTime();

} // namespace zw
