#pragma once

class QLabel;
class QString;
class QWidget;

namespace zw::ledgerwindows {

// The big bold line at the top of the ledger's total, balance and report windows.
QLabel* headline(const QString& text, QWidget* parent);

} // namespace zw::ledgerwindows
