#include "ui/mail/beleg_mail.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDate>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <filesystem>
#include <string>

#include "app/CommonDialog.h"
#include "app/MailPassword.h"
#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "core/FormHost.h"
#include "core/RunError.h"
#include "export/rtf/RtfWriter.h"
#include "mail/AddressBook.h"
#include "mail/RtfToHtml.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/FileDialogs.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/frame/UserLocale.h"
#include "ui/frame/RtfBridge.h"
#include "ui/mail/MailControls.h"
#include "ui/mail/adressbuch1.h"
#include "ui/mail/assi_mail.h"
#include "ui/mail/frmLog.h"

namespace zw {

using namespace mailwindows;

beleg_mail::beleg_mail(Settings& settings, const ProgramPaths& paths, FormHost& host, frmLog& log, const Clock& clock,
                       const std::filesystem::path& picture, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_paths(paths), m_host(host), m_log(log), m_clock(clock), m_book(addressBookKind()),
      m_smtp(m_poster, [](const net::Transfer& transfer) { QtEventPoster::waitWhileLoopTurns(transfer); })
{
    setObjectName("beleg_mail");
    setWindowTitle("Beleg per E-Mail senden");
    auto* bars = new QToolBox(this);
    bars->setObjectName("ShortcutBar1");
    bars->addItem(buildMenuBar(), style()->standardIcon(QStyle::SP_DialogApplyButton), "E-Mail");
    bars->addItem(buildAddressBar(), style()->standardIcon(QStyle::SP_DirHomeIcon), "Adressbuch");
    bars->addItem(buildAccountBar(), style()->standardIcon(QStyle::SP_ComputerIcon), "Einstellungen");
    bars->setMinimumWidth(270);
    bars->setMaximumWidth(320);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(bars);
    layout->addWidget(buildEditor(), 1);
    resize(920, 600);

    m_attachments->addItem(QString::fromStdString(picture.string()));
    m_attachments->setCurrentRow(m_attachments->count() - 1);

    followSession(m_smtp, m_status, m_progress, m_log);

    // The address book belongs to the delivered data; without it the window does not open.
    const bool loaded = faulttrap::trapped([&] {
        m_book.load(paths.dataFile("adressbuch.dat"));
        return true;
    })();
    if (!loaded)
        return;
    saveBook(); // fills the grid
    m_grid->setCurrentCell(0, 0);
    m_to->clear();
    setSending(false);
    setAccount(loadMailAccount(settings));
    m_assistantPending = m_account.server->text().isEmpty();
    m_priority->setCurrentIndex(1);
    m_loaded = true;
}

QWidget* beleg_mail::buildMenuBar()
{
    auto* bar = new QGroupBox("Menü");
    bar->setObjectName("OutlookContainer1");
    auto* layout = new QVBoxLayout(bar);
    m_send = button("cmdSend", "E-Mail jetzt &senden", bar);
    m_cancel = button("cmdCancel", "&Abbrechen", bar);
    auto* protocol = button("Command3", "&Sendeprotokoll", bar);
    auto* close = button("Command4", "Fenster sch&ließen", bar);
    m_readReceipt = new QCheckBox("Lesebestätigung", bar);
    m_readReceipt->setObjectName("Check1");
    m_zip = new QCheckBox("Anhang in ZIP-Archiv", bar);
    m_zip->setObjectName("chkZIP");
    m_priority = new QComboBox(bar);
    m_priority->setObjectName("txtPrio");
    m_priority->addItems({"Hoch", "Normal", "Niedrig"});
    m_status = new QLabel(bar);
    m_status->setObjectName("lblStatus");
    m_status->setWordWrap(true);
    m_progress = new QProgressBar(bar);
    m_progress->setObjectName("ProgressBar1");
    m_progress->setRange(0, 100);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_send, m_cancel, protocol, close, m_readReceipt, m_zip})
        layout->addWidget(widget);
    auto* priority = new QLabel("Priorität:", bar);
    priority->setBuddy(m_priority);
    layout->addWidget(priority);
    layout->addWidget(m_priority);
    layout->addWidget(m_status);
    layout->addWidget(m_progress);
    layout->addStretch();
    connect(m_send, &QPushButton::clicked, this, &beleg_mail::send);
    connect(m_cancel, &QPushButton::clicked, this, [this] {
        if (MessageDialog::messageBox(this, "Sendevorgang wiklich abbrechen?", kYesNoQuestion, "Abbrechen") ==
            kAnswerYes)
            m_smtp.Abort();
    });
    connect(protocol, &QPushButton::clicked, this, [this] { m_log.exec(); });
    connect(close, &QPushButton::clicked, this, [this] { this->close(); });
    return bar;
}

