#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace zw::test {

// Runs a command of a peer program and returns what it printed; `status` gets its exit status.
inline std::string runPeer(const std::string& command, int* status = nullptr)
{
    std::string output;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr)
        return output;
    std::array<char, 4096> buffer{};
    std::size_t read = 0;
    while ((read = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        output.append(buffer.data(), read);
    const int result = ::pclose(pipe);
    if (status != nullptr)
        *status = result;
    return output;
}

} // namespace zw::test
