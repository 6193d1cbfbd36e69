#include "app/HandOver.h"

#include <cstdint>
#include <cstdio>

#include "app/FaultReporter.h"
#include "core/RunError.h"

namespace zw {
namespace fs = std::filesystem;

fs::path receiptFileArgument(const std::vector<std::string>& arguments, const fs::path& workingFolder)
{
    for (const std::string& argument : arguments) {
        if (argument.empty() || argument.front() == '-')
            continue;
        fs::path file(argument);
        return file.is_absolute() ? file.lexically_normal() : (workingFolder / file).lexically_normal();
    }
    return {};
}

std::string handOverServerName(const fs::path& home, std::string_view runtimeFolder, unsigned userId)
{
    // FNV-1a: a short stable name for the folder, so a socket path stays below the system's length limit.
    std::uint64_t hash = 1469598103934665603ull;
    for (unsigned char c : fs::absolute(home).lexically_normal().string()) {
        hash ^= c;
        hash *= 1099511628211ull;
    }
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
    if (!runtimeFolder.empty())
        return (fs::path(runtimeFolder) / ("zettelwerk-" + std::string(digits) + ".socket")).string();
    return "zettelwerk-" + std::to_string(userId) + "-" + digits;
}

std::string handOverMessage(const fs::path& file)
{
    std::string message = file.string();
    message += '\0';
    return message;
}

std::optional<fs::path> takeHandOverMessage(std::string& buffer)
{
    const auto end = buffer.find('\0');
    if (end == std::string::npos)
        return std::nullopt;
    fs::path file(buffer.substr(0, end));
    buffer.erase(0, end + 1);
    return file;
}

bool isOldReceiptFile(const fs::path& file)
{
    std::string extension = file.extension().string();
    for (char& c : extension)
        c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    return extension == ".ZWI";
}

void openReceiptFromOutside(const fs::path& file, const std::function<void(const fs::path&)>& openCurrent,
                            const std::function<void(const fs::path&)>& openOld, FaultReporter& reporter)
{
    try {
        if (isOldReceiptFile(file))
            openOld(file);
        else
            openCurrent(file);
    } catch (const RunError& error) {
        reporter.report(error, "Quittung");
    }
}

} // namespace zw
