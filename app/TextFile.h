#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zw {

// Text files of the data folder: Windows-1252 on disk, UTF-8 in memory, lines ended by CR LF.

// The lines of a file as the old line input read them: a line ends at CR LF, at a lone CR or at LF;
// a last line without an end still counts, an empty file has no line. Throws RunError 53 if missing.
std::vector<std::string> readTextLines(const std::filesystem::path& path);

// The whole file as characters, one per byte, converted to UTF-8. Throws RunError 53 if missing.
std::string readTextFile(const std::filesystem::path& path);

// Rewrites the file whole: each line followed by CR LF. Throws RunError on failure.
void writeTextLines(const std::filesystem::path& path, const std::vector<std::string>& lines);

// Rewrites the file whole with the text converted to Windows-1252, no line ends added.
void writeTextFile(const std::filesystem::path& path, const std::string& text);

// The raw bytes of a file; throws RunError 53 if it does not exist and RunError 75 (unreadableError) for anything
// else that cannot be read as a regular file, which is then marked unreadable.
std::string readFileBytes(const std::filesystem::path& path);

// Hands the file to `consume` in blocks as it is read, with the same checks and marks as readFileBytes.
void readFileInBlocks(const std::filesystem::path& path, const std::function<void(std::string_view)>& consume);

// Splits text into lines by the rules of readTextLines.
std::vector<std::string> splitLines(const std::string& text);

} // namespace zw
