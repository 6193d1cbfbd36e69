#pragma once

class QWidget;

namespace zw {

// The help window of the RTF view, shown modally.
void showHilfertf(QWidget* parent);

} // namespace zw
