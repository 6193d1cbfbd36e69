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

// Sends a filled error report (rich text) with the user's reply address, empty for an anonymous report. False
// when no connection came about: the error window then keeps its hourglass (which the sender ends otherwise)
// and its disabled button.
using FaultMailSender = std::function<bool(const std::string& report, const std::string& replyAddress)>;

// The run time's message for a fault that no routine traps: "Laufzeitfehler '<n>':" and the description.
std::string untrappedFaultMessage(const RunError& error);

} // namespace zw
