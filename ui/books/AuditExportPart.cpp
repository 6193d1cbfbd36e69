#include "ui/books/AuditExportPart.h"

#include <QDir>
#include <QObject>

#include "books/BookDate.h"
#include "ui/books/AuditExportWindow.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"

namespace zw {

// "Daten für die Betriebsprüfung..." in the export menu opens the audit export's window.
void installAuditExport(const PartContext& context)
{
    Quittung& window = context.window;
    const ProgramPaths& paths = context.paths;
    window.setCommand("betriebspruefung", [&window] { window.openWindow("betriebspruefung"); });
    window.setWindowOpener("betriebspruefung", [&window, &paths] {
        // ASCII only: some tools that read the files stumble over other letters in a path.
        const std::filesystem::path folder =
            (QDir::homePath() + QStringLiteral("/Betriebspruefung")).toStdString();
        AuditExportWindow dialog(&window, paths, localDateOf(systemNow()), folder);
        dialog.exec();
    });
}

} // namespace zw
