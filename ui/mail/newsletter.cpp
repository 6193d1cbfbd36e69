#include "ui/mail/newsletter.h"

#include <QApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <string>

#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "ui/frame/QtText.h"
#include "ui/mail/MailControls.h"
#include "ui/mail/VendorMail.h"
#include "ui/mail/frmLog.h"

namespace zw {

using namespace mailwindows;

newsletter::newsletter(const ProgramPaths& paths, frmLog& log, QWidget* parent)
    : QDialog(parent), m_paths(paths), m_log(log),
      m_smtp(m_poster, [](const net::Transfer& transfer) { QtEventPoster::waitWhileLoopTurns(transfer); })
{
    setObjectName("newsletter");
    setWindowTitle("Neuigkeiten ... Newsletter");
    auto* explanation = new QLabel("Tragen Sie Ihre E-Mail-Adresse ein und klicken Sie auf \"Senden\": Sie erhalten "
                                   "dann unsere Neuigkeiten zum Zettelwerk per E-Mail.",
                                   this);
    explanation->setObjectName("Label1");
    explanation->setWordWrap(true);
    auto* from = field("txtFrom", this);
    from->setText("ihre.adresse@example.org");
    auto* subject = field("txtSubject", this);
    subject->setReadOnly(true);
    auto* progress = new QProgressBar(this);
    progress->setObjectName("ProgressBar1");
    progress->setRange(0, 100);
    progress->setValue(0);
    progress->hide();
    auto* sendKey = button("cmdSend", "&Senden", this);
    sendKey->setDefault(true);
    auto* back = button("xpButton2", "&Zurück", this);
    m_smtp.OnProgress = [progress](int percent) {
        progress->setValue(percent);
        QApplication::processEvents();
    };
    m_smtp.OnLog = [this](const std::string& piece) { m_log.add(piece); };
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
    connect(sendKey, &QPushButton::clicked, this, [this, from, subject, progress, sendKey] {
        // The send lets window events run; a second click must not start a second send meanwhile.
        const KeyHeld held(sendKey);
        prepareNewsletter(m_smtp, text(from), vendorAddresses(m_paths));
        subject->setText(qt(m_smtp.Subject));
        progress->show();
        if (vendorSend(m_smtp, this))
            offerTranscript(this, "Anmeldung erfolgreich abgeschlossen.", "Newsletter", m_log);
        progress->hide();
    });
    auto* layout = new QFormLayout(this);
    layout->addRow(explanation);
    layout->addRow("Ihre E-Mail:", from);
    layout->addRow("Betreff:", subject);
    layout->addRow(progress);
    auto* keys = new QHBoxLayout;
    keys->addStretch();
    keys->addWidget(sendKey);
    keys->addWidget(back);
    layout->addRow(keys);
    setMinimumWidth(460);
}

} // namespace zw
