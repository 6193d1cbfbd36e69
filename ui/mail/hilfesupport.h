#pragma once

class QWidget;

namespace zw {

// The support wizard's help window, shown modally.
void showHilfesupport(QWidget* parent);

} // namespace zw
