#pragma once

#include <QDialog>
#include <string>

class QLabel;

namespace zw {

class FaultReporter;
class ReceiptLedger;
class Settings;

// ein1 and aus1: one total with the currency, and the button that sets the carried total to zero.
class TotalWindow : public QDialog
{
public:
    enum class Kind { Income, Expense };
    TotalWindow(QWidget* parent, Kind kind, const ReceiptLedger& ledger, const std::string& currency,
                Settings& settings, FaultReporter& faults);
    QLabel* label1() const { return m_label1; }

private:
    QLabel* m_label1 = nullptr;
};

} // namespace zw
