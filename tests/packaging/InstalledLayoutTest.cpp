#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

#include "app/ProgramPaths.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

namespace fs = std::filesystem;

// An installed tree: <prefix>/bin holds the program, <prefix>/share/zettelwerk the distribution.
void makeInstalledTree(const fs::path& prefix, bool withHelp)
{
    fs::create_directories(prefix / "bin");
    fs::create_directories(prefix / "share" / "zettelwerk" / "daten");
    std::ofstream(prefix / "share" / "zettelwerk" / "daten" / "mwst.dat") << "19\r\n";
    if (withHelp) {
        fs::create_directories(prefix / "share" / "zettelwerk" / "hilfe");
        std::ofstream(prefix / "share" / "zettelwerk" / "hilfe" / "index.html") << "<html></html>";
    }
}

TEST(InstalledLayout, ProgramFolderAndHelpComeFromBesideTheProgramWhereverItIsInstalled)
{
    struct Case
    {
        const char* prefix;
        bool withHelp;
    };
    // The unpacked package's /usr is PackageCheck.sh's matter.
    for (const Case& row : {Case{"usr/local", true}, Case{"nohelp/usr", false}}) {
        SCOPED_TRACE(row.prefix);
        test::TempFolder folder;
        const fs::path prefix = folder / row.prefix;
        makeInstalledTree(prefix, row.withHelp);
        ::unsetenv("ZETTELWERK_DIST");
        ::setenv("ZETTELWERK_HOME", (folder / "home").c_str(), 1);
        const auto paths = ProgramPaths::locate(prefix / "bin");
        ::unsetenv("ZETTELWERK_HOME");
        EXPECT_TRUE(fs::exists(folder / "home" / "daten" / "mwst.dat")) << "filled from the installed share folder";
        const fs::path expectedHelp = row.withHelp ? prefix / "share" / "zettelwerk" / "hilfe" : folder / "home" / "hilfe";
        EXPECT_EQ(paths.helpFolder().lexically_normal(), expectedHelp.lexically_normal());
    }
}

} // namespace
} // namespace zw
