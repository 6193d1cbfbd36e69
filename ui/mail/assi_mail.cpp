#include "ui/mail/assi_mail.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "ui/mail/MailControls.h"

namespace zw {

using namespace mailwindows;

assi_mail::assi_mail(const MailAccount& account, QWidget* parent) : WizardDialog(parent, "&Fertigstellen")
{
    setObjectName("assi_mail");
    setWindowTitle("Assistent");
    const auto wrapped = &WizardDialog::wrappedLabel;
    auto* welcome = addPage("sevWizardPage1");
    welcome->addWidget(welcomeHeading("Herzlich willkommen zur Einrichtung Ihres E-Mail Kontos", page(0)));
    welcome->addWidget(wrapped("Label3", "Dieser Assistent begleitet Sie beim Einrichten des E-Mail Kontos.", page(0)));
    welcome->addWidget(wrapped("Label2",
                               "Bevor Sie über dieses Programm E-Mails versenden können, müssen Sie zuerst Ihr E-Mail "
                               "Konto einrichten. ",
                               page(0)));
    welcome->addStretch();

    auto* sender = addPage("sevWizardPage2", "Einrichten Ihres E-Mail Kontos", "Schritt 1 von 2");
    sender->addWidget(wrapped("Label4",
                              "Geben Sie hier Ihren Namen und ggf. Ihren Firmennamen ein, welcher bei dem Empfänger "
                              "Ihrer E-Mails erscheinen soll.",
                              page(1)));
    auto* senderForm = new QFormLayout;
    m_fields.name = field("assiName", page(1));
    m_fields.company = field("assiFirma", page(1));
    m_fields.address = field("assiEMail", page(1));
    senderForm->addRow("Ihr Name:", m_fields.name);
    senderForm->addRow("Ihr Firmenname (optional):", m_fields.company);
    sender->addLayout(senderForm);
    sender->addWidget(wrapped("Label6",
                              "Geben Sie nun Ihre E-Mail Adresse ein. Bitte beachten Sie, dass alle Antworten vom "
                              "Empfänger Ihrer E-Mails auch an diese E-Mail Adresse gesendet werden. Z. B. für "
                              "Empfangsbestätigungen.",
                              page(1)));
    auto* addressForm = new QFormLayout;
    addressForm->addRow("Ihre E-Mail:", m_fields.address);
    sender->addLayout(addressForm);
    sender->addStretch();

    auto* server = addPage("sevWizardPage3", "Einrichten Ihres E-Mail Kontos", "Schritt 2 von 2 - Postausgang");
    server->addWidget(wrapped(
        "Label8", "Geben Sie nun die Zugangsdaten Ihres SMTP-Servers ( Postausgangsserver ) ein.", page(2)));
    auto* serverForm = new QFormLayout;
    m_fields.server = field("assiSMTP", page(2));
    serverForm->addRow("SMTP-Server:", m_fields.server);
    server->addLayout(serverForm);
    server->addWidget(wrapped("Label9",
                              "Wenn Ihr Server Authentifizierung verlangt, dann markieren Sie bitte das Feld \"Server "
                              "erfordert Authentifizierung\" und geben Sie die entsprechenden Zugangsdaten in die "
                              "Felder ein.",
                              page(2)));
    m_fields.auth = new QCheckBox("Server erfordert Authentifizierung", page(2));
    m_fields.auth->setObjectName("chkAUTH");
    server->addWidget(m_fields.auth);
    auto* loginForm = new QFormLayout;
    m_fields.user = field("assiBenutzername", page(2));
    m_fields.password = field("assiPasswort", page(2));
    m_fields.password->setEchoMode(QLineEdit::Password);
    loginForm->addRow("Benutzername:", m_fields.user);
    loginForm->addRow("Passwort:", m_fields.password);
    server->addLayout(loginForm);
    server->addStretch();

    m_fields.show(account);

    auto* cancel = button("cmdCancel", "&Abbrechen", this);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    layOut({}, cancel);
    setMinimumSize(480, 360);
    showPage(0);
}

MailAccount assi_mail::account() const
{
    return m_fields.read();
}

} // namespace zw
