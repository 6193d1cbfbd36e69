#include "app/FaultReporter.h"

#include "core/RunError.h"

namespace zw {

std::string untrappedFaultMessage(const RunError& error)
{
    return "Laufzeitfehler '" + std::to_string(error.number()) + "':\r\r" + error.description();
}

} // namespace zw
