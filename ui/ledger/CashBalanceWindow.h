#pragma once

#include <QDialog>
#include <string>

namespace zw {

class FaultReporter;
class ReceiptLedger;

// kassenstand: income, expense and the balance, red below zero.
class CashBalanceWindow : public QDialog
{
public:
    CashBalanceWindow(QWidget* parent, const ReceiptLedger& ledger, const std::string& currency,
                      FaultReporter& faults);
};

} // namespace zw
