#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The autocompletion of Text5 to Text8 from daten/autocom.dat, its notice autoge, and the window autocom_bear
// behind the command autver. The list is read at the main window's start and lives as long as the window.
void installAutocompletion(const PartContext& context);

// The help window helpp3 with hilfe/index.html; the help commands open it.
void installHelpWindow(const PartContext& context);

} // namespace zw
