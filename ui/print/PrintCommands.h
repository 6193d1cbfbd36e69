#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The print button with its dialog, the copy as picture, the issuer windows, the logo, signature and stamp
// commands. A printed receipt is filed through the window's receipt filer when Save_Check is on.
void installPrinting(const PartContext& context);

} // namespace zw
