#pragma once

#include <QApplication>
#include <functional>
#include <type_traits>
#include <utility>

namespace zw {

class RunError;

// The one trap between the toolkit and the program's code: a fault that no routine traps shows the run time's
// message ("Laufzeitfehler '<n>':") through the handler the main window sets, and the program runs on.
namespace faulttrap {

using Handler = std::function<void(const RunError&)>;

// The main window sets the handler while it stands; without one, a plain message box shows the fault.
void setHandler(Handler handler);

// Shows the fault in flight (call it inside a catch block); a fault that is no RunError reads as error 51.
void reportCurrentFault() noexcept;

// Wraps a routine the toolkit calls (a command, a key, an opener, a hook): a fault ends the routine, not the
// program. A routine with a result gives its default value after a fault.
template <typename Routine> auto trapped(Routine routine)
{
    // Constrained, so that the toolkit sees which arguments of a signal the routine takes.
    return [routine = std::move(routine)]<typename... Arguments>(Arguments&&... arguments) mutable
        requires std::is_invocable_v<Routine&, Arguments...>
    {
        using Result = std::invoke_result_t<Routine&, Arguments...>;
        try {
            return routine(std::forward<Arguments>(arguments)...);
        } catch (...) {
            reportCurrentFault();
            if constexpr (!std::is_void_v<Result>)
                return Result{};
        }
    };
}

} // namespace faulttrap

// The application object of the program and of the window tests. Faults that escape an event handler, a connection
// a part made, a timer or an event filter end in the trap here; Qt would otherwise end the process.
class TrappingApplication : public QApplication
{
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace zw
