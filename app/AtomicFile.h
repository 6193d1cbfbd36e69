#pragma once

#include <filesystem>
#include <string_view>
#include <sys/types.h>

namespace zw {

// Replaces a file whole through a temporary file in the same folder and a rename, so that a crash leaves
// either the old or the new content, never a shortened file. Throws RunError (76 missing folder,
// 70 no permission, 61 disk full, 75 other) and leaves the old file untouched on failure.
void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes, mode_t mode = 0644);

} // namespace zw
