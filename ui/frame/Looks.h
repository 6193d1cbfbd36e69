#pragma once

#include <QString>

namespace zw {

// Style sheets for the looks of the menu component (style numbers 2 to 5) and of the print button (0 to 5).
// Each look is visibly its own; an unknown number gives the plain look of the desktop.
QString menuDesignStyleSheet(int styleNumber);
QString buttonStyleSheet(int styleNumber);

} // namespace zw
