#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "app/ProgramPaths.h"
#include "tests/app/TempFolder.h"

namespace zw::test {

// A program folder with an empty daten/ for each test.
struct ProgramFolder
{
    TempFolder folder;
    ProgramPaths paths{folder.path()};

    ProgramFolder() { std::filesystem::create_directories(paths.dataFolder()); }

    void writeBytes(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(paths.dataFile(name), std::ios::binary) << bytes;
    }
    std::string readBytes(const std::string& name) const
    {
        std::ifstream in(paths.dataFile(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
};

} // namespace zw::test
