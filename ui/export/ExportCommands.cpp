#include "ui/export/ExportCommands.h"

#include <QObject>

#include "ui/frame/Quittung.h"

namespace zw {

void installExports(Quittung& window, ReceiptForm& form, Settings& settings, const ProgramPaths& paths)
{
    // The window's one capture: the exports photograph the receipt as printing does, with its picture cache.
    const ExportContext context{window, form, settings, paths, [&window, &form] { return window.capture()(form); }};
    installDocumentExports(context);
    installRtfExport(context);
    installPictureExports(context);
}

} // namespace zw
