#include <chrono>
#include <iostream>
#include <ostream>

#include "app/MailPassword.h"
#include "app/VendorAddresses.h"
#include "core/RunError.h"
#include "desktop/KeyringPasswordStore.h"
#include "export/DibFile.h"
#include "mail/MailDraft.h"
#include "mail/sevSMTP.h"
#include "net/Transfer.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Interrupt.h"
#include "tools/OpenedReceipt.h"

namespace zw::cli {

// `mail RECEIPT.ZW5 --to ADDRESS [--cc ADDRESS] [--subject TEXT] [--message TEXT] [--zip] [--verbose]`: the
// receipt opened and photographed as the mail window takes it, sent with the settings store's account as the
// window sends it; the message text goes as the plain part and as its HTML.
int runMail(CliContext& context)
{
    auto& arguments = context.arguments;
    MailDraft draft;
    const auto to = takeOption(arguments, "--to");
    draft.cc = takeOption(arguments, "--cc").value_or("");
    draft.subject = takeOption(arguments, "--subject").value_or("");
    draft.plainText = takeOption(arguments, "--message").value_or("");
    draft.zip = takeFlag(arguments, "--zip");
    const bool verbose = takeFlag(arguments, "--verbose");
    if (!to || arguments.size() != 1) {
        context.err << "Aufruf: zettelwerk-cli mail QUITTUNG.ZW5 --to ADRESSE [--cc ADRESSE] [--subject TEXT] "
                       "[--message TEXT] [--zip] [--verbose]\n";
        return 2;
    }
    draft.to = *to;
    draft.html = plainTextHtml(draft.plainText);
    try {
        OpenedReceipt opened(context, arguments[0]);
        // A password the window moved into the desktop's keyring is read from there.
        KeyringPasswordStore keyring;
        MailPassword password(&keyring);
        InstalledMailPassword installed(password);
        const auto picture = receiptPicturePath(opened.paths, opened.form.text(FormElement::Text1));
        saveBitmapFile(opened.picture(), picture);
        draft.attachments.push_back(picture);

        net::QueuePoster queue;
        InterruptWatch interrupt;
        sevSMTP* session = nullptr;
        sevSMTP smtp(queue, [&](const net::Transfer& transfer) {
            while (!transfer.isFinished()) {
                if (interrupt.requested())
                    session->Abort();
                queue.pump(std::chrono::milliseconds(50));
            }
        });
        session = &smtp;
        if (verbose)
            smtp.OnLog = [&context](const std::string& text) { context.err << text; };
        prepareSession(smtp, loadMailAccount(opened.settings), draft, mailerTag(vendorAddresses(opened.paths)));
        const std::string failure = interrupt.requested() ? "Die Übertragung wurde abgebrochen." : connectAndSend(smtp);
        if (failure.empty())
            return 0;
        for (char c : failure) {
            if (c != '\r')
                context.err << c;
        }
        context.err << "\n";
        return interrupt.requested() ? InterruptWatch::kExitStatus : 1;
    } catch (const RunError& error) {
        context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
}

} // namespace zw::cli
