// libFuzzer target over what the service readers take from outside: a backup archive, an update description and a
// tips file. The first byte picks the reader. Nothing may crash, and a restore never writes outside daten/.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "core/RunError.h"
#include "service/Tips.h"
#include "service/WebUpdate.h"
#include "service/ZipArchive.h"

namespace fs = std::filesystem;

namespace {

const fs::path& workFolder()
{
    static const fs::path folder = [] {
        fs::path made = fs::temp_directory_path() / ("zw-service-fuzz-" + std::to_string(::getpid()));
        fs::create_directories(made / "home" / "daten");
        return made;
    }();
    return folder;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const fs::path& folder = workFolder();
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const fs::path input = folder / "input";
    std::ofstream(input, std::ios::binary | std::ios::trunc) << bytes;
    try {
        switch (data[0] % 3) {
        case 0: {
            zw::ZipArchive().UnZip(input, folder / "home", "", 2, {});
            // Only daten/ may ever receive a file.
            for (const auto& entry : fs::directory_iterator(folder / "home"))
                if (entry.path().filename() != "daten")
                    std::abort();
            fs::remove_all(folder / "home" / "daten");
            fs::create_directory(folder / "home" / "daten");
            break;
        }
        case 1: {
            zw::UpdateCheck check;
            check.take(bytes, folder / "webup.inf", "6.0.0");
            break;
        }
        default: {
            zw::TipList tips;
            tips.LoadTips(input, [] { return 0.5; });
            for (std::size_t i = 0; i < tips.count(); ++i, tips.next())
                tips.DisplayCurrentTip();
        }
        }
    } catch (const zw::RunError&) {
        // The program's own faults are expected answers to bad input.
    }
    return 0;
}
