#include "app/TextFile.h"

#include <fstream>
#include <iterator>

#include "app/AtomicFile.h"
#include "core/CodePage.h"
#include "core/RunError.h"

namespace zw {

std::string readFileBytes(const std::filesystem::path& path)
{
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        throw RunError::pathFileAccess();
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw RunError::fileNotFound();
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
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
