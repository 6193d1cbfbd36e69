#include "ui/service/ServicePart.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>
#include <filesystem>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "app/VendorAddresses.h"
#include "service/Backup.h"
#include "service/WebUpdate.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/QtText.h"
#include "ui/service/datensicherung.h"
#include "ui/service/webupdate1.h"

namespace zw {

namespace fs = std::filesystem;

void installService(const PartContext& context)
{
    Quittung& window = context.window;
    const SettingsStore& settings = context.settings;
    const ProgramPaths& paths = context.paths;
    window.setCommand("sicherung", [&window, &paths] { window.openWindow("datensicherung"); });
    window.setWindowOpener("datensicherung", [&window, &paths] {
        datensicherung backup(paths, window, &window);
        backup.exec();
    });
    window.setCommand("regspeichern", [&window, &settings, &paths] {
        regspeichern(window.fileDialog("regspeichern"), paths, settings.fileOf("zettelwerk"), window,
                     [](const fs::path& script) {
                         QProcess::startDetached("/bin/sh", {qt(script.string())}, qt(script.parent_path().string()));
                     });
    });
    window.setCommand("updaten", [&window, &paths] {
        updaten(window, vendorAddresses(paths),
                [](const std::string& url) { QDesktopServices::openUrl(QUrl(qt(url))); });
    });
    window.setCommand("webup", [&window] { window.openWindow("webupdate1"); });
    window.setWindowOpener("webupdate1", [&window, &paths] {
        webupdate1 update(paths, window, [&window] { window.unloadAll(); }, &window);
        update.exec();
    });
}

} // namespace zw
