#include <QApplication>
#include <QByteArray>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QScreen>
#include <QStringList>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

#include "app/HandOver.h"
#include "app/MailPassword.h"
#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "ledger/ReceiptFile.h"
#include "print/FormFonts.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/FrmSplash1.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"
#include "ui/Parts.h"
#include "desktop/KeyringPasswordStore.h"
#include "ui/desktop/SingleInstance.h"

namespace zw {

// The parts of the main window, joined in this order before its load. The order shows where parts share a place:
// tabs beside the receipt come in it (the ledger's "Belegliste" first), and a window opener or start step named
// twice goes to the later part. A new part is one line here, its routine declared in its header, which ui/Parts.h includes.
constexpr void (*kParts[])(const PartContext&) = {
    installLedger,
    installFrameCommands,
    installPrinting,
    installExports,
    installAutocompletion,
    installHelpWindow,
    installListWindows,
    installMail,
    installService,
    installSmallWindows,
    installCashBook,
    installYearChart,
    installDatevExport,
    installAuditExport,
};

static void joinParts(const PartContext& context)
{
    for (auto install : kParts)
        install(context);
}

} // namespace zw

int main(int argc, char** argv)
{
    zw::TrappingApplication application(argc, argv);
    QApplication::setApplicationName("Zettelwerk");
    QApplication::setDesktopFileName("example.zettelwerk.Zettelwerk");
    // The program speaks German whatever the desktop's language; the toolkit's dialogs, buttons and calendars too.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QTranslator toolkitTexts;
    if (toolkitTexts.load(QLocale(QLocale::German, QLocale::Germany), "qtbase", "_",
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&toolkitTexts);
    // The form is laid out for Arial and Courier New; their metric twins keep every text at its width.
    zw::installFontSubstitutes();

    const auto paths = zw::ProgramPaths::locate(QApplication::applicationDirPath().toStdString());

    // A receipt file on the command line goes to the program already running, if there is one, and this start ends.
    std::vector<std::string> arguments;
    for (const QString& argument : QApplication::arguments().mid(1))
        arguments.push_back(argument.toStdString());
    const auto givenFile = zw::receiptFileArgument(arguments, std::filesystem::current_path());
    const QString handOverName = QString::fromStdString(
        zw::handOverServerName(paths.home(), qgetenv("XDG_RUNTIME_DIR").toStdString(), ::getuid()));
    if (!givenFile.empty() && zw::handOver(handOverName, givenFile))
        return 0;

    zw::SettingsStore settings(zw::SettingsStore::defaultFolder());
    zw::ReceiptForm form;
    // The mail password goes to the desktop's keyring where one answers.
    zw::KeyringPasswordStore keyring;
    zw::MailPassword mailPassword(&keyring);
    zw::InstalledMailPassword installedMailPassword(mailPassword);

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

    zw::ReceiptFileCommands receiptFiles(form, settings, window);
    const auto openGivenFile = [&](const std::filesystem::path& file) {
        zw::openReceiptFromOutside(
            file, [&](const std::filesystem::path& zw5) { receiptFiles.open(zw5); },
            [&](const std::filesystem::path& zwi) { receiptFiles.openOld(zwi); }, window.faultReporter());
    };
    zw::HandOverServer handOverServer(handOverName, [&](const std::filesystem::path& file) {
        // Out of the tray or the task bar, to the front, then the file.
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.show();
        window.raise();
        window.activateWindow();
        openGivenFile(file);
    });
    handOverServer.claim();
    if (!givenFile.empty())
        openGivenFile(givenFile);
    return QApplication::exec();
}
