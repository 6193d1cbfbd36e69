#include "ui/service/SmallWindowsPart.h"

#include <QApplication>
#include <QTimer>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "service/Tips.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/service/autostart1.h"
#include "ui/service/feldbezeichnung.h"
#include "ui/service/frmTipp.h"
#include "ui/service/whatsnew.h"

namespace zw {

void installSmallWindows(const PartContext& context)
{
    Quittung& window = context.window;
    ReceiptForm& form = context.form;
    Settings& settings = context.settings;
    const ProgramPaths& paths = context.paths;
    window.setWindowOpener("feldbezeichnung", [&window, &form, &settings] {
        feldbezeichnung editor(settings, form, &window);
        editor.exec();
    });
    window.shortcutBar().addKey({ShortcutPanel::Lists, 50}, "Command6_2", "Feldbezeichnungen ändern",
                                [&window] { window.openWindow("feldbezeichnung"); },
                                ToolbarTwin{"bm_feldbez", "Feldbezeichnungen ändern", 22});
    window.setWindowOpener("frmTipp", [&window, &settings, &paths] {
        frmTipp tip(paths, settings, window, window.random(), &window);
        tip.exec();
    });
    // The tip comes up in front of the main window, once that is shown.
    window.setStartStep(StartStep::ShowTipWindow,
                        [&window] { QTimer::singleShot(0, &window, [&window] { window.openWindow("frmTipp"); }); });
    window.setCommand("tipppp", [&window, &settings] {
        if (!tipsAtStartup(settings))
            window.showMessage(tipsOffNotice(), MessageStyle::Information, "Tipp des Tages");
        else
            window.openWindow("frmTipp");
    });
    window.setWindowOpener("whatsnew", [&window, &paths] {
        whatsnew news(&window);
        try {
            news.load(paths);
        } catch (const RunError& error) {
            window.faultReporter().report(error, "whatsnew");
        }
        news.exec();
    });
    window.setCommand("whatistnew", [&window] { window.openWindow("whatsnew"); });
    window.setWindowOpener("autostart1", [&window] {
        autostart1 autostart(QApplication::applicationFilePath().toStdString(), window, &window);
        autostart.exec();
    });
    window.setCommand("autosta", [&window] { window.openWindow("autostart1"); });
}

} // namespace zw
