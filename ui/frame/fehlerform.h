#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "app/FaultReporter.h"

class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QTextEdit;

namespace zw {

class Clock;

// The error window: the report of one trapped fault, three beeps, and the ways on. The send button stays
// disabled until a mail sender is set.
class fehlerform : public QDialog
{
public:
    fehlerform(QWidget* parent, const Clock& clock, std::function<void()> closer);

    void setMailSender(FaultMailSender sender);

    // Label1 to Label3: number, description, the window's internal name.
    void setFault(const std::string& number, const std::string& description, const std::string& formName);

    // The report as the window fills it on activation, in rich-text form.
    const std::string& reportSource() const { return m_reportSource; }

    // Stand-ins for the tests: how a beep sounds and how long the pause between two beeps is.
    std::function<void()> beep;
    double pauseSeconds = 1.0;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void activate();
    void closeProgram();

    QLabel* m_number = nullptr;
    QLabel* m_description = nullptr;
    QLabel* m_form = nullptr;
    QTextEdit* m_report = nullptr;
    QWidget* m_frame = nullptr;
    QLineEdit* m_mail = nullptr;
    QPushButton* m_sendShow = nullptr;
    QPushButton* m_send = nullptr;
    const Clock& m_clock;
    FaultMailSender m_mailSender;
    std::function<void()> m_closeProgram;
    std::string m_reportSource;
    bool m_activated = false;
    bool m_closing = false;
};

} // namespace zw
