#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace zw {

class RunError;

// Where every routine that traps its faults reports one: number, description and the internal name of its
// window. The main window hands its reporter to each part; the error window implements it.
class FaultReporter
{
public:
    virtual ~FaultReporter() = default;
    virtual void report(const RunError& error, std::string_view windowName) = 0;
};

// Sends a filled error report (rich text) with the user's reply address, empty for an anonymous report. Once a
// session ended, before its closing message, the sender calls `sessionEnded`, where the error window gives back its
// button and ends the hourglass. False when no connection came about: the window then keeps both as they are.
using FaultMailSender = std::function<bool(const std::string& report, const std::string& replyAddress,
                                           const std::function<void()>& sessionEnded)>;

// The run time's message for a fault that no routine traps: "Laufzeitfehler '<n>':" and the description.
std::string untrappedFaultMessage(const RunError& error);

} // namespace zw
