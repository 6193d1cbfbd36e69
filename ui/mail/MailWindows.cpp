#include "ui/mail/MailWindows.h"

#include <QApplication>
#include <QScopeGuard>
#include <QCheckBox>
#include <QCloseEvent>
#include <QColorDialog>
#include <QComboBox>
#include <QDate>
#include <QDesktopServices>
#include <QEvent>
#include <QFontDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTextEdit>
#include <QTextBlock>
#include <QTextList>
#include <QTimer>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <optional>
#include <random>

#include "app/MailPassword.h"
#include "app/SettingsStore.h"
#include "app/CommonDialog.h"
#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "core/FormHost.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "export/rtf/RtfWriter.h"
#include "mail/AddressBook.h"
#include "mail/RtfToHtml.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/FileDialogs.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/RtfBridge.h"
#include "ui/frame/UserLocale.h"
#include "ui/frame/fehlerform.h"

namespace zw {
namespace {

QPushButton* button(const char* name, const char* caption, QWidget* parent)
{
    auto* key = new QPushButton(caption, parent);
    key->setObjectName(name);
    key->setAutoDefault(false);
    return key;
}

QLineEdit* field(const char* name, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

std::string text(const QLineEdit* edit) { return edit->text().toStdString(); }

// The platform's message box styles this window asks with: 36 a question with yes and no, 64 information with OK,
// 68 information with yes and no.
constexpr int kYesNoQuestion = 36;
constexpr int kInformationBox = 64;
constexpr int kYesNoInformation = 68;

// A key disabled while its routine lets window events run, and given back its state afterwards.
class KeyHeld
{
public:
    explicit KeyHeld(QPushButton* key) : m_key(key), m_wasEnabled(key->isEnabled()) { key->setEnabled(false); }
    ~KeyHeld()
    {
        if (m_key)
            m_key->setEnabled(m_wasEnabled);
    }
    KeyHeld(const KeyHeld&) = delete;
    KeyHeld& operator=(const KeyHeld&) = delete;

private:
    QPointer<QPushButton> m_key;
    bool m_wasEnabled;
};

// A send's events on screen: the bar follows the progress, the status line announces the message, the
// transcript grows; the window's events run meanwhile.
void followSession(sevSMTP& smtp, QLabel* status, QProgressBar* progress, frmLog& log)
{
    smtp.OnProgress = [progress](int percent) {
        progress->setValue(percent);
        QApplication::processEvents();
    };
    smtp.OnMessageStart = [status, progress] {
        status->setText("Nachricht wird versandt...");
        progress->setValue(0);
        QApplication::processEvents();
    };
    smtp.OnLog = [&log](const std::string& piece) { log.add(piece); };
}

// One attribute over the editor's selection: the same on every character, or nothing where the selection mixes
// it (the old editor's Null). Without a selection, the format at the caret.
template <typename Read> std::optional<bool> selectionState(const QTextEdit* editor, Read read)
{
    const QTextCursor cursor = editor->textCursor();
    if (!cursor.hasSelection())
        return read(editor->currentCharFormat());
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    std::optional<bool> state;
    for (QTextBlock block = editor->document()->findBlock(start); block.isValid() && block.position() < end;
         block = block.next()) {
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            const QTextFragment fragment = piece.fragment();
            if (fragment.position() + fragment.length() <= start || fragment.position() >= end)
                continue;
            const bool value = read(fragment.charFormat());
            if (state && *state != value)
                return std::nullopt;
            state = value;
        }
    }
    return state ? state : read(editor->currentCharFormat());
}

// Coolbar2: bold, italic, underline, strike-through | font, colour | bullets | alignment, for a message editor.
QToolBar* richTextToolbar(QTextEdit* message, QWidget* parent)
{
    auto* toolbar = new QToolBar(parent);
    toolbar->setObjectName("Coolbar2");
    const auto toggle = [message, toolbar](const char* key, const char* caption, auto read, auto write) {
        QAction* action = toolbar->addAction(caption);
        action->setObjectName(key);
        QObject::connect(action, &QAction::triggered, toolbar, [message, read, write] {
            // A mixed selection reads as Null, and Null negated stays Null: nothing changes.
            if (const std::optional<bool> state = selectionState(message, read)) {
                QTextCharFormat format;
                write(format, !*state);
                message->mergeCurrentCharFormat(format);
            }
            message->setFocus();
        });
        return action;
    };
    toggle("fett", "F", [](const QTextCharFormat& f) { return f.fontWeight() > QFont::Normal; },
           [](QTextCharFormat& f, bool on) { f.setFontWeight(on ? QFont::Bold : QFont::Normal); });
    toggle("kursiv", "K", [](const QTextCharFormat& f) { return f.fontItalic(); },
           [](QTextCharFormat& f, bool on) { f.setFontItalic(on); });
    toggle("unterstrichen", "U", [](const QTextCharFormat& f) { return f.fontUnderline(); },
           [](QTextCharFormat& f, bool on) { f.setFontUnderline(on); });
    toggle("durchgestrichen", "S", [](const QTextCharFormat& f) { return f.fontStrikeOut(); },
           [](QTextCharFormat& f, bool on) { f.setFontStrikeOut(on); });
    toolbar->addSeparator();
    QAction* font = toolbar->addAction("Schriftart");
    font->setObjectName("schriftart");
    QObject::connect(font, &QAction::triggered, toolbar, [message, parent] {
        bool chosen = false;
        const QFont picked = QFontDialog::getFont(&chosen, message->currentFont(), parent);
        if (chosen)
            message->setCurrentFont(picked);
        message->setFocus();
    });
    QAction* colour = toolbar->addAction("Farbe");
    colour->setObjectName("schriftfarbe");
    QObject::connect(colour, &QAction::triggered, toolbar, [message, parent] {
        const QColor picked = QColorDialog::getColor(message->textColor(), parent);
        if (picked.isValid())
            message->setTextColor(picked);
        message->setFocus();
    });
    toolbar->addSeparator();
    QAction* bullets = toolbar->addAction("Aufzählung");
    bullets->setObjectName("aufzaehlung");
    QObject::connect(bullets, &QAction::triggered, toolbar, [message] {
        QTextCursor cursor = message->textCursor();
        if (QTextList* list = cursor.currentList()) {
            QTextBlockFormat block = cursor.blockFormat();
            list->remove(cursor.block());
            block.setIndent(0);
            cursor.setBlockFormat(block);
        } else {
            cursor.createList(QTextListFormat::ListDisc);
        }
        message->setFocus();
    });
    toolbar->addSeparator();
    const std::pair<const char*, Qt::Alignment> alignments[] = {
        {"links", Qt::AlignLeft}, {"mitte", Qt::AlignHCenter}, {"rechts", Qt::AlignRight}};
    const char* alignCaptions[] = {"Links", "Mitte", "Rechts"};
    for (std::size_t i = 0; i < 3; ++i) {
        QAction* action = toolbar->addAction(alignCaptions[i]);
        action->setObjectName(alignments[i].first);
        action->setCheckable(true);
        action->setChecked(i == 0);
        QObject::connect(action, &QAction::triggered, toolbar, [message, toolbar, action, align = alignments[i].second] {
            message->setAlignment(align);
            for (const char* key : {"links", "mitte", "rechts"})
                toolbar->findChild<QAction*>(key)->setChecked(false);
            action->setChecked(true);
            message->setFocus();
        });
    }
    return toolbar;
}


} // namespace

void AccountFields::show(const MailAccount& account) const
{
    name->setText(qt(account.name));
    company->setText(qt(account.company));
    address->setText(qt(account.address));
    server->setText(qt(account.server));
    auth->setChecked(account.auth == 1);
    user->setText(qt(account.user));
    password->setText(qt(account.password));
}

MailAccount AccountFields::read() const
{
    return {text(name), text(company), text(address), text(server), auth->isChecked() ? 1 : 0, text(user),
            text(password)};
}

frmLog::frmLog(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmLog");
    setWindowTitle("Protokoll");
    m_status = new QPlainTextEdit(this);
    m_status->setObjectName("txtStatus");
    m_status->setReadOnly(true);
    m_status->setLineWrapMode(QPlainTextEdit::NoWrap);
    (new QVBoxLayout(this))->addWidget(m_status);
    resize(620, 420);
}

void frmLog::add(const std::string& piece)
{
    QTextCursor cursor(m_status->document());
    cursor.movePosition(QTextCursor::Start);
    QString shown = qt(piece);
    shown.remove('\r');
    cursor.insertText(shown);
}

QString frmLog::text() const { return m_status->toPlainText(); }

adressbuch1::adressbuch1(Purpose purpose, const std::vector<std::string>& fields, QWidget* parent) : QDialog(parent)
{
    setObjectName("adressbuch1");
    setWindowTitle("Adressbuch");
    auto* layout = new QVBoxLayout(this);
    auto* heading = new QLabel(purpose == Purpose::Add ? "Neuen Kontakt hinzufügen" : "Vorhandenen Kontakt bearbeiten",
                               this);
    heading->setObjectName("Label1");
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    layout->addWidget(heading);
    auto* form = new QFormLayout;
    const std::pair<const char*, const char*> names[] = {
        {"txtEmail", "E-Mail:"}, {"txtVorname", "Vorname:"}, {"txtNachname", "Nachname:"}, {"txtAnrede", "Anrede:"}};
    for (std::size_t i = 0; i < 4; ++i) {
        auto* edit = field(names[i].first, this);
        edit->setText(i < fields.size() ? qt(fields[i]) : QString());
        edit->setMinimumWidth(260);
        form->addRow(names[i].second, edit);
        m_fields.push_back(edit);
    }
    layout->addLayout(form);
    auto* keys = new QHBoxLayout;
    keys->addStretch();
    auto* confirm = purpose == Purpose::Add ? button("Command1", "&Hinzufügen", this)
                                            : button("Command3", "&Editieren", this);
    confirm->setDefault(true);
    auto* cancel = button("Command2", "&Abbrechen", this);
    connect(confirm, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    keys->addWidget(confirm);
    keys->addWidget(cancel);
    layout->addLayout(keys);
}

std::vector<std::string> adressbuch1::fields() const
{
    std::vector<std::string> values;
    for (const QLineEdit* edit : m_fields)
        values.push_back(text(edit));
    return values;
}

WizardDialog::WizardDialog(QWidget* parent, const char* lastCaption) : QDialog(parent), m_lastCaption(lastCaption)
{
    m_stack = new QStackedWidget(this);
    m_stack->setObjectName("sevWizard1");
    m_back = button("cmdBack", "< &Zurück", this);
    m_next = button("cmdNext", "&Weiter >", this);
    m_next->setDefault(true);
    connect(m_back, &QPushButton::clicked, this, [this] { showPage(m_page - 1); });
    connect(m_next, &QPushButton::clicked, this, [this] {
        if (onLastPage())
            finish();
        else
            showPage(m_page + 1);
    });
}

QVBoxLayout* WizardDialog::addPage(const char* name, const QString& step, const QString& text)
{
    auto* widget = new QWidget(m_stack);
    widget->setObjectName(name);
    auto* layout = new QVBoxLayout(widget);
    if (!step.isEmpty()) {
        auto* header = new QLabel(QString("<b>%1</b><br>%2").arg(step.toHtmlEscaped(), text.toHtmlEscaped()), widget);
        header->setObjectName("header");
        header->setWordWrap(true);
        layout->addWidget(header);
    }
    m_stack->addWidget(widget);
    m_pages.push_back(widget);
    return layout;
}

QLabel* WizardDialog::wrappedLabel(const char* name, const QString& caption, QWidget* owner)
{
    auto* label = new QLabel(caption, owner);
    label->setObjectName(name);
    label->setWordWrap(true);
    return label;
}

QLabel* WizardDialog::welcomeHeading(const QString& caption, QWidget* owner)
{
    auto* heading = wrappedLabel("Label1", caption, owner);
    QFont big = heading->font();
    big.setPointSize(big.pointSize() + 4);
    big.setBold(true);
    heading->setFont(big);
    return heading;
}

void WizardDialog::layOut(std::initializer_list<QWidget*> leftKeys, QPushButton* cancel)
{
    auto* keys = new QHBoxLayout;
    for (QWidget* key : leftKeys)
        keys->addWidget(key);
    keys->addStretch();
    keys->addWidget(m_back);
    keys->addWidget(m_next);
    keys->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_stack, 1);
    layout->addLayout(keys);
}

void WizardDialog::showPage(int page)
{
    m_page = std::clamp(page, 0, static_cast<int>(m_pages.size()) - 1);
    m_stack->setCurrentIndex(m_page);
    m_back->setEnabled(m_page > 0);
    m_next->setText(onLastPage() ? m_lastCaption : "&Weiter >");
    if (auto* first = m_pages[static_cast<std::size_t>(m_page)]->findChild<QLineEdit*>())
        first->setFocus();
    else
        m_next->setFocus();
    pageShown();
}

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

beleg_mail::beleg_mail(Settings& settings, const ProgramPaths& paths, FormHost& host, frmLog& log,
                       const std::filesystem::path& picture, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_paths(paths), m_host(host), m_log(log), m_book(addressBookKind()),
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
            [insertText] { insertText(QDate::currentDate().toString("dd.MM.yyyy")); });
    QAction* longDate = insert->addAction("Aktuelles Datum &lang");
    longDate->setObjectName("datumlang");
    connect(longDate, &QAction::triggered, this, [insertText] {
        insertText(userLongDate(QDate::currentDate()));
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

namespace {

// After every vendor mail, sent or not: the closing words and, on "Ja", the transcript.
void offerTranscript(QWidget* over, const std::string& firstLine, const char* title, frmLog& log)
{
    if (MessageDialog::messageBox(over,
                                  firstLine + "\r\rWenn Sie das Übertragungsprotokoll sehen wollen,\rdann klicken Sie "
                                              "auf \"Ja\".",
                                  kYesNoInformation, title) == kAnswerYes)
        log.exec();
}

// Connect, Send, Disconnect with the mail window's two failure boxes; false when no connection came about.
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

// The error window's "Fehlermeldung jetzt senden": the report as HTML alone to the vendor's support address.
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

} // namespace

anregungen_neu::anregungen_neu(const ProgramPaths& paths, frmLog& log, QWidget* parent)
    : WizardDialog(parent, "&Senden"), m_paths(paths), m_log(log),
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
    connect(help, &QPushButton::clicked, this, [this] {
        QDialog text(this);
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
        auto* close = button("xpButton1", "&Schließen", &text);
        connect(close, &QPushButton::clicked, &text, &QDialog::accept);
        layout->addWidget(close, 0, Qt::AlignRight);
        text.exec();
    });
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
        static std::mt19937 random(std::random_device{}());
        const std::string code = helpCode(std::uniform_real_distribution<double>(0.0, 1.0)(random));
        const QString date = userShortDate(QDate::currentDate());
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
        subject->setText("SUBSCRIBE : " + from->text());
        prepareNewsletter(m_smtp, text(from), vendorAddresses(m_paths));
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
        anregungen_neu wizard(paths, *log, &window);
        wizard.exec();
    });
    window.setWindowOpener("newsletter", [&window, &paths, log] {
        newsletter signUp(paths, *log, &window);
        signUp.exec();
    });
    window.setShortcutKey(Quittung::ShortcutKey::Mail, [&window, &form, &settings, &paths, log] {
        std::filesystem::path picture;
        try {
            picture = receiptPicturePath(paths, form.text(FormElement::Text1));
            saveBitmapFile(surfaceFromImage(window.capture()(form)), picture);
        } catch (const RunError& error) {
            window.faultReporter().report(error, "Quittung");
            return;
        }
        beleg_mail mail(settings, paths, window, *log, picture, &window);
        if (mail.loaded())
            mail.exec();
    });
}

} // namespace zw
