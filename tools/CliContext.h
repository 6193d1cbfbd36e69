#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace zw::cli {

// What every command gets: its arguments after the command word, the folders, and the two streams.
struct CliContext
{
    std::vector<std::string> arguments;
    std::optional<std::filesystem::path> home;   // --home
    std::optional<std::filesystem::path> config; // --config
    std::ostream& out;
    std::ostream& err;
    std::filesystem::path executableFolder; // zettelwerk-cli's folder: the program folder may lie beside it
    std::vector<std::string> commandLine;   // as given, for the hand-over to the full command line
};

// A command returns the exit code: 0 success, 1 with the program's German message on err, 2 for a usage error.
using CommandFunction = int (*)(CliContext& context);

struct CliCommand
{
    const char* name;
    const char* usage;
    CommandFunction run;
};

// Reads "--name VALUE" out of the arguments; removes both when found.
std::optional<std::string> takeOption(std::vector<std::string>& arguments, const std::string& name);
// Removes a "--flag" without value; true when it was there.
bool takeFlag(std::vector<std::string>& arguments, const std::string& name);

} // namespace zw::cli
