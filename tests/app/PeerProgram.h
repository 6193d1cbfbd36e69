#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>
#include <utility>

namespace zw::test {

// A real program used as an oracle: its exit code and what it wrote to standard output.
struct CommandResult
{
    int exitCode = -1;
    std::string output;
};

inline CommandResult run(const std::string& command)
{
    CommandResult result;
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return result;
    char buffer[4096];
    std::size_t count;
    while ((count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
        result.output.append(buffer, count);
    const int status = pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

// Only the output; `status` gets the exit code when asked for.
inline std::string runPeer(const std::string& command, int* status = nullptr)
{
    CommandResult result = run(command);
    if (status != nullptr)
        *status = result.exitCode;
    return std::move(result.output);
}

inline bool toolAvailable(const std::string& tool)
{
    return run("command -v " + tool + " >/dev/null 2>&1").exitCode == 0;
}

} // namespace zw::test
