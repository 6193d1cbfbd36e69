#pragma once

#include <QString>

namespace zw {

// Style sheets for the looks of the menu component (a MenuDesign's number) and of the print button (a ButtonStyle's).
// Each look is visibly its own; an unknown number gives the plain look of the desktop.
QString menuDesignStyleSheet(int styleNumber);
QString buttonStyleSheet(int styleNumber);

} // namespace zw
