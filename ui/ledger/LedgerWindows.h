#pragma once

#include <QDialog>
#include <functional>
#include <string_view>

class QLabel;
class QLineEdit;
class QPushButton;
class QTextBrowser;

namespace zw {

class CurrencyChoice;
class FaultReporter;
class ProgramPaths;
class ReceiptLedger;
class RunError;
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

// kassenstand: income, expense and the balance, red below zero.
class CashBalanceWindow : public QDialog
{
public:
    CashBalanceWindow(QWidget* parent, const ReceiptLedger& ledger, const std::string& currency,
                      FaultReporter& faults);
};

// waehrung1: the currency code with its suggestion list.
class CurrencyWindow : public QDialog
{
public:
    CurrencyWindow(QWidget* parent, CurrencyChoice& choice, const ProgramPaths& paths);
    QLineEdit* waehr() const { return m_waehr; }

private:
    QLineEdit* m_waehr = nullptr;
};

// report1: the ledger as a page, its print button and the button that empties the page.
class ReportWindow : public QDialog
{
public:
    ReportWindow(QWidget* parent, const ReceiptLedger& ledger, const ProgramPaths& paths,
                 FaultReporter& faults);
    QTextBrowser* browser() const { return m_browser; }

    // How the page reaches a printer; the window asks for one with the print dialog.
    std::function<void(QTextBrowser&)> printPage;

private:
    void navigate(const std::string& file);

    QTextBrowser* m_browser = nullptr;
};

} // namespace zw
