#include "ui/frame/ErrorWindowReporter.h"

#include <string>

#include "core/FormHost.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ui/frame/fehlerform.h"

namespace zw {

void ErrorWindowReporter::report(const RunError& error, std::string_view windowName)
{
    fehlerform form(&m_over, *m_clock, m_unloadAll);
    form.setFault(std::to_string(error.number()), error.description(), std::string(windowName));
    form.setMailSender(m_mailSender);
    form.exec();
}

void showUntrappedFault(FormHost& host, const RunError& error)
{
    host.showMessage(untrappedFaultMessage(error), MessageStyle::Error, kApplicationName);
}

} // namespace zw
