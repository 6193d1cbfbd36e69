#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "app/FaultReporter.h"

class QWidget;

namespace zw {

class Clock;
class FormHost;
class RunError;

// The error exit of the routines that report their faults: fills and shows the error window modally over the main
// window; the caller then leaves its routine. "Programm beenden" unloads every window.
class ErrorWindowReporter : public FaultReporter
{
public:
    // `over` is the window the error window stands above; "Programm beenden" runs `unloadAll`.
    ErrorWindowReporter(QWidget& over, const Clock& clock, std::function<void()> unloadAll)
        : m_over(over), m_clock(&clock), m_unloadAll(std::move(unloadAll))
    {
    }

    void report(const RunError& error, std::string_view windowName) override;
    void setMailSender(FaultMailSender sender) { m_mailSender = std::move(sender); }
    void setClock(const Clock& clock) { m_clock = &clock; }

private:
    QWidget& m_over;
    const Clock* m_clock;
    std::function<void()> m_unloadAll;
    FaultMailSender m_mailSender;
};

// A fault that no routine traps: the run time's message box with number and description; the program goes on.
void showUntrappedFault(FormHost& host, const RunError& error);

} // namespace zw
