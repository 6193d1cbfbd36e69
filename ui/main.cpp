#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QScreen>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "print/FormFonts.h"
#include "ui/export/ExportCommands.h"
#include "ui/frame/FrameCommands.h"
#include "ui/frame/FrmSplash1.h"
#include "ui/print/PrintCommands.h"
#include "ui/ledger/LedgerCommands.h"
#include "ui/frame/Quittung.h"
#include "ui/lists/Autocompletion.h"
#include "ui/lists/ListWindow.h"
#include "ui/mail/MailWindows.h"
#include "ui/service/ServiceWindows.h"
#include "ui/service/SmallWindows.h"

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Zettelwerk");
    // The program speaks German whatever the desktop's language; the toolkit's dialogs and buttons too.
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
    zw::installLedger(window, form, settings, paths);
    zw::installFrameCommands(window, form, settings, paths);
    zw::installPrinting(window, form, settings, paths, {});
    zw::installExports(window, form, settings, paths);
    zw::installAutocompletion(window, form, paths);
    zw::installHelpWindow(window, paths);
    zw::installListWindows(window, form, paths);
    zw::installMail(window, form, settings, paths);
    zw::installService(window, settings, paths);
    zw::installSmallWindows(window, form, settings, paths);
    window.logic().load();
    window.show();
    if (splashFault)
        window.faultReporter().report(*splashFault, "FrmSplash1");
    return QApplication::exec();
}
