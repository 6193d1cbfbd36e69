#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The DATEV export's window behind "DATEV-Export...".
void installDatevExport(const PartContext& context);

} // namespace zw
