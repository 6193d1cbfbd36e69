#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <unistd.h>

#include "tools/CliContext.h"
#include "tools/Commands.h"

namespace zw::cli {

int runInFullCommandLine(CliContext& context)
{
    // Beside zettelwerk-cli in the build tree, in the package's libexec folder when installed.
    std::filesystem::path full = context.executableFolder / ZW_FULL_COMMAND_LINE;
    if (!std::filesystem::exists(full))
        full = (context.executableFolder / ZW_FULL_COMMAND_LINE_FROM_BIN / ZW_FULL_COMMAND_LINE).lexically_normal();
    std::vector<std::string> arguments{full.string(), kFolderOption, context.executableFolder.string()};
    arguments.insert(arguments.end(), context.commandLine.begin(), context.commandLine.end());
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    context.out.flush();
    ::execv(argv[0], argv.data());
    context.err << "Fehler 53: " << full.string() << ": " << std::strerror(errno) << "\n";
    return 1;
}

// The commands that need the toolkit, the network or archives: each is the full command line's.
int runBackup(CliContext& context) { return runInFullCommandLine(context); }
int runExport(CliContext& context) { return runInFullCommandLine(context); }
int runLedgerChart(CliContext& context) { return runInFullCommandLine(context); }
int runLedgerClose(CliContext& context) { return runInFullCommandLine(context); }
int runLedgerFile(CliContext& context) { return runInFullCommandLine(context); }
int runLedgerReport(CliContext& context) { return runInFullCommandLine(context); }
int runMail(CliContext& context) { return runInFullCommandLine(context); }
int runRestore(CliContext& context) { return runInFullCommandLine(context); }
int runUpdate(CliContext& context) { return runInFullCommandLine(context); }

} // namespace zw::cli
