#pragma once

#include <filesystem>
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
        test::writeBytes(paths.dataFile(name), bytes);
    }
    std::string readBytes(const std::string& name) const { return test::readBytes(paths.dataFile(name)); }
};

} // namespace zw::test
