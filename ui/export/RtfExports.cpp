#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include "ui/export/ExportCommands.h"
#include "ui/export/rtfexp.h"
#include "ui/frame/Quittung.h"

namespace zw {

void installRtfExport(const ExportContext& context)
{
    context.window.setCommand("alsrtf", [context] {
        const QImage picture = context.capture();
        QClipboard* clipboard = QGuiApplication::clipboard();
        clipboard->clear();
        clipboard->setImage(picture);
        rtfexp window(&context.window);
        window.exec();
    });
}

} // namespace zw
