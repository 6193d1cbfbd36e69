#include "ui/mail/hilfesupport.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/mail/MailControls.h"

namespace zw {

void showHilfesupport(QWidget* parent)
{
    QDialog text(parent);
    text.setObjectName("hilfesupport");
    text.setWindowTitle("Hilfe zum Abschicken einer Supportnachricht");
    auto* layout = new QVBoxLayout(&text);
    auto* explanation = new QLabel("Geben Sie Ihre E-Mail-Adresse an, damit wir Ihnen antworten können, wählen "
                                   "Sie einen Betreff und schreiben Sie Ihre Nachricht unter den vorgegebenen "
                                   "Text. Mit \"Senden\" geht sie über unseren Mailserver an den Support.",
                                   &text);
    explanation->setObjectName("Label1");
    explanation->setWordWrap(true); // one line would be wider than a 1024 x 768 screen
    explanation->setMinimumWidth(420);
    layout->addWidget(explanation);
    auto* close = mailwindows::button("xpButton1", "&Schließen", &text);
    QObject::connect(close, &QPushButton::clicked, &text, &QDialog::accept);
    layout->addWidget(close, 0, Qt::AlignRight);
    text.exec();
}

} // namespace zw
