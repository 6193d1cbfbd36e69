#pragma once

#include <cstdlib>
#include <filesystem>
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

} // namespace zw::test
