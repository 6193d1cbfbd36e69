#include <ostream>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "app/Version.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {

int runInfo(CliContext& context)
{
    auto paths = programPaths(context);
    context.out << "Zettelwerk V" << versionText() << "\n";
    context.out << "Programmordner: " << paths.home().string() << "\n";
    context.out << "Einstellungen: " << settingsFolder(context).string() << "\n";
    return 0;
}

} // namespace zw::cli
