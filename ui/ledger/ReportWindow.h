#pragma once

#include <QDialog>
#include <functional>
#include <string>

class QTextBrowser;

namespace zw {

class FaultReporter;
class ProgramPaths;
class ReceiptLedger;

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
