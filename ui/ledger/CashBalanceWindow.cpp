#include "ui/ledger/CashBalanceWindow.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "app/FaultReporter.h"
#include "core/RunError.h"
#include "ledger/Totals.h"
#include "ui/frame/QtText.h"
#include "ui/frame/WindowTitle.h"
#include "ui/ledger/Headline.h"

namespace zw {
namespace {

void colourBalance(QLabel* label, bool negative)
{
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText,
                     negative ? QColor(255, 0, 0) : label->palette().color(QPalette::ButtonText));
    label->setPalette(colours);
}

} // namespace

using ledgerwindows::headline;

CashBalanceWindow::CashBalanceWindow(QWidget* parent, const ReceiptLedger& ledger, const std::string& currency,
                                     FaultReporter& faults)
    : QDialog(parent)
{
    setObjectName("kassenstand");
    setWindowTitle("Kassenstand");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(headline("Der aktuelle Kassenstand", this));
    auto* grid = new QGridLayout;
    QLabel* values[3];
    const char* captions[] = {"Einnahmen", "Ausgaben", "+/-"};
    const char* names[] = {"Label3", "Label4", "Label5"};
    for (int i = 0; i < 3; ++i) {
        grid->addWidget(new QLabel(captions[i], this), i, 0);
        values[i] = new QLabel(this);
        values[i]->setObjectName(names[i]);
        values[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(values[i], i, 1);
    }
    layout->addLayout(grid);
    try {
        const auto balance = cashBalance(ledger, currency);
        values[0]->setText(qt(balance.income));
        values[1]->setText(qt(balance.expense));
        values[2]->setText(qt(balance.balance));
        colourBalance(values[2], balance.balanceNegative);
    } catch (const RunError& error) {
        faults.report(error, objectName().toStdString());
    }
    // The rows keep their amounts apart from their captions.
    grid->setColumnMinimumWidth(1, fontMetrics().horizontalAdvance("-000.000.000,00 EUR"));
    grid->setHorizontalSpacing(24);
    keepTitleWhole(*this);
}

} // namespace zw
