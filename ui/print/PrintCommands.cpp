#include "ui/print/PrintCommands.h"

#include <QObject>
#include <QPushButton>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "print/Capture.h"
#include "print/IssuerData.h"
#include "print/PictureCommands.h"
#include "print/PrintCommand.h"
#include "ui/frame/FrameCommands.h"
#include "ui/print/PictureFileWindow.h"
#include "ui/print/aussteller.h"
#include "ui/print/aussteller_pro.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/print/druckmenue2011.h"

namespace zw {
namespace {

// Lives as a child of the main window: the session's state of printing.
class PrintingPart : public QObject
{
public:
    PrintingPart(Quittung& window, ReceiptForm& form, Settings& settings, const ProgramPaths& paths)
        : QObject(&window), m_window(window), m_form(form), m_settings(settings), m_paths(paths),
          m_print(form, paths, window.capture()),
          m_issuers(form, settings, paths, window), m_pictures(form, paths, window)
    {
        setObjectName("PrintingPart");
        ShortcutBar& bar = window.shortcutBar();
        bar.takeButtonStyle(bar.addKey({ShortcutPanel::ReceiptPrint, 30}, "xpButton3", "&Drucken", [this] { xpButton3(); }));
        bar.addKey({ShortcutPanel::Lists, 40}, "Command6_1", "&Aussteller wechseln",
                   [this] { m_window.openWindow("aussteller_pro"); },
                   ToolbarTwin{"bm_aussteller", "Aussteller wechseln", 23});
        window.setCommand("aussetller", [this] { m_window.openWindow("aussteller"); });
        window.setWindowOpener("aussteller", [this] { openAussteller(); });
        window.setWindowOpener("aussteller_pro", [this] {
            aussteller_pro dialog(m_issuers, m_issuers.openAusstellerPro(), &m_window);
            dialog.exec();
        });
        window.setWindowOpener("logodatei", [this] { openPictureWindow(PictureKind::Logo); });
        window.setWindowOpener("stunter", [this] { openPictureWindow(PictureKind::Signature); });
        window.setCommand("ausstellerein", [this] { m_pictures.switchOn(PictureKind::Logo); });
        window.setCommand("austeller_ent", [this] { m_pictures.switchOff(PictureKind::Logo); });
        window.setCommand("logo", [this] { m_pictures.choose(PictureKind::Logo); });
        window.setCommand("einfst", [this] { m_pictures.switchOn(PictureKind::Signature); });
        window.setCommand("entfst", [this] { m_pictures.switchOff(PictureKind::Signature); });
        window.setCommand("dateiwst", [this] { m_pictures.choose(PictureKind::Signature); });
        // The start switches the pictures on with its failures ignored.
        window.setStartStep(StartStep::SwitchLogoOn, [this] { m_pictures.switchOn(PictureKind::Logo); });
        window.setStartStep(StartStep::SwitchSignatureOn, [this] { m_pictures.switchOn(PictureKind::Signature); });
        form.addListener([this](const FormChange& change) {
            if (change.aspect == FormAspect::Switch && change.name == "opt_stamp")
                m_pictures.showStampChoice();
        });
        m_pictures.showStampChoice();
    }

private:
    void xpButton3()
    {
        // Whoever offers the window a receipt filer files the printed row; without one nothing is filed.
        m_print.run([this](const std::vector<std::string>& row) { m_window.fileReceiptRow(row); });
        druckmenue2011 dialog(m_form, m_settings, m_paths, m_printer, PrintJob(), &m_window);
        dialog.reportFault = [this](const RunError& error) { m_window.faultReporter().report(error, "druckmenue2011"); };
        dialog.exec();
        m_printer = dialog.chosenPrinter();
    }

    void openAussteller()
    {
        IssuerEntry entry;
        try {
            entry = m_issuers.openAussteller();
        } catch (const RunError& error) {
            m_window.faultReporter().report(error, "aussteller");
            return;
        }
        aussteller dialog(m_issuers, entry, &m_window);
        dialog.exec();
    }

    void openPictureWindow(PictureKind kind)
    {
        PictureFileWindow dialog(m_pictures, kind, &m_window);
        dialog.exec();
    }

    Quittung& m_window;
    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    PrintCommand m_print;
    IssuerData m_issuers;
    PictureCommands m_pictures;
    QString m_printer;
};

} // namespace

void installPrinting(const PartContext& context)
{
    new PrintingPart(context.window, context.form, context.settings, context.paths);
}

} // namespace zw