QWidget* beleg_mail::buildAddressBar()
{
    auto* bar = new QGroupBox("Kontakte");
    bar->setObjectName("OutlookContainer2");
    auto* layout = new QVBoxLayout(bar);
    m_grid = new QTableWidget(0, 4, bar);
    m_grid->setObjectName("Grid1");
    m_grid->setHorizontalHeaderLabels({"E-Mail Adresse", "Vorname", "Nachname", "Anrede"});
    for (int column = 1; column < 4; ++column)
        m_grid->setColumnHidden(column, true);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(m_grid, &QTableWidget::cellActivated, this, [this](int row, int) {
        m_to->setText(qt(m_book.cell(row, "email_list")));
    });
    layout->addWidget(m_grid, 1);
    const char* captions[] = {"Kontakt &hinzufügen", "Kontakt &bearbeiten", "Kontakt &löschen"};
    for (int i = 0; i < 3; ++i) {
        auto* key = button("Command5", captions[i], bar);
        key->setProperty("Index", i);
        layout->addWidget(key);
        connect(key, &QPushButton::clicked, this, faulttrap::trapped([this, i] {
            if (i == 2)
                deleteContact();
            else
                contact(i == 1);
        }));
    }
    return bar;
}

QWidget* beleg_mail::buildAccountBar()
{
    auto* bar = new QGroupBox("E-Mail Account");
    bar->setObjectName("OutlookContainer3");
    auto* layout = new QFormLayout(bar);
    layout->setRowWrapPolicy(QFormLayout::WrapAllRows);
    m_account.name = field("txtName", bar);
    m_account.company = field("txtFirma", bar);
    m_account.address = field("txtEmail", bar);
    m_account.server = field("txtSMTP", bar);
    m_account.auth = new QCheckBox("SMTP-Authentifizierung", bar);
    m_account.auth->setObjectName("chkSMTPAUTH");
    m_account.user = field("txtBenutzername", bar);
    m_account.password = field("txtPasswort", bar);
    m_account.password->setEchoMode(QLineEdit::Password);
    layout->addRow("Ihr Name:", m_account.name);
    layout->addRow("Ihr Firmenname (optional)", m_account.company);
    layout->addRow("Ihre E-Mail-Adresse:", m_account.address);
    layout->addRow("SMTP-Server", m_account.server);
    layout->addRow(m_account.auth);
    m_userLabel = new QLabel("Benutzername", bar);
    m_userLabel->setObjectName("Label9");
    m_passwordLabel = new QLabel("Passwort", bar);
    m_passwordLabel->setObjectName("Label10");
    layout->addRow(m_userLabel, m_account.user);
    layout->addRow(m_passwordLabel, m_account.password);
    auto* save = button("Command1", "&Daten speichern", bar);
    auto* assistant = button("Command2", "&Assistent zum Einrichten", bar);
    layout->addRow(save);
    layout->addRow(assistant);
    connect(m_account.auth, &QCheckBox::toggled, this, [this](bool on) {
        for (QWidget* widget : std::initializer_list<QWidget*>{m_account.user, m_account.password, m_userLabel, m_passwordLabel})
            widget->setEnabled(on);
    });
    connect(save, &QPushButton::clicked, this, [this] { saveMailAccount(m_settings, account()); });
    connect(assistant, &QPushButton::clicked, this, &beleg_mail::runAssistant);
    return bar;
}

