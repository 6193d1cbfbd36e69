#pragma once

#include <QDialog>
#include <filesystem>
#include <initializer_list>
#include <memory>

#include "lists/ListTable.h"
#include "mail/MailDraft.h"
#include "mail/sevSMTP.h"
#include "ui/frame/PartContext.h"
#include "ui/net/QtEventPoster.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;
class QStackedWidget;
class QTextEdit;
class QVBoxLayout;

namespace zw {

class FormHost;
class ProgramPaths;
class Quittung;
class ReceiptForm;
class Settings;

// "Protokoll": one window for the whole run, the transcript of every mail, newest first.
class frmLog : public QDialog
{
public:
    explicit frmLog(QWidget* parent);
    void add(const std::string& text);
    QString text() const;

private:
    QPlainTextEdit* m_status;
};

// "Adressbuch": one contact, added or changed.
class adressbuch1 : public QDialog
{
public:
    enum class Purpose { Add, Edit };
    adressbuch1(Purpose purpose, const std::vector<std::string>& fields, QWidget* parent);
    std::vector<std::string> fields() const;

private:
    std::vector<QLineEdit*> m_fields;
};

// The seven account fields, in the mail window and in the assistant alike.
struct AccountFields
{
    QLineEdit *name, *company, *address, *server;
    QCheckBox* auth;
    QLineEdit *user, *password;
    void show(const MailAccount& account) const;
    MailAccount read() const;
};

// The pages of a wizard with its back and next keys; the next key's caption on the last page is `lastCaption`,
// and a click there runs finish().
class WizardDialog : public QDialog
{
protected:
    WizardDialog(QWidget* parent, const char* lastCaption);
    // A page; with a step ("Schritt 1 von 2") the page starts with it in bold and the text below.
    QVBoxLayout* addPage(const char* name, const QString& step = {}, const QString& text = {});
    // A word-wrapped label; the welcome page's heading is bigger and bold.
    static QLabel* wrappedLabel(const char* name, const QString& caption, QWidget* owner);
    static QLabel* welcomeHeading(const QString& caption, QWidget* owner);
    // The pages above, the keys below: `leftKeys` on the left, back, next and cancel on the right.
    void layOut(std::initializer_list<QWidget*> leftKeys, QPushButton* cancel);
    void showPage(int page);
    virtual void finish() = 0;
    virtual void pageShown() {}
    bool onLastPage() const { return m_page + 1 == static_cast<int>(m_pages.size()); }
    QWidget* page(int index) const { return m_pages[static_cast<std::size_t>(index)]; }

    QStackedWidget* m_stack;
    QPushButton* m_back;
    QPushButton* m_next;

private:
    std::vector<QWidget*> m_pages;
    int m_page = 0;
    const char* m_lastCaption;
};

// "Assistent": the account in three pages; writes the settings and the mail window's fields only on Finish.
class assi_mail : public WizardDialog
{
public:
    assi_mail(const MailAccount& account, QWidget* parent);
    MailAccount account() const;

private:
    void finish() override { accept(); }
    AccountFields m_fields;
};

// "Beleg per E-Mail senden": the current receipt's picture as first attachment, a rich-text message, the
// address book and the account. Sending keeps the window's loop turning; Abort ends it within a moment.
class beleg_mail : public QDialog
{
public:
    beleg_mail(Settings& settings, const ProgramPaths& paths, FormHost& host, frmLog& log,
               const std::filesystem::path& picture, QWidget* parent);

    // False when the window could not load (the address book is missing); the fault was shown.
    bool loaded() const { return m_loaded; }
    void send();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* buildMenuBar();
    QWidget* buildAddressBar();
    QWidget* buildAccountBar();
    QWidget* buildEditor();
    void setAccount(const MailAccount& account);
    MailAccount account() const;
    void saveBook();
    void contact(bool edit);
    void deleteContact();
    void runAssistant();
    void setSending(bool sending);

    Settings& m_settings;
    const ProgramPaths& m_paths;
    FormHost& m_host;
    frmLog& m_log;
    ListTable m_book;
    QtEventPoster m_poster;
    sevSMTP m_smtp;
    bool m_loaded = false;
    bool m_assistantPending = false;

    QLineEdit *m_to, *m_cc, *m_subject;
    QTextEdit* m_message;
    QListWidget* m_attachments;
    QPushButton *m_send, *m_cancel;
    QCheckBox *m_readReceipt, *m_zip;
    QComboBox* m_priority;
    QLabel* m_status;
    QProgressBar* m_progress;
    QTableWidget* m_grid;
    AccountFields m_account;
    QLabel *m_userLabel, *m_passwordLabel;
};

// "Support": four pages, a message to the vendor's support address with a fresh HelpCode at each activation.
class anregungen_neu : public WizardDialog
{
public:
    anregungen_neu(const ProgramPaths& paths, frmLog& log, QWidget* parent);

protected:
    bool event(QEvent* event) override;

private:
    void finish() override;
    void pageShown() override;

    const ProgramPaths& m_paths;
    frmLog& m_log;
    QtEventPoster m_poster;
    sevSMTP m_smtp;
    QLineEdit* m_from;
    QComboBox* m_subject;
    QTextEdit* m_message;
    QPlainTextEdit* m_buffer; // txtMessage1, hidden
    QLabel *m_status, *m_done;
    QProgressBar* m_progress;
    bool m_activated = false;
    bool m_modalAbove = false; // the window lost the focus to a window of the program, not to another program
};

// "Neuigkeiten ... Newsletter": the sign-up mail to the vendor's newsletter address.
class newsletter : public QDialog
{
public:
    newsletter(const ProgramPaths& paths, frmLog& log, QWidget* parent);

private:
    const ProgramPaths& m_paths;
    frmLog& m_log;
    QtEventPoster m_poster;
    sevSMTP m_smtp;
};

// The mail command (the shortcut bar's key, bm_email and the toolbar mirror it), the error window's sender, the
// support wizard behind "anr" and the newsletter window.
void installMail(const PartContext& context);

} // namespace zw
