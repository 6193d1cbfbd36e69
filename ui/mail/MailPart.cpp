#include "ui/mail/MailPart.h"

#include <filesystem>
#include <functional>
#include <string>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/mail/MailControls.h"
#include "ui/mail/VendorMail.h"
#include "ui/mail/anregungen_neu.h"
#include "ui/mail/beleg_mail.h"
#include "ui/mail/frmLog.h"
#include "ui/mail/newsletter.h"

namespace zw {

void installMail(const PartContext& context)
{
    Quittung& window = context.window;
    ReceiptForm& form = context.form;
    Settings& settings = context.settings;
    const ProgramPaths& paths = context.paths;
    auto* log = new frmLog(&window); // one transcript for the whole run
    // The error window's send key may be pressed again while its send lets events run: one report at a time.
    auto reportSending = std::make_shared<bool>(false);
    window.setFaultMailSender([&paths, log, reportSending](const std::string& report, const std::string& replyAddress,
                                                           const std::function<void()>& sessionEnded) {
        if (*reportSending)
            return false;
        *reportSending = true;
        const bool sent = sendErrorReport(report, replyAddress, paths, *log, sessionEnded);
        *reportSending = false;
        return sent;
    });
    window.setCommand("anr", [&window] { window.openWindow("anregungen_neu"); });
    window.setCommand("newsletter_bestellen", [&window] { window.openWindow("newsletter"); });
    window.setWindowOpener("anregungen_neu", [&window, &paths, log] {
        anregungen_neu wizard(paths, *log, window.clock(), window.random(), &window);
        wizard.exec();
    });
    window.setWindowOpener("newsletter", [&window, &paths, log] {
        newsletter signUp(paths, *log, &window);
        signUp.exec();
    });
    const auto sendReceipt = [&window, &form, &settings, &paths, log] {
        std::filesystem::path picture;
        try {
            picture = receiptPicturePath(paths, form.text(FormElement::Text1));
            saveBitmapFile(surfaceFromImage(window.capture()(form)), picture);
        } catch (const RunError& error) {
            window.faultReporter().report(error, "Quittung");
            return;
        }
        beleg_mail mail(settings, paths, window, *log, window.clock(), picture, &window);
        if (mail.loaded())
            mail.exec();
    };
    window.shortcutBar().addKey({ShortcutPanel::Lists, 60}, "cmdMail", "Beleg per E-Mail senden", sendReceipt,
                                ToolbarTwin{"bm_email", "Beleg per E-Mail senden", 25});
}

} // namespace zw
