#include "ui/export/ExportCommands.h"

#include <QObject>

#include "app/SettingsStore.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"

namespace zw {

void installExports(const PartContext& part)
{
    // The window's one capture: the exports photograph the receipt as printing does, with its picture cache.
    const ExportContext context{part.window, part.form, part.settings, part.paths,
                                [&window = part.window, &form = part.form] { return window.capture()(form); }};
    installDocumentExports(context);
    installRtfExport(context);
    installPictureExports(context);
}

} // namespace zw
