#include "ui/ledger/TotalWindow.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/FaultReporter.h"
#include "core/RunError.h"
#include "ledger/Totals.h"
#include "ui/frame/QtText.h"
#include "ui/frame/WindowTitle.h"
#include "ui/ledger/Headline.h"

namespace zw {

using ledgerwindows::headline;

TotalWindow::TotalWindow(QWidget* parent, Kind kind, const ReceiptLedger& ledger, const std::string& currency,
                         Settings& settings, FaultReporter& faults)
    : QDialog(parent)
{
    const bool income = kind == Kind::Income;
    setObjectName(income ? "ein1" : "aus1");
    setWindowTitle(income ? "Einnahmen" : "Ausgaben");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(headline(income ? "Einnahmen" : "Ausgaben", this));
    m_label1 = new QLabel("0,00", this);
    m_label1->setObjectName("Label1");
    QFont big = m_label1->font();
    big.setPointSize(big.pointSize() + 6);
    m_label1->setFont(big);
    layout->addWidget(m_label1);
    auto* reset = new QPushButton(income ? "&Einnahmen löschen" : "&Ausgaben löschen", this);
    reset->setObjectName("Button1");
    layout->addWidget(reset);
    connect(reset, &QPushButton::clicked, this, [&settings, income] {
        income ? resetCarriedIncome(settings) : resetCarriedExpense(settings);
    });
    try {
        m_label1->setText(qt(income ? incomeWindowText(ledger, currency) : expenseWindowText(ledger, currency)));
    } catch (const RunError& error) {
        faults.report(error, objectName().toStdString());
    }
    keepTitleWhole(*this);
}

} // namespace zw