QWidget* beleg_mail::buildEditor()
{
    auto* editor = new QWidget(this);
    auto* layout = new QVBoxLayout(editor);
    auto* head = new QFormLayout;
    m_to = field("txtEmailAN", editor);
    m_cc = field("txtEmailCC", editor);
    m_subject = field("txtBetreff", editor);
    head->addRow("E-Mail an", m_to);
    head->addRow("Kopie dieser E-Mail an (CC)", m_cc);
    head->addRow("Betreff", m_subject);
    layout->addLayout(head);

    m_message = new QTextEdit(editor);
    m_message->setObjectName("RichTextBox1");
    m_message->setAcceptRichText(true);
    auto* toolbar = richTextToolbar(m_message, editor);
    toolbar->addSeparator();
    auto* insert = new QMenu("Einfügen", toolbar);
    const auto insertText = [this](const QString& text) {
        m_message->textCursor().insertText(text);
        m_message->setFocus();
    };
    QAction* shortDate = insert->addAction("Aktuelles Datum &kurz");
    shortDate->setObjectName("datumkurz");
    connect(shortDate, &QAction::triggered, this,
            [this, insertText] { insertText(today(m_clock).toString("dd.MM.yyyy")); });
    QAction* longDate = insert->addAction("Aktuelles Datum &lang");
    longDate->setObjectName("datumlang");
    connect(longDate, &QAction::triggered, this, [this, insertText] {
        insertText(userLongDate(today(m_clock)));
    });
    QAction* greeting = insert->addAction("&Anrede");
    greeting->setObjectName("anrede");
    connect(greeting, &QAction::triggered, this, [this, insertText] {
        QString words = qt(greetingFor(m_book, m_grid->currentRow()));
        insertText(words.remove('\r'));
    });
    auto* insertKey = new QToolButton(toolbar);
    insertKey->setText("Einfügen");
    insertKey->setMenu(insert);
    insertKey->setPopupMode(QToolButton::InstantPopup);
    toolbar->addWidget(insertKey);

    auto* messageLabel = new QLabel("Nachricht", editor);
    messageLabel->setBuddy(m_message);
    layout->addWidget(messageLabel);
    layout->addWidget(toolbar);
    layout->addWidget(m_message, 1);

    layout->addWidget(new QLabel("Anhang (1. immer der in der Maske aktuell bearbeitete Beleg)", editor));
    m_attachments = new QListWidget(editor);
    m_attachments->setObjectName("lstAttachments");
    m_attachments->setMaximumHeight(80);
    layout->addWidget(m_attachments);
    auto* more = button("cmdAttachmentAdd", "&Weiterer Anhang", editor);
    connect(more, &QPushButton::clicked, this, [this] {
        CommonDialog dialog;
        dialog.setPresenter(fileDialogPresenter(this));
        dialog.DialogTitle = "Anlage hinzufügen";
        dialog.Filter = "alle Dateien (*.*)|*.*";
        dialog.CancelError = true;
        try {
            dialog.ShowOpen();
        } catch (const RunError&) {
            return;
        }
        m_attachments->addItem(qt(dialog.FileName));
        m_attachments->setCurrentRow(m_attachments->count() - 1);
    });
    auto* moreLine = new QHBoxLayout;
    moreLine->addStretch();
    moreLine->addWidget(more);
    layout->addLayout(moreLine);
    return editor;
}

void beleg_mail::setAccount(const MailAccount& account)
{
    m_account.show(account);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_account.user, m_account.password, m_userLabel, m_passwordLabel})
        widget->setEnabled(m_account.auth->isChecked());
}

MailAccount beleg_mail::account() const
{
    return m_account.read();
}

