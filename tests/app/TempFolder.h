#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zw::test {

// A fresh folder below the system's temporary folder, removed again when the test ends.
class TempFolder
{
public:
    TempFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "zw-test-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

// A file's bytes, exactly as they are on disk.
inline void writeBytes(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

inline std::string readBytes(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Where two byte sequences first part, empty when they are equal: a failure names a place instead of printing
// megabytes.
template <typename Bytes>
std::string firstDifference(const Bytes& actual, const Bytes& expected)
{
    const std::size_t common = std::min(actual.size(), expected.size());
    std::size_t at = 0;
    while (at < common && actual[at] == expected[at])
        ++at;
    if (at == common && actual.size() == expected.size())
        return {};
    return "byte " + std::to_string(at) + " of " + std::to_string(actual.size()) + " (expected " +
           std::to_string(expected.size()) + ")";
}

} // namespace zw::test
