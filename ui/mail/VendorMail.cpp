#include "ui/mail/VendorMail.h"

#include <QApplication>
#include <functional>
#include <string>

#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "mail/RtfToHtml.h"
#include "mail/sevSMTP.h"
#include "ui/frame/MessageDialog.h"
#include "ui/mail/MailControls.h"
#include "ui/mail/frmLog.h"
#include "ui/net/QtEventPoster.h"

namespace zw {

using namespace mailwindows;

void offerTranscript(QWidget* over, const std::string& firstLine, const char* title, frmLog& log)
{
    if (MessageDialog::messageBox(over,
                                  firstLine + "\r\rWenn Sie das Übertragungsprotokoll sehen wollen,\rdann klicken Sie "
                                              "auf \"Ja\".",
                                  kYesNoInformation, title) == kAnswerYes)
        log.exec();
}

bool vendorSend(sevSMTP& smtp, QWidget* over)
{
    if (!smtp.Connect()) {
        MessageDialog::messageBox(over, "Fehler beim Verbinden mit dem Mailserver\r\n" + smtp.LastError(),
                                  kInformationBox, "Zettelwerk");
        return false;
    }
    if (smtp.Send() < 1)
        MessageDialog::messageBox(over, "Fehler beim Versenden der Nachricht\r\n" + smtp.LastError(),
                                  kInformationBox, "Zettelwerk");
    smtp.Disconnect();
    return true;
}

bool sendErrorReport(const std::string& report, const std::string& replyAddress, const ProgramPaths& paths,
                     frmLog& log, const std::function<void()>& sessionEnded)
{
    QWidget* over = QApplication::activeModalWidget();
    QtEventPoster poster;
    sevSMTP smtp(poster, [](const net::Transfer& transfer) { QtEventPoster::waitWhileLoopTurns(transfer); });
    smtp.OnLog = [&log](const std::string& piece) { log.add(piece); };
    prepareErrorReport(smtp, RtfToHtml().Convert(report, true, ""), replyAddress, vendorAddresses(paths));
    if (!vendorSend(smtp, over))
        return false;
    sessionEnded();
    // Shown after a failed send too, as it always was.
    offerTranscript(over, "Übermittlung erfolgreich abgeschlossen.", "Support", log);
    return true;
}

} // namespace zw
