#include "tools/Commands.h"

#include <array>

namespace zw::cli {

std::span<const CliCommand> commands()
{
    static const std::array kCommands = {
        CliCommand{"info", "info                       Programmordner, Einstellungen und Version", &runInfo},
    };
    return kCommands;
}

} // namespace zw::cli
