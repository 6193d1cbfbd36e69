#pragma once

#include "mail/sevSMTP.h"
#include "ui/mail/WizardDialog.h"
#include "ui/net/QtEventPoster.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QTextEdit;

namespace zw {

class Clock;
class ProgramPaths;
class Random;
class frmLog;

// "Support": four pages, a message to the vendor's support address with a fresh HelpCode at each activation.
class anregungen_neu : public WizardDialog
{
public:
    anregungen_neu(const ProgramPaths& paths, frmLog& log, const Clock& clock, Random& random, QWidget* parent);

protected:
    bool event(QEvent* event) override;

private:
    void finish() override;
    void pageShown() override;

    const ProgramPaths& m_paths;
    frmLog& m_log;
    const Clock& m_clock;
    Random& m_random;
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

} // namespace zw
