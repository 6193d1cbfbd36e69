#include "ui/mail/anregungen_neu.h"

#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QDesktopServices>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <string>

#include "app/Clock.h"
#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "export/rtf/RtfWriter.h"
#include "mail/RtfToHtml.h"
#include "ui/frame/QtText.h"
#include "ui/frame/RtfBridge.h"
#include "ui/frame/UserLocale.h"
#include "ui/mail/MailControls.h"
#include "ui/mail/hilfesupport.h"
#include "ui/mail/VendorMail.h"
#include "ui/mail/frmLog.h"

namespace zw {

using namespace mailwindows;

anregungen_neu::anregungen_neu(const ProgramPaths& paths, frmLog& log, const Clock& clock, Random& random,
                               QWidget* parent)
    : WizardDialog(parent, "&Senden"), m_paths(paths), m_log(log), m_clock(clock), m_random(random),
      m_smtp(m_poster, [](const net::Transfer& transfer) { QtEventPoster::waitWhileLoopTurns(transfer); })
{
    setObjectName("anregungen_neu");
    setWindowTitle("Support");
    const auto wrapped = &WizardDialog::wrappedLabel;
    auto* welcome = addPage("sevWizardPage1");
    welcome->addWidget(welcomeHeading("Herzlich willkommen zum E-Mail - Support des Zettelwerks!", page(0)));
    welcome->addWidget(wrapped("Label2",
                               "Sie haben hier die Möglichkeit uns eine Nachricht mit Fragen, Anregungen, Kritiken und "
                               "bzgl. des Supports zu senden. Ihre Anfrage geht per E-Mail an uns. Wir werden uns in "
                               "der Regel bemühen, Ihre Nachrichten so schnell wie möglich zu beantworten.",
                               page(0)));
    welcome->addWidget(wrapped("Label3",
                               "Die E-Mail, welche hier versendet wird enthält die üblichen E-Mail-Daten. Uns wird, "
                               "Ihre auf der nächsten Seite eingegebene E-Mail-Adresse übermittelt (diese wird "
                               "benötigt um Ihnen zu antworten), sowie der Nachrichtentext, welchen Sie einsehen und "
                               "bearbeiten können.",
                               page(0)));
    welcome->addWidget(wrapped(
        "Label4", "Klicken Sie nun auf \"Weiter\" um mit der Erstellung der Nachricht zu beginnen.", page(0)));
    welcome->addStretch();

    auto* who = addPage("sevWizardPage2", "Schritt 1 von 3",
                     "Bitte geben Sie hier Ihre E-Mail Adresse ein und wählen Sie den Betreff der E-Mail aus.");
    auto* whoForm = new QFormLayout;
    whoForm->setRowWrapPolicy(QFormLayout::WrapAllRows);
    m_from = field("xpText1", page(1));
    m_subject = new QComboBox(page(1));
    m_subject->setObjectName("txtSubject");
    m_subject->setEditable(true);
    for (const std::string& subject : supportSubjects())
        m_subject->addItem(qt(subject));
    m_subject->setCurrentIndex(-1);
    m_subject->setEditText("Bitte wählen Sie...");
    whoForm->addRow("Ihre E-Mail:", m_from);
    whoForm->addRow("Wählen Sie hier den Betreff der Nachricht:", m_subject);
    who->addLayout(whoForm);
    who->addStretch();

    auto* what = addPage("sevWizardPage3", "Schritt 2 von 3",
                      "Geben Sie hier Ihre Nachricht an uns ein. Bitte belassen Sie den vorgegebenen Text in der "
                      "Nachricht. Somit können wir die Nachricht gezielter bearbeiten.");
    m_message = new QTextEdit(page(2));
    m_message->setObjectName("RichTextBox1");
    m_buffer = new QPlainTextEdit(page(2));
    m_buffer->setObjectName("txtMessage1");
    m_buffer->hide();
    what->addWidget(richTextToolbar(m_message, page(2)));
    what->addWidget(m_message, 1);

    auto* go = addPage("sevWizardPage4", "Schritt 3 von 3",
                    "Klicken Sie nun auf \"Senden\" um die Nachricht an uns zu übermitteln.");
    m_status = new QLabel(page(3));
    m_status->setObjectName("lblStatus");
    m_progress = new QProgressBar(page(3));
    m_progress->setObjectName("ProgressBar1");
    m_progress->setRange(0, 100);
    m_done = wrapped("Label7", "Nachricht wurde übermittelt!", page(3));
    go->addWidget(m_status);
    go->addWidget(m_progress);
    go->addWidget(m_done);
    go->addStretch();

    auto* help = button("Command1", "&Hilfe", this);
    auto* forum = button("Command2", "Online-Forum", this);
    auto* cancel = button("cmdCancel", "&Abbrechen", this);
    connect(help, &QPushButton::clicked, this, [this] { showHilfesupport(this); });
    connect(forum, &QPushButton::clicked, this,
            [this] { QDesktopServices::openUrl(QUrl(qt(vendorAddresses(m_paths).webHome + "forum/"))); });
    connect(cancel, &QPushButton::clicked, this, [this] {
        m_smtp.Abort();
        reject();
    });
    followSession(m_smtp, m_status, m_progress, m_log);

    layOut({help, forum}, cancel);
    resize(640, 480);
    showPage(0);
}

bool anregungen_neu::event(QEvent* event)
{
    // The first activation and each one after a modal window of the program closed add a start text with a fresh
    // code; coming back from another application adds nothing. The start text goes below what was typed, which
    // stays.
    if (event->type() == QEvent::WindowDeactivate)
        m_modalAbove = QApplication::activeWindow() != nullptr;
    if (event->type() == QEvent::WindowActivate && (!m_activated || m_modalAbove)) {
        m_activated = true;
        m_modalAbove = false;
        m_progress->setValue(0);
        m_progress->show();
        const std::string code = helpCode(m_random.next());
        const QString date = userShortDate(today(m_clock));
        QTextCursor end(m_message->document());
        end.movePosition(QTextCursor::End);
        if (!m_message->document()->isEmpty() && !m_message->toPlainText().endsWith('\n'))
            end.insertText("\n");
        end.insertText(qt(supportStartText(date.toStdString(), code)).remove('\r'));
        m_buffer->setPlainText(m_message->toPlainText());
    }
    return QDialog::event(event);
}

void anregungen_neu::pageShown()
{
    if (onLastPage()) {
        m_status->show();
        m_done->hide();
    }
}

void anregungen_neu::finish()
{
    m_buffer->setPlainText(m_message->toPlainText());
    prepareSupportMail(m_smtp, text(m_from), m_subject->currentText().toStdString(),
                       m_buffer->toPlainText().toStdString(),
                       RtfToHtml().Convert(rtf::writeRtf(fromTextDocument(*m_message->document())), true, ""),
                       vendorAddresses(m_paths));
    const KeyHeld heldNext(m_next);
    const KeyHeld heldBack(m_back);
    if (!vendorSend(m_smtp, this))
        return;
    m_status->hide();
    m_progress->hide();
    m_done->show();
    offerTranscript(this, "Übermittlung erfolgreich abgeschlossen.", "Support", m_log);
}

} // namespace zw
