#include "ui/frame/FaultTrap.h"

#include <QMessageBox>
#include <QMetaObject>
#include <QThread>
#include <cstdio>
#include <new>

#include "app/FaultReporter.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ui/frame/QtText.h"

namespace zw::faulttrap {
namespace {

Handler& handler()
{
    static Handler current;
    return current;
}

RunError currentFault()
{
    try {
        throw;
    } catch (const RunError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return RunError(7, "Nicht genügend Speicher");
    } catch (...) {
        return RunError(51, "Interner Fehler");
    }
}

void show(const RunError& error)
{
    if (handler()) {
        handler()(error);
        return;
    }
    QMessageBox::critical(nullptr, qt(kApplicationName), qt(untrappedFaultMessage(error)));
}

} // namespace

void setHandler(Handler next) { handler() = std::move(next); }

void reportCurrentFault() noexcept
{
    try {
        const RunError error = currentFault();
        std::fprintf(stderr, "%s\n", untrappedFaultMessage(error).c_str());
        auto* application = QCoreApplication::instance();
        if (application != nullptr && QThread::currentThread() != application->thread()) {
            // Windows belong to the main thread; the message waits there for its turn.
            QMetaObject::invokeMethod(application, [error] { show(error); }, Qt::QueuedConnection);
            return;
        }
        show(error);
    } catch (...) {
        // A fault while showing a fault: the message on standard error is all that can be done.
        std::fputs("Laufzeitfehler beim Anzeigen eines Fehlers\n", stderr);
    }
}

} // namespace zw::faulttrap

namespace zw {

bool TrappingApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        faulttrap::reportCurrentFault();
        return false;
    }
}

} // namespace zw
