#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The label editor, the tips, the news and the autostart switch join the main window here.
void installSmallWindows(const PartContext& context);

} // namespace zw
