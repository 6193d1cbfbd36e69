#include "ui/ledger/LedgerWindows.h"
#include "ui/frame/QtText.h"

#include <QDesktopServices>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextBrowser>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "app/FaultReporter.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "core/RunError.h"
#include "ledger/Currency.h"
#include "ledger/LedgerOperations.h"
#include "ledger/LedgerReport.h"
#include "ledger/Totals.h"
#include "ui/frame/ProportionalLayout.h"
#include "ui/frame/WindowTitle.h"

namespace zw {
namespace {


QLabel* headline(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSize(font.pointSize() + 4);
    label->setFont(font);
    return label;
}

void colourBalance(QLabel* label, bool negative)
{
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText,
                     negative ? QColor(255, 0, 0) : label->palette().color(QPalette::ButtonText));
    label->setPalette(colours);
}

} // namespace

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

CurrencyWindow::CurrencyWindow(QWidget* parent, CurrencyChoice& choice, const ProgramPaths& paths) : QDialog(parent)
{
    setObjectName("waehrung1");
    setWindowTitle("Andere Währung festlegen");
    auto* layout = new QVBoxLayout(this);
    auto* label1 = new QLabel("Geben Sie nun bitte in das unten aufgeführte Feld, die von Ihnen verwendete Währung "
                              "ein. Bitte verwenden Sie immer nur 3 Buchstaben z. B. EUR = EURO,  USD = Dollar.",
                              this);
    label1->setObjectName("Label1");
    label1->setWordWrap(true);
    layout->addWidget(label1);

    auto* fieldRow = new QHBoxLayout;
    m_waehr = new QLineEdit(this);
    m_waehr->setObjectName("waehr");
    m_waehr->setToolTip("<b>Währungen</b><br>Klicken Sie auf den Button um einige Währungen angezeigt zu bekommen.");
    const std::string stored = choice.storedCode();
    m_waehr->setText(stored.empty() ? QString("EUR") : qt(stored));
    auto* popup = new QToolButton(this);
    popup->setObjectName("waehrPopup");
    popup->setText("…");
    popup->setToolTip("Öffnen");
    auto* list = new QMenu(popup);
    for (const auto& code : CurrencyChoice::suggestions(paths.dataFile("waehrung.dat")))
        list->addAction(qt(code), this, [this, code] { m_waehr->setText(qt(code)); });
    popup->setMenu(list);
    popup->setPopupMode(QToolButton::InstantPopup);
    fieldRow->addWidget(m_waehr, 1);
    fieldRow->addWidget(popup);
    layout->addLayout(fieldRow);

    auto* buttons = new QHBoxLayout;
    auto* save = new QPushButton("&Speichern", this);
    save->setObjectName("Command4");
    auto* remove = new QPushButton("&Währung löschen", this);
    remove->setObjectName("Button2");
    auto* back = new QPushButton("&Zurück", this);
    back->setObjectName("Button1");
    auto* info = new QPushButton("Info's über ISO 4217", this);
    info->setObjectName("Command1");
    for (auto* button : {save, remove, back, info})
        buttons->addWidget(button);
    layout->addLayout(buttons);

    connect(save, &QPushButton::clicked, this, [this, &choice] {
        choice.save(m_waehr->text().toStdString());
        accept();
    });
    connect(remove, &QPushButton::clicked, this, [this, &choice, save, remove] {
        m_waehr->clear();
        save->setEnabled(false);
        remove->setEnabled(false);
        choice.remove();
        accept();
    });
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
    connect(info, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(QUrl("https://de.wikipedia.org/wiki/ISO_4217")); });
}

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
