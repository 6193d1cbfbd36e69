#include "app/VendorAddresses.h"

#include <string_view>
#include <utility>

#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "core/RunError.h"

namespace zw {
namespace {

std::string trimmed(std::string_view text)
{
    auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    auto last = text.find_last_not_of(" \t");
    return std::string(text.substr(first, last - first + 1));
}

} // namespace

VendorAddresses vendorAddresses(const ProgramPaths& paths)
{
    VendorAddresses addresses;
    std::vector<std::string> lines;
    try {
        lines = readTextLines(paths.home() / "vendor.ini");
    } catch (const RunError&) {
        return addresses;
    }
    std::pair<std::string_view, std::string*> keys[] = {
        {"webHome", &addresses.webHome},
        {"webDownloads", &addresses.webDownloads},
        {"versionPage", &addresses.versionPage},
        {"webNews", &addresses.webNews},
        {"ratingForm", &addresses.ratingForm},
        {"errorForm", &addresses.errorForm},
        {"mailHost", &addresses.mailHost},
        {"supportAddress", &addresses.supportAddress},
        {"newsletterAddress", &addresses.newsletterAddress},
        {"updateServer", &addresses.updateServer},
    };
    for (const auto& line : lines) {
        auto equals = line.find('=');
        if (equals == std::string::npos || line.starts_with('#') || line.starts_with(';'))
            continue;
        auto key = trimmed(std::string_view(line).substr(0, equals));
        for (auto& [name, target] : keys) {
            if (name == key)
                *target = trimmed(std::string_view(line).substr(equals + 1));
        }
    }
    return addresses;
}

} // namespace zw
