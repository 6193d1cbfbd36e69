#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "tools/CliContext.h"
#include "tools/Commands.h"

namespace zw::cli {

std::optional<std::string> takeOption(std::vector<std::string>& arguments, const std::string& name)
{
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == name) {
            std::string value = arguments[i + 1];
            arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(i),
                            arguments.begin() + static_cast<std::ptrdiff_t>(i) + 2);
            return value;
        }
    }
    return std::nullopt;
}

bool takeFlag(std::vector<std::string>& arguments, const std::string& name)
{
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        if (*it == name) {
            arguments.erase(it);
            return true;
        }
    }
    return false;
}

namespace {

void usage(std::ostream& out)
{
    out << "Aufruf: zettelwerk-cli [--home ORDNER] [--config ORDNER] BEFEHL ...\n";
    for (const auto& command : commands())
        out << "  zettelwerk-cli " << command.usage << "\n";
}

} // namespace
} // namespace zw::cli

int main(int argc, char** argv)
{
    std::vector<std::string> arguments(argv + 1, argv + argc);
    zw::cli::CliContext context{{}, std::nullopt, std::nullopt, std::cout, std::cerr, {}, {}};
    // The full command line, started by zettelwerk-cli, is told where that lies, since it lies elsewhere itself.
    if (arguments.size() >= 2 && arguments.front() == zw::cli::kFolderOption) {
        context.executableFolder = arguments[1];
        arguments.erase(arguments.begin(), arguments.begin() + 2);
    } else {
        std::error_code error;
        const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
        context.executableFolder = error ? std::filesystem::current_path() : self.parent_path();
    }
    context.commandLine = arguments;
    if (auto home = zw::cli::takeOption(arguments, "--home"))
        context.home = *home;
    if (auto config = zw::cli::takeOption(arguments, "--config"))
        context.config = *config;
    if (arguments.empty() || arguments.front() == "--help") {
        zw::cli::usage(arguments.empty() ? std::cerr : std::cout);
        return arguments.empty() ? 2 : 0;
    }
    for (const auto& command : zw::cli::commands()) {
        if (arguments.front() == command.name) {
            context.arguments.assign(arguments.begin() + 1, arguments.end());
            return command.run(context);
        }
    }
    std::cerr << "Unbekannter Befehl: " << arguments.front() << "\n";
    zw::cli::usage(std::cerr);
    return 2;
}
