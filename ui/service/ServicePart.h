#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The backup window, the settings export and both update commands join the main window here.
void installService(const PartContext& context);

} // namespace zw
