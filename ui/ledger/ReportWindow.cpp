#include "ui/ledger/ReportWindow.h"

#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextBrowser>

#include "app/FaultReporter.h"
#include "app/TextFile.h"
#include "core/RunError.h"
#include "ledger/LedgerReport.h"
#include "ui/frame/ProportionalLayout.h"
#include "ui/frame/QtText.h"
#include "ui/ledger/Headline.h"

namespace zw {

using ledgerwindows::headline;

ReportWindow::ReportWindow(QWidget* parent, const ReceiptLedger& ledger, const ProgramPaths& paths,
                           FaultReporter& faults)
    : QDialog(parent)
{
    setObjectName("report1");
    setWindowTitle("Belegliste aller ausgedruckten Quittungen");
    setSizeGripEnabled(true);
    auto* title = headline("Belegliste der bisher gedruckten und gespeicherten Belege", this);
    title->setObjectName("Label1");
    m_browser = new QTextBrowser(this);
    m_browser->setObjectName("WebBrowser1");
    auto* print = new QPushButton("Belegliste &drucken", this);
    print->setObjectName("xpButton3");
    auto* clear = new QPushButton("Belegliste &löschen", this);
    clear->setObjectName("Command1");
    auto* okay = new QPushButton("&Okay", this);
    okay->setObjectName("xpButton1");
    // Every control keeps its place and size relative to the window as it is resized; the window never gets so
    // small that the headline is cut.
    auto* layout = new ProportionalLayout(this, {760, 560});
    layout->place(title, {12, 8, 736, 36}, ProportionalLayout::Text::KeptWhole);
    layout->place(m_browser, {12, 50, 736, 450});
    layout->place(print, {12, 514, 170, 32});
    layout->place(clear, {192, 514, 170, 32});
    layout->place(okay, {628, 514, 120, 32});
    resize(760, 560);

    printPage = [this](QTextBrowser& page) {
        QPrinter printer;
        QPrintDialog dialog(&printer, this);
        if (dialog.exec() == QDialog::Accepted)
            page.document()->print(&printer);
    };
    connect(print, &QPushButton::clicked, this, [this] { printPage(*m_browser); });
    connect(okay, &QPushButton::clicked, this, &QDialog::accept);
    connect(clear, &QPushButton::clicked, this, [this, &paths, &faults] {
        try {
            navigate(clearReport(paths));
        } catch (const RunError& error) {
            faults.report(error, "report1");
        }
    });
    try {
        navigate(writeReport(paths, reportHtml(ledger)));
    } catch (const RunError& error) {
        faults.report(error, "report1");
    }
}

void ReportWindow::navigate(const std::string& file)
{
    // The page lies on disk in Windows-1252, as the rest of the data folder.
    m_browser->setHtml(qt(readTextFile(file)));
}

} // namespace zw
