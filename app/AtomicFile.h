#pragma once

#include <filesystem>
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

// Replaces a file whole through a temporary file in the same folder and a rename, so that a crash leaves
// either the old or the new content, never a shortened file. A symbolic link is followed and its target
// replaced; an existing file keeps its mode (mode applies to new files); the folder is synced after the
// rename. Throws RunError 75 with unreadableError for a file marked unreadable. Throws RunError (76 missing
// folder, 70 no permission, 61 disk full, 75 other) and leaves the old file untouched on failure.
void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes, mode_t mode = 0644);

} // namespace zw
