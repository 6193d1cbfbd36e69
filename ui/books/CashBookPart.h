#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The cash book: the windows tagesabschluss and aenderungsprotokoll, and the journal's catch-up once the
// window stands.
void installCashBook(const PartContext& context);

} // namespace zw
