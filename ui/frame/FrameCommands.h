#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The application frame's part of the main window: the toolbar Coolbar1 with its drop-down group, the tray icon,
// the shortcut bar's popup, the appearance entries (receipt colours, window backgrounds, fonts), the settings
// window `optionen`, the help and vendor pages. Call once, before the window's load.
void installFrameCommands(const PartContext& context);

} // namespace zw
