#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The list windows behind bm_vonliste and bm_fuerliste, the shortcut bar's keys and the toolbar.
void installListWindows(const PartContext& context);

} // namespace zw
