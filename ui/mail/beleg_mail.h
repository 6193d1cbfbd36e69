#pragma once

#include <QDialog>
#include <filesystem>

#include "lists/ListTable.h"
#include "mail/MailDraft.h"
#include "mail/sevSMTP.h"
#include "ui/mail/MailControls.h"
#include "ui/net/QtEventPoster.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTableWidget;
class QTextEdit;

namespace zw {

class Clock;
class FormHost;
class ProgramPaths;
class Settings;
class frmLog;

// "Beleg per E-Mail senden": the current receipt's picture as first attachment, a rich-text message, the
// address book and the account. Sending keeps the window's loop turning; Abort ends it within a moment.
class beleg_mail : public QDialog
{
public:
    beleg_mail(Settings& settings, const ProgramPaths& paths, FormHost& host, frmLog& log, const Clock& clock,
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
    const Clock& m_clock;
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

} // namespace zw