void beleg_mail::saveBook()
{
    // A failed save is a message (without the hourglass); the grid still shows what the book holds.
    if (m_loaded) {
        faulttrap::trapped([this] {
            QApplication::setOverrideCursor(Qt::WaitCursor);
            const auto restore = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
            m_book.save(m_paths.dataFile("adressbuch.dat"));
        })();
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_grid->setRowCount(m_book.rowCount());
    for (int row = 0; row < m_book.rowCount(); ++row) {
        for (int column = 0; column < 4; ++column)
            m_grid->setItem(row, column, new QTableWidgetItem(qt(m_book.rows()[static_cast<std::size_t>(row)]
                                                                           [static_cast<std::size_t>(column)])));
    }
    QApplication::restoreOverrideCursor();
}

void beleg_mail::contact(bool edit)
{
    const int row = m_grid->currentRow();
    if (edit && row < 0)
        throw RunError::subscriptOutOfRange(); // no current contact to edit
    adressbuch1 dialog(edit ? adressbuch1::Purpose::Edit : adressbuch1::Purpose::Add,
                       edit ? m_book.rows()[static_cast<std::size_t>(row)] : std::vector<std::string>(), this);
    if (dialog.exec() == QDialog::Accepted) {
        const auto values = dialog.fields();
        const int target = edit ? row : 0;
        if (!edit)
            m_book.insertRow(0);
        for (int column = 0; column < 4; ++column)
            m_book.setCell(target, column, values[static_cast<std::size_t>(column)]);
    }
    saveBook(); // after every dialog, a cancelled one too
    m_grid->setCurrentCell(edit ? row : 0, 0);
}

void beleg_mail::deleteContact()
{
    const int row = m_grid->currentRow();
    if (row < 0)
        throw RunError::subscriptOutOfRange();
    if (MessageDialog::messageBox(this, deleteContactQuestion(m_book, row), kYesNoQuestion, "Eintrag löschen") !=
        kAnswerYes)
        return;
    m_book.removeRows({row});
    saveBook();
}

void beleg_mail::runAssistant()
{
    assi_mail assistant(account(), this);
    if (assistant.exec() != QDialog::Accepted)
        return;
    saveMailAccount(m_settings, assistant.account());
    // Without a keyring the password stays in the settings file as before, and the assistant says so once.
    if (const std::string notice = mailPassword().takePlainTextNotice(); !notice.empty())
        MessageDialog::messageBox(this, notice, kInformationBox, "Zettelwerk");
    setAccount(assistant.account());
}

void beleg_mail::setSending(bool sending)
{
    m_send->setEnabled(!sending);
    m_status->setVisible(sending);
    m_progress->setVisible(sending);
    m_cancel->setEnabled(sending);
}

void beleg_mail::send()
{
    if (m_smtp.Busy())
        return;
    MailDraft draft;
    draft.plainText = m_message->toPlainText().toStdString();
    draft.html = RtfToHtml().Convert(rtf::writeRtf(fromTextDocument(*m_message->document())), true, "");
    setSending(true);
    draft.to = text(m_to);
    draft.cc = text(m_cc);
    draft.subject = text(m_subject);
    draft.priorityRow = m_priority->currentIndex();
    draft.readReceipt = m_readReceipt->isChecked();
    draft.zip = m_zip->isChecked();
    for (int row = 0; row < m_attachments->count(); ++row)
        draft.attachments.emplace_back(m_attachments->item(row)->text().toStdString());
    prepareSession(m_smtp, account(), draft, mailerTag(vendorAddresses(m_paths)));
    const std::string failure = connectAndSend(m_smtp);
    if (!failure.empty())
        MessageDialog::messageBox(this, failure, kInformationBox, "Zettelwerk");
    setSending(false);
}

void beleg_mail::closeEvent(QCloseEvent* event)
{
    m_smtp.Abort();
    QDialog::closeEvent(event);
}

void beleg_mail::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!m_assistantPending)
        return;
    m_assistantPending = false;
    // The window shows first, then the assistant above it.
    QTimer::singleShot(0, this, &beleg_mail::runAssistant);
}

} // namespace zw
