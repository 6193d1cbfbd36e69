#include "ui/export/ExportCommands.h"

#include <QObject>
#include <memory>

#include "print/Capture.h"
#include "ui/frame/FrameCommands.h"
#include "ui/frame/Quittung.h"

namespace zw {

void installExports(Quittung& window, ReceiptForm& form, Settings& settings, const ProgramPaths& paths)
{
    // The capture lives as long as the window; the commands share it and its picture cache.
    auto capture = std::make_shared<Capture>(paths);
    capture->setLook(receiptLook(window));
    const ExportContext context{window, form, settings, paths, [capture, &form] { return (*capture)(form); }};
    installDocumentExports(context);
    installRtfExport(context);
    installPictureExports(context);
}

} // namespace zw
