#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The mail command (the shortcut bar's key, bm_email and the toolbar mirror it), the error window's sender, the
// support wizard behind "anr" and the newsletter window.
void installMail(const PartContext& context);

} // namespace zw
