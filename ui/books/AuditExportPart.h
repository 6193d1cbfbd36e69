#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The audit export's window behind "Daten für die Betriebsprüfung...".
void installAuditExport(const PartContext& context);

} // namespace zw
