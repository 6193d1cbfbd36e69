#include "ui/books/DatevPart.h"

#include "app/SettingsStore.h"
#include "ui/books/DatevWindow.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"

namespace zw {

// "DATEV-Export..." under Datei > Export and under Statistik open the same window.
void installDatevExport(const PartContext& context)
{
    Quittung& window = context.window;
    SettingsStore& settings = context.settings;
    const ProgramPaths& paths = context.paths;
    window.setWindowOpener("datev", [&window, &settings, &paths] {
        DatevWindow dialog(&window, settings, paths, window.fileDialog("datev"), window.clock());
        dialog.exec();
    });
    for (const char* command : {"datev", "datev_statistik"})
        window.setCommand(command, [&window] { window.openWindow("datev"); });
}

} // namespace zw
