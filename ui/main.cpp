#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QScreen>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "print/FormFonts.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/FrmSplash1.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"

namespace zw {

// A part of the main window lives in its own file under ui/ and joins here with one line, in the order of the
// list below. Its routine is declared where it is called, so the part needs no header for this.
#define ZW_JOIN(install)                          \
    do {                                          \
        void install(const PartContext& context); \
        install(context);                         \
    } while (false)

static void joinParts(const PartContext& context)
{
    ZW_JOIN(installLedger);
    ZW_JOIN(installFrameCommands);
    ZW_JOIN(installPrinting);
    ZW_JOIN(installExports);
    ZW_JOIN(installAutocompletion);
    ZW_JOIN(installHelpWindow);
    ZW_JOIN(installListWindows);
    ZW_JOIN(installMail);
    ZW_JOIN(installService);
    ZW_JOIN(installSmallWindows);
    ZW_JOIN(installCashBook);
}

} // namespace zw

int main(int argc, char** argv)
{
    zw::TrappingApplication application(argc, argv);
    QApplication::setApplicationName("Zettelwerk");
    // The program speaks German whatever the desktop's language; the toolkit's dialogs, buttons and calendars too.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QTranslator toolkitTexts;
    if (toolkitTexts.load(QLocale(QLocale::German, QLocale::Germany), "qtbase", "_",
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&toolkitTexts);
    // The form is laid out for Arial and Courier New; their metric twins keep every text at its width.
    zw::installFontSubstitutes();

    const auto paths = zw::ProgramPaths::locate(QApplication::applicationDirPath().toStdString());
    zw::SettingsStore settings(zw::SettingsStore::defaultFolder());
    zw::ReceiptForm form;

    std::optional<zw::RunError> splashFault;
    {
        zw::FrmSplash1 splash(paths);
        splash.show();
        if (auto* screen = QApplication::primaryScreen())
            splash.move(screen->availableGeometry().center() - splash.rect().center());
        splash.laden();
        splashFault = splash.fault();
    }

    zw::Quittung window(form, settings, paths);
    zw::joinParts({window, form, settings, paths});
    window.logic().load();
    window.show();
    // A settings file that could not be read, or a save that failed, is told once over the window.
    settings.setNoticeRoutine([&window](const std::string& message) {
        window.showMessage(message, zw::MessageStyle::Error, "Einstellungen");
    });
    if (splashFault)
        window.faultReporter().report(*splashFault, "FrmSplash1");
    return QApplication::exec();
}
