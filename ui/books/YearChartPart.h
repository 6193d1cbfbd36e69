#pragma once

#include "ui/frame/PartContext.h"

namespace zw {

// The year's chart behind "Auswertung".
void installYearChart(const PartContext& context);

} // namespace zw
