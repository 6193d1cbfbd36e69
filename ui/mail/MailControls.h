#pragma once

#include <QPointer>
#include <QPushButton>
#include <string>

#include "mail/MailDraft.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QTextEdit;
class QToolBar;
class QWidget;

namespace zw {

class frmLog;
class sevSMTP;

// The controls and helpers the mail windows share.
namespace mailwindows {

// A key with its object name that a Return in a field does not press.
QPushButton* button(const char* name, const char* caption, QWidget* parent);
QLineEdit* field(const char* name, QWidget* parent);
std::string text(const QLineEdit* edit);

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
void followSession(sevSMTP& smtp, QLabel* status, QProgressBar* progress, frmLog& log);

// Coolbar2: bold, italic, underline, strike-through | font, colour | bullets | alignment, for a message editor.
QToolBar* richTextToolbar(QTextEdit* message, QWidget* parent);

} // namespace mailwindows

// The seven account fields, in the mail window and in the assistant alike.
struct AccountFields
{
    QLineEdit *name, *company, *address, *server;
    QCheckBox* auth;
    QLineEdit *user, *password;
    void show(const MailAccount& account) const;
    MailAccount read() const;
};

} // namespace zw
