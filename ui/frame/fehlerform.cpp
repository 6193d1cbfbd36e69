#include "ui/frame/fehlerform.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

#include "app/Version.h"
#include "core/Settings.h"
#include "export/rtf/RtfReader.h"
#include "service/ErrorReport.h"
#include "ui/frame/Pause.h"
#include "ui/frame/RichTextView.h"
#include "ui/frame/UserLocale.h"

namespace zw {

fehlerform::fehlerform(QWidget* parent, const Clock& clock, std::function<void()> closer)
    : QDialog(parent), beep([] { QApplication::beep(); }), m_clock(clock), m_closeProgram(std::move(closer))
{
    setObjectName("fehlerform");
    setWindowTitle("Fehler");
    setModal(true);
    setAttribute(Qt::WA_DeleteOnClose, false);

    m_number = new QLabel(this);
    m_number->setObjectName("Label1");
    m_description = new QLabel(this);
    m_description->setObjectName("Label2");
    m_form = new QLabel(this);
    m_form->setObjectName("Label3");
    for (QLabel* hidden : {m_number, m_description, m_form})
        hidden->hide();

    auto* image = new QLabel(this);
    image->setObjectName("Image1");
    image->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(48, 48));
    auto* headline = new QLabel("Es ist ein Fehler aufgetaucht...", this);
    headline->setObjectName("Label4");
    QFont bold = headline->font();
    bold.setBold(true);
    bold.setPointSize(bold.pointSize() + 2);
    headline->setFont(bold);
    auto* explanation = new QLabel("Sie können den Fehler ignorieren, indem Sie auf \"Weiter\" klicken. Da wir stets an "
                                   "einer Lösung von entstandenen Fehlern interessiert sind, lassen Sie uns den "
                                   "Fehlerbericht bitte zukommen.",
                                   this);
    explanation->setObjectName("Label5");
    explanation->setWordWrap(true);

    m_report = new QTextEdit(this);
    m_report->setObjectName("RichTextBox1");
    m_report->setReadOnly(true);
    m_report->setMinimumSize(420, 190);

    m_frame = new QGroupBox("Ihre Daten", this);
    m_frame->setObjectName("Frame1");
    auto* frameLayout = new QVBoxLayout(m_frame);
    auto* mailRow = new QHBoxLayout;
    mailRow->addWidget(new QLabel("eMail:", m_frame));
    m_mail = new QLineEdit(m_frame);
    m_mail->setObjectName("sevText1");
    mailRow->addWidget(m_mail, 1);
    frameLayout->addLayout(mailRow);
    auto* answer = new QLabel("Wenn Sie eine Antwort von uns wünsche, dann geben Sie bitte Ihre eMail-Adresse in das "
                              "dafür vorgesehene Feld ein. Eine Kopie der Meldung geht dann auch an Ihr eigenes "
                              "Postfach.",
                              m_frame);
    answer->setObjectName("Label6");
    answer->setWordWrap(true);
    frameLayout->addWidget(answer);
    auto* anonymous = new QLabel("Wenn Sie dieses Feld leer lassen, wird die eMail anonym versendet.", m_frame);
    anonymous->setObjectName("Label7");
    anonymous->setWordWrap(true);
    frameLayout->addWidget(anonymous);
    m_send = new QPushButton("Fehlermeldung jetzt senden", m_frame);
    m_send->setObjectName("Command4");
    m_send->setEnabled(false);
    connect(m_send, &QPushButton::clicked, this, [this] {
        if (!m_mailSender)
            return;
        m_sendShow->setEnabled(false);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        // After a connect the button comes back and the hourglass ends before the closing message; after a failed
        // connect both stay, as they always did.
        QPointer<QPushButton> sendShow(m_sendShow);
        m_mailSender(m_reportSource, m_mail->text().toStdString(), [sendShow] {
            if (sendShow)
                sendShow->setEnabled(true);
            QApplication::restoreOverrideCursor();
        });
    });
    frameLayout->addWidget(m_send, 0, Qt::AlignRight);
    m_frame->hide();

    auto* onward = new QPushButton("&Weiter", this);
    onward->setObjectName("Command1");
    onward->setDefault(true);
    auto* end = new QPushButton("Programm &beenden", this);
    end->setObjectName("Command2");
    m_sendShow = new QPushButton("Fehler an Support senden...", this);
    m_sendShow->setObjectName("Command3");
    connect(onward, &QPushButton::clicked, this, &QDialog::accept);
    connect(end, &QPushButton::clicked, this, [this] { closeProgram(); });
    connect(m_sendShow, &QPushButton::clicked, this, [this] {
        m_frame->show();
        m_sendShow->setEnabled(false);
        // The window grows by the frame and keeps the width it has; its texts wrap to fit.
        const int frameHeight = m_frame->hasHeightForWidth() ? m_frame->heightForWidth(m_report->width())
                                                             : m_frame->sizeHint().height();
        resize(width(), height() + frameHeight + layout()->spacing());
    });

    auto* top = new QHBoxLayout;
    top->addWidget(image, 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->addWidget(headline);
    texts->addWidget(explanation);
    top->addLayout(texts, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_sendShow);
    buttons->addStretch();
    buttons->addWidget(end);
    buttons->addWidget(onward);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_report, 1);
    layout->addWidget(m_frame);
    layout->addLayout(buttons);
    resize(520, 420);
}

void fehlerform::setMailSender(FaultMailSender sender)
{
    m_mailSender = std::move(sender);
    m_send->setEnabled(static_cast<bool>(m_mailSender));
}

void fehlerform::setFault(const std::string& number, const std::string& description, const std::string& formName)
{
    m_number->setText(QString::fromStdString(number));
    m_description->setText(QString::fromStdString(description));
    m_form->setText(QString::fromStdString(formName));
}

void fehlerform::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (m_activated)
        return;
    m_activated = true;
    // After the window is on the screen: the beeps come with the report in view.
    QTimer::singleShot(0, this, [this] { activate(); });
}

void fehlerform::activate()
{
    const std::string now = userDateTime(localTime(m_clock)).toStdString();
    m_reportSource = fillErrorReport(kErrorReportTemplate,
                                     {m_number->text().toStdString(), m_description->text().toStdString(),
                                      m_form->text().toStdString()},
                                     now, std::string(kApplicationName), versionText());
    showRichText(rtf::readRtf(m_reportSource), *m_report->document());
    // The pauses let events run, so the buttons answer during the beeps.
    QPointer<fehlerform> self(this);
    beep();
    pause(pauseSeconds);
    if (!self)
        return;
    beep();
    pause(pauseSeconds);
    if (!self)
        return;
    beep();
}

void fehlerform::closeProgram()
{
    if (m_closing)
        return;
    m_closing = true;
    accept();
    if (m_closeProgram)
        m_closeProgram();
}

} // namespace zw
